// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wire/messages.h"

#include "fuzz/fuzztarget.h"

using namespace lumora;

// What can be read of a message can be written, and is read as the same.
void lumora::fuzz::tryInput(std::string_view input)
{
    if (const auto request = wire::decodeRequest(input))
        require(wire::decodeRequest(wire::encode(*request)) == request, "A request changes on its way.");
    if (const auto answer = wire::decodeAnswer(input))
        require(wire::decodeAnswer(wire::encode(*answer)) == answer, "An answer changes on its way.");
}
