// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "process.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace lumora::service {

int claimStandardOutput()
{
    const int output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (output < 0 || dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        return -1;
    return output;
}

void confine()
{
    prctl(PR_SET_NAME, "lumora-model"); // which under another loader would be the loader's
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_DUMPABLE, 0);
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    std::signal(SIGPIPE, SIG_IGN);
}

void limitBusyWaiting()
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there is one thread yet
    setenv("GOMP_SPINCOUNT", "1000", 0);
}

} // namespace lumora::service
