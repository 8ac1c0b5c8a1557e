// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "llamasampler.h"

#include "core/failure.h"

#include <cmath>

namespace lumora::service {

namespace {

void add(const SamplerHandle &chain, llama_sampler *sampler)
{
    llama_sampler_chain_add(chain.get(), sampler); // which owns it from here on
}

void addFilters(const SamplerHandle &chain, const SamplingSettings &settings, int vocabularySize)
{
    if (settings.penaltyRepeat != 1.0 && settings.penaltyLastTokens > 0)
        add(chain, llama_sampler_init_penalties(vocabularySize, settings.penaltyLastTokens,
                                                static_cast<float>(settings.penaltyRepeat), 0.0F, 0.0F));
    if (settings.topK > 0)
        add(chain, llama_sampler_init_top_k(settings.topK));
    if (settings.topP < 1)
        add(chain, llama_sampler_init_top_p(static_cast<float>(settings.topP), 1));
    if (settings.minP > 0)
        add(chain, llama_sampler_init_min_p(static_cast<float>(settings.minP), 1));
    if (settings.xtcProbability > 0)
        add(chain, llama_sampler_init_xtc(static_cast<float>(settings.xtcProbability),
                                          static_cast<float>(settings.xtcThreshold), 1, LLAMA_DEFAULT_SEED));
}

SamplerHandle makeChain(const SamplingSettings &settings, int vocabularySize)
{
    llama_sampler_chain_params parameters = llama_sampler_chain_default_params();
    parameters.no_perf = true;
    SamplerHandle chain(llama_sampler_chain_init(parameters));
    if (settings.greedy) {
        add(chain, llama_sampler_init_greedy());
        return chain;
    }
    addFilters(chain, settings, vocabularySize);
    add(chain, llama_sampler_init_temp(static_cast<float>(settings.temperature)));
    add(chain, llama_sampler_init_dist(LLAMA_DEFAULT_SEED));
    return chain;
}

} // namespace

LlamaSampler::LlamaSampler(const LlamaVocabulary &vocabulary, const SamplingSettings &settings)
    : m_vocabulary(vocabulary)
    , m_chain(makeChain(settings, vocabulary.size()))
    , m_candidates(static_cast<std::size_t>(vocabulary.size()))
{
}

void LlamaSampler::setGrammar(const std::string &gbnf)
{
    m_grammar.reset();
    if (gbnf.empty())
        return;
    m_grammar.reset(llama_sampler_init_grammar(m_vocabulary.handle(), gbnf.c_str(), "root"));
    if (!m_grammar)
        throw internalFailure("a grammar was not understood");
}

// Asking the grammar about one token is cheap, and about a whole vocabulary is not. So it is asked about what the model
// wants to say anyway, and only where it objects is the choice made again among what it allows.
Token LlamaSampler::sample(llama_context *context)
{
    const float *const logits = llama_get_logits_ith(context, -1);
    if (logits == nullptr)
        throw internalFailure("the model gave no result");
    Token token = choose(logits, false);
    if (m_grammar && !grammarAllows(token)) {
        token = choose(logits, true);
        if (!grammarAllows(token))
            throw internalFailure("the model has no token that the answer's form allows");
    }
    llama_sampler_accept(m_chain.get(), token);
    if (m_grammar)
        llama_sampler_accept(m_grammar.get(), token);
    return token;
}

Token LlamaSampler::choose(const float *logits, bool bound)
{
    for (std::size_t i = 0; i < m_candidates.size(); ++i)
        m_candidates[i] = {static_cast<Token>(i), logits[i], 0.0F};
    llama_token_data_array candidates{m_candidates.data(), m_candidates.size(), -1, false};
    if (bound)
        llama_sampler_apply(m_grammar.get(), &candidates);
    llama_sampler_apply(m_chain.get(), &candidates);
    if (candidates.selected < 0 || static_cast<std::size_t>(candidates.selected) >= candidates.size)
        throw internalFailure("no token could be chosen");
    return candidates.data[candidates.selected].id;
}

bool LlamaSampler::grammarAllows(Token token)
{
    llama_token_data single{token, 1.0F, 0.0F};
    llama_token_data_array candidates{&single, 1, -1, false};
    llama_sampler_apply(m_grammar.get(), &candidates);
    return std::isfinite(single.logit);
}

} // namespace lumora::service
