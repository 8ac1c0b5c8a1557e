// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "trainer/matrix.h"
#include "trainer/randomnumbers.h"
#include "trainer/tokenwriting.h"
#include "trainer/widthplan.h"

#include <map>
#include <span>
#include <string>
#include <vector>

namespace lumora::training {

/// The embeddings that a training begins with.
class StartingEmbeddings
{
public:
    static constexpr float contentLength = 1.04F; ///< of what tells a token from the others
    static constexpr float constantSize = 0.6F;   ///< of the number that all tokens have in common
    static constexpr float markSize = 0.3F;

    /// texts: of the tokens, as a vocabulary has them. All must live on.
    StartingEmbeddings(const WidthPlan &plan, std::span<const std::string> texts, RandomNumbers &random);

    void set(Matrix embeddings);

    /// Orthogonal directions of the content, a row each, as many as it has columns. The last ones, as many as a slot
    /// has columns, are the code that puts content into a slot: they say nothing of how a token is written.
    ConstMatrix directions() const { return {m_directions.data(), m_plan.content, m_plan.content}; }

private:
    void setDirections();
    void setContent(std::span<float> content, const TokenWriting &writing);
    void setMarks(Matrix embeddings, int token, const TokenWriting &writing);

    WidthPlan m_plan;
    std::span<const std::string> m_texts;
    RandomNumbers &m_random;
    std::vector<float> m_directions;
    std::map<std::string, std::vector<float>> m_stems;
};

} // namespace lumora::training
