// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/isolation/isolation.h"

#include "platform/isolation/filterwriter.h"
#include "platform/isolation/landlock.h"
#include "platform/isolation/systemcallfilter.h"

#include <array>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace lumora {

namespace {

/// What root may do beyond others; only somebody who works as root has any of it to lose.
bool dropCapabilities()
{
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    const std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> none{};
    return syscall(SYS_capset, &header, none.data()) == 0;
}

} // namespace

std::vector<std::string> systemFiles()
{
    return {"/usr", "/lib", "/lib64", "/etc/ld.so.cache", "/sys/devices/system/cpu", "/dev/urandom", "/dev/null"};
}

bool isolate(const Reach &reach)
{
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || !dropCapabilities())
        return false;
    const bool guardsFiles = landlock::version() > 0;
    if (guardsFiles && !landlock::restrictTo(reach))
        return false;
    // The filter does not see which file is opened. Where nothing else does, none may be opened for writing.
    const bool needsWriting = guardsFiles && !reach.devices.empty();
    return !FilterWriter::isPossible() || filterSystemCalls(needsWriting ? Opening::any : Opening::forReading);
}

std::string missingIsolation()
{
    const bool guardsFiles = landlock::version() > 0;
    const bool filtersCalls = FilterWriter::isPossible();
    if (guardsFiles && filtersCalls)
        return {};
    if (filtersCalls)
        return "This kernel has no Landlock: the language model and the readers of PDF files and images can read your "
               "files, though they can neither write them nor reach the network.";
    if (guardsFiles)
        return "This kernel has no filter for system calls: the language model and the readers of PDF files and images "
               "reach no files but their own, but are not kept from the whole of the network.";
    return "This kernel has neither Landlock nor a filter for system calls: the language model and the readers of PDF "
           "files and images run as processes of their own, but with all that you may do yourself.";
}

} // namespace lumora
