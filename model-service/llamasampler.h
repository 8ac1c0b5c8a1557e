// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"
#include "core/sampling.h"
#include "llamahandles.h"
#include "llamavocabulary.h"

#include <string>
#include <vector>

namespace lumora::service {

/// Chooses tokens for one reply.
class LlamaSampler
{
public:
    LlamaSampler(const LlamaVocabulary &vocabulary, const SamplingSettings &settings);

    /// Throws Failure where the text is no grammar. An empty one frees what is sampled.
    void setGrammar(const std::string &gbnf);

    /// Chooses from the logits that the context stands at, and takes note of the choice.
    Token sample(llama_context *context);

private:
    Token choose(const float *logits, bool bound);
    bool grammarAllows(Token token);

    const LlamaVocabulary &m_vocabulary;
    SamplerHandle m_chain;
    SamplerHandle m_grammar; // null: nothing is bound
    std::vector<llama_token_data> m_candidates;
};

} // namespace lumora::service
