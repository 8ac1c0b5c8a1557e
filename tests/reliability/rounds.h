// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <random>

namespace lumora {

/// How long a test goes on: a few rounds with every build, many where LUMORA_ROUNDS says so.
inline int rounds(int few)
{
    const int many = qEnvironmentVariableIntValue("LUMORA_ROUNDS");
    return many > 0 ? many : few;
}

/// A new one each time, which is told, and LUMORA_SEED where a run is to be made again.
inline unsigned seed()
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("LUMORA_SEED", &isGiven);
    const unsigned seed = isGiven ? unsigned(given) : std::random_device()() % 1000000;
    qInfo("LUMORA_SEED=%u", seed);
    return seed;
}

} // namespace lumora
