// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "process.h"

#include "platform/isolation/isolation.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <glob.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace lumora::service {

namespace {

/// The nodes by which programs compute on graphics cards, as far as there are any.
std::vector<std::string> graphicsDevices()
{
    std::vector<std::string> found;
    for (const char *const pattern : {"/dev/dri", "/dev/nvidia*", "/dev/kfd", "/dev/dxg"}) {
        glob_t paths = {};
        if (glob(pattern, 0, nullptr, &paths) == 0) // NOLINT(concurrency-mt-unsafe): there is one thread yet
            found.insert(found.end(), paths.gl_pathv, paths.gl_pathv + paths.gl_pathc);
        globfree(&paths);
    }
    return found;
}

/// What the engine, its backends and the graphics drivers read of the system, before a model is loaded and then.
std::vector<std::string> engineFiles()
{
    std::vector<std::string> files = systemFiles();
    // How much memory is free stands in /proc and /sys; other processes' memory, also in there, stays closed.
    files.insert(files.end(), {"/proc", "/sys", "/opt", "/etc/vulkan", "/etc/OpenCL", "/etc/nvidia", "/etc/drirc"});
    return files;
}

} // namespace

void closeInheritedFiles()
{
    syscall(SYS_close_range, STDERR_FILENO + 1U, ~0U, 0);
}

int claimStandardOutput()
{
    const int output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (output < 0 || dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        return -1;
    return output;
}

bool confine(const std::vector<std::string> &files)
{
    prctl(PR_SET_NAME, "lumora-model"); // which under another loader would be the loader's
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_DUMPABLE, 0);
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    std::signal(SIGPIPE, SIG_IGN);
    Reach reach{engineFiles(), graphicsDevices()};
    reach.files.insert(reach.files.end(), files.begin(), files.end());
    return isolate(reach);
}

void limitBusyWaiting()
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there is one thread yet
    setenv("GOMP_SPINCOUNT", "1000", 0);
}

} // namespace lumora::service
