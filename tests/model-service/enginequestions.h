// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "serviceprocess.h"

#include <stdexcept>

namespace lumora::wire {

const QString program = QStringLiteral(MODEL_SERVICE);

/// Greedy where nothing else is asked for, so that it is answered the same each time.
inline Respond question(const std::string &prompt, std::optional<Sampling> sampling = Sampling::greedy)
{
    Respond request;
    request.id = 2;
    request.instructions = "You are a helpful desktop assistant.";
    request.prompt = prompt;
    request.options.sampling = sampling;
    return request;
}

template <typename Message>
Message as(const Answer &answer)
{
    if (!std::holds_alternative<Message>(answer))
        throw std::runtime_error("another answer came: " + encode(answer));
    return std::get<Message>(answer);
}

inline ErrorCode failure(const Answer &answer)
{
    return as<Failed>(answer).code;
}

inline QString tiny(const QString &name = "tiny")
{
    return QStringLiteral(TINY_MODELS "/") + name + ".gguf";
}

} // namespace lumora::wire
