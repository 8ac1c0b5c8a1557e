// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/example.h"
#include "conversations/trainingvocabulary.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace lumora::training {

/// A conversation as the model reads and writes it.
struct Passage
{
    std::string task;
    std::vector<Token> tokens;
    std::vector<std::uint8_t> supervised; ///< for each token, 1 = the model is to write it
    std::size_t systemSize = 0;           ///< tokens of the system's message, which many conversations have in common

    bool operator==(const Passage &) const = default;
};

/// Lays the conversation out with the model service's own code, so that training sees what the service evaluates.
/// Supervised are the model's turns with the mark at their ends.
Passage makePassage(const Example &example, const TrainingVocabulary &vocabulary);

} // namespace lumora::training
