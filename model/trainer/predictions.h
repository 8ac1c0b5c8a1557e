// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/trainingvocabulary.h"
#include "trainer/network.h"

#include <span>
#include <string>
#include <string_view>

namespace lumora::training {

/// What the network makes of a line of the generator's, as a line of JSON: the line's members and "tokens", "places"
/// (of the tokens after which the model writes one) and "predicted" (the most likely token after each).
std::string predictionLine(std::string_view exampleLine, const TrainingVocabulary &vocabulary, Network &network,
                           std::span<const float> weights);

} // namespace lumora::training
