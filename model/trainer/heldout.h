// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/passage.h"
#include "trainer/network.h"

#include <map>
#include <span>
#include <string>
#include <vector>

namespace lumora::training {

/// Passages that are not trained on. A reply counts as right where the most likely token is the right one all through
/// it: then the model writes exactly this reply, given the turns before.
class HeldOut
{
public:
    explicit HeldOut(std::vector<Passage> passages);

    struct Score
    {
        int passages = 0;
        int right = 0; ///< all turns
    };

    struct Result
    {
        double loss = 0; ///< of a token
        std::map<std::string, Score> tasks;
        std::string text() const; ///< one line
    };

    Result look(std::span<Network> networks, std::span<const float> weights) const;

private:
    std::vector<Passage> m_passages; // in the order in which they stand in the batches
    std::vector<Batch> m_batches;
};

} // namespace lumora::training
