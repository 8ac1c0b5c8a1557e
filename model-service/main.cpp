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
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>

using namespace lumora;
using namespace lumora::service;

namespace {

enum ExitStatus {
    ended = 0,
    misused = 1,
    incomplete = 127, // as where a program or a library is missing
};

/// --backends FOLDER, where ggml's backends lie. The launcher puts its own first; the last one counts.
std::string backendFolder(int argc, char **argv)
{
    return argc >= 3 && std::string_view(argv[argc - 2]) == "--backends" ? argv[argc - 1] : "";
}

} // namespace

int main(int argc, char **argv)
{
    const int output = claimStandardOutput();
    if (output < 0)
        return misused;
    confine();
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
    LlamaEngine engine(backendFolder(argc, argv));
    if (!LlamaEngine::hasProcessorBackend()) {
        std::fputs("lumora-model: the engine has no backend for the processor; the installation is incomplete\n",
                   stderr);
        _exit(incomplete);
    }
    Service(engine, inbox, send, guardLoad).run();
    _exit(ended);
}
