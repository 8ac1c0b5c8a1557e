// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/channel.h"
#include "core/crashguard.h"
#include "core/service.h"
#include "llamaengine.h"
#include "process.h"
#include "wire/frame.h"

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace lumora;
using namespace lumora::service;

namespace {

enum ExitStatus {
    ended = 0,
    misused = 1,
    incomplete = 127, // as where a program or a library is missing
};

/// lumora-model [--backends FOLDER] [--reads PATH]...
struct Arguments
{
    std::string backends;           ///< where ggml's backends lie; empty = where the library looks; the last one counts
    std::vector<std::string> reads; ///< files and folders: all that it can be told to load
};

Arguments argumentsOf(std::span<char *const> words)
{
    Arguments arguments;
    for (std::size_t i = 1; i + 1 < words.size(); i += 2) {
        const std::string_view name = words[i];
        if (name == "--backends")
            arguments.backends = words[i + 1];
        else if (name == "--reads")
            arguments.reads.emplace_back(words[i + 1]);
    }
    arguments.reads.push_back(arguments.backends);
    return arguments;
}

} // namespace

int main(int argc, char **argv)
{
    closeInheritedFiles();
    const Arguments arguments = argumentsOf({argv, static_cast<std::size_t>(argc)});
    const int output = claimStandardOutput();
    if (output < 0)
        return misused;
    if (!confine(arguments.reads)) {
        std::fputs("lumora-model: the system refuses to isolate this process\n", stderr);
        return incomplete;
    }
    limitBusyWaiting();

    Inbox inbox;
    // The process ends with its input, whatever the engine is doing.
    std::thread([&inbox] {
        const ChannelEnd end = readRequests(STDIN_FILENO, inbox);
        if (end == ChannelEnd::malformed)
            std::fputs("lumora-model: the program sent something that is not a message\n", stderr);
        _exit(end == ChannelEnd::closed ? ended : misused);
    }).detach();

    const auto send = [output](const wire::Answer &answer) {
        if (!writeAll(output, wire::frame(wire::encode(answer))))
            _exit(ended);
    };
    const auto guardLoad = [output](const wire::Answer *answer) {
        armCrashGuard(output, answer != nullptr ? wire::frame(wire::encode(*answer)) : std::string());
    };
    LlamaEngine engine(arguments.backends);
    if (!LlamaEngine::hasProcessorBackend()) {
        std::fputs("lumora-model: the engine has no backend for the processor; the installation is incomplete\n",
                   stderr);
        _exit(incomplete);
    }
    Service(engine, inbox, send, guardLoad).run();
    _exit(ended);
}
