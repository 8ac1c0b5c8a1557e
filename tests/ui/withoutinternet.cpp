// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// withoutinternet COMMAND…: becomes the command, which the kernel kills with SIGSYS, as it does each process that it
// starts, when it makes a socket that is not a local one. A command that ends as it should has made none.

#include "platform/isolation/filterwriter.h"

#include <cstdio>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

int main(int argc, char **argv)
{
    constexpr int notTraced = 125;
    lumora::FilterWriter filter(lumora::FilterWriter::Refusal::death);
    filter.refuseUnless(SYS_socket, 0, AF_UNIX);
    filter.pretendMissing(SYS_io_uring_setup); // by which sockets can be made, too
    if (argc < 2 || prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || !filter.install()) {
        std::fputs("withoutinternet: there is no command, or this kernel has no filter for system calls\n", stderr);
        return notTraced;
    }
    execvp(argv[1], argv + 1);
    std::perror(argv[1]);
    return notTraced;
}
