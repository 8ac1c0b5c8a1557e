// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "llamacontext.h"

#include "core/failure.h"
#include "llamafacts.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace lumora::service {

namespace {

constexpr std::int32_t aborted = 2; // what llama_decode gives then

bool isStopRequested(void *stop)
{
    const bool requested = static_cast<const std::stop_token *>(stop)->stop_requested();
    if (requested)
        muteLog(true);
    return requested;
}

} // namespace

class LlamaContext::State final : public ComputedState
{
public:
    State(std::vector<std::uint8_t> data, Positions positions)
        : m_data(std::move(data))
        , m_positions(std::move(positions))
    {
    }

    std::size_t bytes() const override { return m_data.size(); }
    const std::vector<std::uint8_t> &data() const { return m_data; }
    const Positions &positions() const { return m_positions; }

private:
    std::vector<std::uint8_t> m_data;
    Positions m_positions;
};

LlamaContext::LlamaContext(ContextHandle context)
    : m_context(std::move(context))
{
    llama_set_abort_callback(m_context.get(), isStopRequested, &m_stop);
}

std::size_t LlamaContext::keep(std::size_t count)
{
    if (count > 0 && cut(count) && held() == count && (!goesBack() || llama_memory_seq_pos_min(memory(), 0) == 0)) {
        m_positions.keep(count);
        return count;
    }
    return clear();
}

std::size_t LlamaContext::evaluate(std::span<const Token> tokens, std::size_t position, const std::stop_token &stop)
{
    m_stop = stop;
    const std::size_t batchSize = llama_n_batch(m_context.get());
    for (std::size_t done = 0; done < tokens.size(); done += batchSize) {
        if (stop.stop_requested())
            return position + done;
        const auto part = tokens.subspan(done, std::min(batchSize, tokens.size() - done));
        const std::int32_t result = decode(part, m_positions.after(position + done));
        if (result == 0)
            continue;
        // An aborted evaluation leaves what it completed, but a state that cannot go back may be half-way on.
        if (result == aborted)
            return goesBack() ? held() : clear();
        clear();
        throw internalFailure("the evaluation ended with " + std::to_string(result));
    }
    return position + tokens.size();
}

// The positions are given, and not left to be counted on from the last one: after an image they may go on further.
std::int32_t LlamaContext::decode(std::span<const Token> tokens, llama_pos position)
{
    std::vector<Token> batchTokens(tokens.begin(), tokens.end());
    std::vector<llama_pos> positions(tokens.size());
    std::iota(positions.begin(), positions.end(), position);
    llama_batch batch = llama_batch_get_one(batchTokens.data(), static_cast<std::int32_t>(batchTokens.size()));
    batch.pos = positions.data();
    const std::int32_t result = llama_decode(m_context.get(), batch);
    muteLog(false);
    return result;
}

std::size_t LlamaContext::evaluateImage(LlamaImages &images, std::size_t number, std::size_t position,
                                        const std::stop_token &stop)
{
    m_stop = stop;
    const bool done = images.evaluate(number, m_context.get(), m_positions.after(position), stop);
    muteLog(false);
    if (done) {
        m_positions.add(position, images.size(number), images.positions(number));
        return position + images.size(number);
    }
    if (!stop.stop_requested()) {
        clear();
        throw internalFailure("an image could not be evaluated");
    }
    return goesBack() && cut(position) ? position : clear(); // some of the stretch may have been computed
}

std::unique_ptr<ComputedState> LlamaContext::copyState(std::size_t mostBytes) const
{
    const std::size_t size = llama_state_seq_get_size(m_context.get(), 0);
    if (size > mostBytes)
        return nullptr;
    std::vector<std::uint8_t> data(size);
    if (llama_state_seq_get_data(m_context.get(), data.data(), size, 0) != size)
        return nullptr;
    return std::make_unique<State>(std::move(data), m_positions);
}

bool LlamaContext::restoreState(const ComputedState &state)
{
    const auto &copy = static_cast<const State &>(state); // there are no others in this program
    clear();
    if (llama_state_seq_set_data(m_context.get(), copy.data().data(), copy.bytes(), 0) == 0) {
        clear();
        return false;
    }
    m_positions = copy.positions();
    return true;
}

/// Forgets what came after the first count tokens; false where the model cannot go back.
bool LlamaContext::cut(std::size_t count)
{
    return llama_memory_seq_rm(memory(), 0, m_positions.after(count), -1);
}

std::size_t LlamaContext::clear()
{
    llama_memory_clear(memory(), false);
    m_positions.keep(0);
    return 0;
}

std::size_t LlamaContext::held() const
{
    return m_positions.upTo(llama_memory_seq_pos_max(memory(), 0));
}

llama_memory_t LlamaContext::memory() const
{
    return llama_get_memory(m_context.get());
}

bool LlamaContext::goesBack() const
{
    const llama_model *const model = llama_get_model(m_context.get());
    return !llama_model_is_recurrent(model) && !llama_model_is_hybrid(model);
}

} // namespace lumora::service
