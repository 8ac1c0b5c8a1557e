// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// prisoner KERNEL HOW FOLDER DEVICE ATTEMPT FILE: isolates itself (HOW: free, not at all; helper, as the readers of
// files do; service, as the model service does where there is a graphics card, for which DEVICE stands), with FOLDER to
// read, and then tries something with FILE. KERNEL: new, as it is; old, as one that has no Landlock. Ends with 0 where
// that was possible, with 1 where it was not, and with 2 where it was called wrongly or could not isolate itself.

#include "platform/isolation/filterwriter.h"
#include "platform/isolation/isolation.h"
#include "platform/process/confinement.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <linux/io_uring.h>
#include <map>
#include <netinet/in.h>
#include <string>
#include <sys/inotify.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

bool canOpen(const std::string &path, int flags)
{
    return open(path.c_str(), flags, S_IRUSR | S_IWUSR) >= 0; // NOLINT(cppcoreguidelines-pro-type-vararg)
}

bool canMakeSocket(int family, int kind)
{
    return socket(family, kind, 0) >= 0 || errno == EAFNOSUPPORT; // which a kernel without it says
}

bool canFork()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    return child > 0 && waitpid(child, nullptr, 0) == child;
}

bool canSpeakToARing()
{
    io_uring_params parameters = {};
    return syscall(SYS_io_uring_setup, 1, &parameters) >= 0 || errno == EPERM; // which is how a container refuses it
}

bool canRunThreads()
{
    bool ran = false;
    std::thread([&ran] { ran = true; }).join();
    return ran;
}

bool canMap(const std::string &path)
{
    const int file = open(path.c_str(), O_RDONLY); // NOLINT(cppcoreguidelines-pro-type-vararg)
    return mmap(nullptr, 1, PROT_READ, MAP_SHARED, file, 0) != MAP_FAILED;
}

bool canRun(const char *program)
{
    execl(program, program, nullptr); // NOLINT(cppcoreguidelines-pro-type-vararg): which ends with 0 in its stead
    return false;
}

bool canLimit(pid_t process)
{
    rlimit limits = {};
    return prlimit(process, RLIMIT_NOFILE, nullptr, &limits) == 0;
}

using Attempt = std::function<bool(const std::string &)>;

const std::map<std::string, Attempt> attempts{
    {"read", [](const auto &file) { return canOpen(file, O_RDONLY); }},
    {"map", canMap},
    {"write", [](const auto &file) { return canOpen(file, O_WRONLY); }},
    {"control", [](const auto &file) { return canOpen(file, O_RDWR); }},
    {"empty", [](const auto &file) { return truncate(file.c_str(), 0) == 0; }},
    {"create", [](const auto &file) { return canOpen(file + ".new", O_CREAT | O_WRONLY); }},
    {"create a folder", [](const auto &file) { return mkdir((file + ".folder").c_str(), S_IRWXU) == 0; }},
    {"remove", [](const auto &file) { return unlink(file.c_str()) == 0; }},
    {"rename", [](const auto &file) { return rename(file.c_str(), (file + ".other").c_str()) == 0; }},
    {"link", [](const auto &file) { return link(file.c_str(), (file + ".link").c_str()) == 0; }},
    {"change the rights", [](const auto &file) { return chmod(file.c_str(), 0) == 0; }},
    {"watch", [](const auto &file) { return inotify_add_watch(inotify_init(), file.c_str(), IN_ACCESS) >= 0; }},
    {"internet", [](const auto &) { return canMakeSocket(AF_INET, SOCK_STREAM); }},
    {"internet, version 6", [](const auto &) { return canMakeSocket(AF_INET6, SOCK_DGRAM); }},
    {"network devices", [](const auto &) { return canMakeSocket(AF_NETLINK, SOCK_RAW); }},
    {"local socket", [](const auto &) { return canMakeSocket(AF_UNIX, SOCK_STREAM); }},
    {"ring", [](const auto &) { return canSpeakToARing(); }},
    {"run a program", [](const auto &) { return canRun("/bin/true"); }},
    {"fork", [](const auto &) { return canFork(); }},
    {"signal", [](const auto &) { return kill(getppid(), 0) == 0; }},
    {"limits of another", [](const auto &) { return canLimit(getppid()); }},
    {"variables of another",
     [](const auto &) { return canOpen("/proc/" + std::to_string(getppid()) + "/environ", O_RDONLY); }},
    {"threads", [](const auto &) { return canRunThreads(); }},
    {"own limits", [](const auto &) { return canLimit(0); }},
    {"know of gaps", [](const auto &) { return !lumora::missingIsolation().empty(); }},
    {"library", [](const auto &) { return canOpen("/usr/bin/env", O_RDONLY); }},
};

bool makeKernel(const std::string &age)
{
    lumora::FilterWriter filter(lumora::FilterWriter::Refusal::error);
    filter.pretendMissing(SYS_landlock_create_ruleset);
    return age == "new" || (age == "old" && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && filter.install());
}

bool isolateAs(const std::string &how, const std::string &folder, const std::string &device)
{
    if (how == "helper")
        return lumora::confine(std::uint64_t{1} << 30U, 10, {folder});
    lumora::Reach reach{lumora::systemFiles(), {device}};
    reach.files.insert(reach.files.end(), {folder, "/proc"});
    return how == "free" || (how == "service" && lumora::isolate(reach));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 7 || !attempts.contains(argv[5]) || !makeKernel(argv[1]) || !isolateAs(argv[2], argv[3], argv[4])) {
        std::perror("prisoner");
        return 2;
    }
    return attempts.at(argv[5])(argv[6]) ? 0 : 1;
}
