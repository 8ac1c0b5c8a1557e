// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/passage.h"
#include "trainer/batch.h"

#include <map>
#include <optional>
#include <vector>

namespace lumora::training {

/// The passage alone, its positions counted from its start; nothing is shared.
Batch batchOf(const Passage &passage);

/// Makes batches of passages that begin with the same system's message, which stands in a batch once.
class Packer
{
public:
    /// capacity: tokens of a batch, at most.
    explicit Packer(int capacity);

    /// The batch that is full now, if one is. A passage that is longer than a batch is left out.
    std::optional<Batch> add(const Passage &passage);

    /// A batch that is not full; nothing when all has been given.
    std::optional<Batch> takeRest();

private:
    int m_capacity;
    std::map<std::vector<Token>, Batch> m_open; // by the system's message
};

} // namespace lumora::training
