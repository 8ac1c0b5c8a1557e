// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/crashguard.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstddef>
#include <unistd.h>

namespace lumora::service {

namespace {

// Not SIGILL: that a processor lacks an instruction is no fault of the file, and the program can tell by the signal.
constexpr std::array<int, 4> crashes = {SIGSEGV, SIGBUS, SIGFPE, SIGABRT};
constexpr int crashedStatus = 3;

// A signal's handler can reach nothing but such variables, and a stack of its own where the usual one has run out.
int guardedDescriptor = -1;
std::string guardedBytes;
std::atomic<bool> written = false;
std::array<char, std::size_t{64} * 1024> handlerStack;

void answerForTheCrash(int)
{
    // More than one thread may crash over the same file.
    if (!written.exchange(true)) {
        std::size_t done = 0;
        while (done < guardedBytes.size()) {
            const ssize_t count = write(guardedDescriptor, guardedBytes.data() + done, guardedBytes.size() - done);
            if (count <= 0)
                break;
            done += static_cast<std::size_t>(count);
        }
        _exit(crashedStatus);
    }
    pause();
}

} // namespace

void armCrashGuard(int descriptor, const std::string &bytes)
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    for (const int crash : crashes)
        sigaction(crash, &action, nullptr);
    guardedDescriptor = descriptor;
    guardedBytes = bytes;
    if (bytes.empty())
        return;
    stack_t stack = {};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    sigaltstack(&stack, nullptr);
    action.sa_handler = answerForTheCrash;
    action.sa_flags = SA_ONSTACK | SA_NODEFER;
    for (const int crash : crashes)
        sigaction(crash, &action, nullptr);
}

} // namespace lumora::service
