// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/threads.h"

#include <future>
#include <vector>

namespace lumora::training {

void onThreads(int count, const std::function<void(int)> &work)
{
    std::vector<std::future<void>> running;
    running.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i)
        running.push_back(std::async(std::launch::async, work, i));
    for (std::future<void> &one : running)
        one.get();
}

} // namespace lumora::training
