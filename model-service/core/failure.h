// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "wire/messages.h"

#include <exception>
#include <string>

namespace lumora::service {

/// Ends a request with an error. The message is a whole sentence that tells the user what happened and what helps.
class Failure : public std::exception
{
public:
    Failure(wire::ErrorCode code, std::string message);

    wire::ErrorCode code() const { return m_code; }
    const std::string &message() const { return m_message; }
    const char *what() const noexcept override { return m_message.c_str(); }

private:
    wire::ErrorCode m_code;
    std::string m_message;
};

Failure cancelled();
Failure notLoaded();
/// path: of the model file, of which the message names the last component; reason: half a sentence, such as "it is
/// cut".
Failure badFile(const std::string &path, const std::string &reason);
/// path: of the file that lets a model read images, over which the engine crashes.
Failure badProjector(const std::string &path);
Failure noMemoryFor(const std::string &path);
Failure promptTooLong();
Failure imageTooLarge();
Failure replyFilledContext();
Failure answerCutShort();
Failure endedInThought();
Failure tooManyCalls();
/// detail: for who looks into it; part of the message.
Failure internalFailure(const std::string &detail);

} // namespace lumora::service
