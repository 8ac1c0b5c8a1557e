// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/failure.h"

#include "core/utf8.h"

#include <filesystem>
#include <utility>

namespace lumora::service {

namespace {

std::string fileName(const std::string &path)
{
    return "“" + validUtf8(std::filesystem::path(path).filename().string()) + "”";
}

} // namespace

Failure::Failure(wire::ErrorCode code, std::string message)
    : m_code(code)
    , m_message(std::move(message))
{
}

Failure cancelled()
{
    return {wire::ErrorCode::cancelled, "The request was stopped."};
}

Failure notLoaded()
{
    return {wire::ErrorCode::notLoaded, "No language model is loaded. Wait until it is, or choose another model file."};
}

Failure badFile(const std::string &path, const std::string &reason)
{
    return {wire::ErrorCode::badFile,
            "The model file " + fileName(path) + " cannot be used: " + reason + ". Choose another model file."};
}

Failure badProjector(const std::string &path)
{
    return {wire::ErrorCode::badProjector, "The program that runs the model crashed while it read the file " +
                                               fileName(path) + ", with which the model would read images."};
}

Failure noMemoryFor(const std::string &path)
{
    return {wire::ErrorCode::noMemory, "There is not enough free memory for the model " + fileName(path) +
                                           ". Close other programs, or choose a smaller model."};
}

Failure promptTooLong()
{
    return {wire::ErrorCode::contextFull,
            "The message does not fit into what the language model can read at once. Send a shorter message."};
}

Failure imageTooLarge()
{
    return {wire::ErrorCode::contextFull,
            "The message and its image do not fit into what the language model can read at once. Send a smaller image, "
            "or a shorter message."};
}

Failure replyFilledContext()
{
    return {wire::ErrorCode::contextFull, "The reply ends here, because the language model can hold no more text. Ask "
                                          "for a shorter reply, or start a new chat."};
}

Failure answerCutShort()
{
    return {wire::ErrorCode::cutShort,
            "The answer was cut off before it was complete, so it cannot be shown. Ask for a shorter answer."};
}

Failure endedInThought()
{
    return {wire::ErrorCode::cutShort, "The language model was still thinking when it stopped, so there is no answer. "
                                       "Send the message again, or ask for something simpler."};
}

Failure tooManyCalls()
{
    return {wire::ErrorCode::tooManyCalls,
            "The language model called its tools again and again without answering. Ask in other words."};
}

Failure internalFailure(const std::string &detail)
{
    return {wire::ErrorCode::internal, "The language model failed (" + validUtf8(detail) + "). Try again."};
}

} // namespace lumora::service
