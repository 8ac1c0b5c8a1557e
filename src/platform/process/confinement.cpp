// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/process/confinement.h"

#include "platform/isolation/isolation.h"

#include <algorithm>
#include <csignal>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace lumora {

namespace {

bool limit(__rlimit_resource resource, rlim_t most)
{
    rlimit both{};
    if (getrlimit(resource, &both) != 0)
        return false;
    both.rlim_max = std::min(most, both.rlim_max); // what the system allows already may be less
    both.rlim_cur = both.rlim_max;
    return setrlimit(resource, &both) == 0;
}

/// Says whether somebody still reads the output.
bool hasReader()
{
    pollfd output{STDOUT_FILENO, 0, 0};
    return poll(&output, 1, 0) >= 0 && (output.revents & POLLERR) == 0;
}

} // namespace

bool confine(std::uint64_t addressSpace, std::uint64_t processorTime, const std::vector<std::string> &files)
{
    Reach reach{systemFiles(), {}};
    reach.files.insert(reach.files.end(), files.begin(), files.end());
    return prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && prctl(PR_SET_DUMPABLE, 0) == 0 && limit(RLIMIT_CORE, 0) &&
           limit(RLIMIT_FSIZE, 0) && limit(RLIMIT_CPU, processorTime) && limit(RLIMIT_AS, addressSpace) &&
           isolate(reach) && hasReader(); // which may have ended before its end would have been told
}

} // namespace lumora
