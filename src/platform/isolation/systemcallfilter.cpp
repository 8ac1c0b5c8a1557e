// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/isolation/systemcallfilter.h"

#include "platform/isolation/filterwriter.h"

#include <array>
#include <fcntl.h>
#include <sched.h>
#include <span>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace lumora {

namespace {

using Calls = std::span<const std::uint32_t>;

// What a header of an older kernel does not have; newer calls have the same number everywhere.
constexpr std::uint32_t fchmodat2 = 452;
constexpr std::uint32_t setxattrat = 463;
constexpr std::uint32_t removexattrat = 466;
constexpr std::uint32_t setFileAttributes = 469;

// Lists of what is refused and not of what is allowed: engines, graphics drivers and C libraries call what they like,
// and another thing with each release.

constexpr auto network = std::to_array<std::uint32_t>(
    {SYS_socket, SYS_socketpair, SYS_connect, SYS_bind, SYS_listen, SYS_accept, SYS_accept4});

constexpr auto processes = std::to_array<std::uint32_t>({SYS_execve,
                                                         SYS_execveat,
                                                         SYS_unshare,
                                                         SYS_setns,
                                                         SYS_ptrace,
                                                         SYS_process_vm_readv,
                                                         SYS_process_vm_writev,
                                                         SYS_process_madvise,
                                                         SYS_pidfd_open,
                                                         SYS_pidfd_getfd,
                                                         SYS_kcmp,
                                                         SYS_kill,
                                                         SYS_tkill,
                                                         SYS_rt_sigqueueinfo,
                                                         SYS_rt_tgsigqueueinfo,
                                                         SYS_pidfd_send_signal,
                                                         SYS_shmget,
                                                         SYS_shmat,
                                                         SYS_semget,
                                                         SYS_msgget,
                                                         SYS_mq_open});

// By name, and through what is open.
constexpr auto changesOfFiles = std::to_array<std::uint32_t>(
    {SYS_truncate,     SYS_mkdirat,   SYS_mknodat,      SYS_unlinkat,  SYS_renameat2,    SYS_linkat,
     SYS_symlinkat,    SYS_fchmod,    SYS_fchmodat,     fchmodat2,     SYS_fchown,       SYS_fchownat,
     SYS_utimensat,    SYS_setxattr,  SYS_lsetxattr,    SYS_fsetxattr, setxattrat,       SYS_removexattr,
     SYS_lremovexattr, removexattrat, SYS_fremovexattr, SYS_mq_unlink, setFileAttributes});

// Large, and of no use here.
constexpr auto partsOfTheKernel =
    std::to_array<std::uint32_t>({SYS_bpf, SYS_perf_event_open, SYS_userfaultfd, SYS_add_key, SYS_request_key,
                                  SYS_keyctl, SYS_inotify_init1, SYS_fanotify_init});

// What these processors have beside newer calls that do the same.
#if defined(__x86_64__)
constexpr auto olderCalls = std::to_array<std::uint32_t>(
    {SYS_fork, SYS_vfork, SYS_creat, SYS_mkdir, SYS_rmdir, SYS_mknod, SYS_unlink, SYS_rename, SYS_renameat, SYS_link,
     SYS_symlink, SYS_chmod, SYS_chown, SYS_lchown, SYS_utime, SYS_utimes, SYS_futimesat, SYS_inotify_init});
#elif defined(SYS_renameat)
constexpr auto olderCalls = std::to_array<std::uint32_t>({SYS_renameat});
#else
constexpr Calls olderCalls;
#endif

// A filter does not see their arguments, or what they do. Libraries go back to the older ones.
constexpr auto unseen = std::to_array<std::uint32_t>(
    {SYS_clone3, SYS_openat2, SYS_io_uring_setup, SYS_io_uring_enter, SYS_io_uring_register});

void refuseWriting(FilterWriter &filter)
{
    constexpr std::uint32_t writing = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC;
    filter.refuseWithAnyOf(SYS_openat, 2, writing);
#if defined(SYS_open)
    filter.refuseWithAnyOf(SYS_open, 1, writing);
#endif
}

} // namespace

bool filterSystemCalls(Opening opening)
{
    FilterWriter filter(FilterWriter::Refusal::error);
    filter.refuseWithout(SYS_clone, 0, CLONE_THREAD);
    filter.refuseUnless(SYS_tgkill, 0, static_cast<std::uint32_t>(getpid())); // how a process aborts
    filter.refuseUnless(SYS_prlimit64, 0, 0);                                 // how it asks for its own limits
    filter.refuseWith(SYS_ioctl, 1, TIOCSTI);                                 // what somebody seems to have typed
    if (opening == Opening::forReading)
        refuseWriting(filter);
    for (const Calls calls :
         {Calls(network), Calls(processes), Calls(changesOfFiles), Calls(partsOfTheKernel), Calls(olderCalls)}) {
        for (const std::uint32_t call : calls)
            filter.refuse(call);
    }
    for (const std::uint32_t call : unseen)
        filter.pretendMissing(call);
    return filter.install();
}

} // namespace lumora
