// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/reply.h"

#include "core/failure.h"
#include "core/grammar.h"
#include "core/toolcall.h"
#include "core/utf8.h"

#include <algorithm>
#include <utility>

namespace lumora::service {

namespace {

constexpr std::size_t smallestReply = 16; // tokens, below which a request is not begun
constexpr std::size_t longestPiece = 256; // bytes, of which no vocabulary has a longer token

/// Tokens that a tool's output leaves for what the model makes of it.
std::size_t roomForAnswer(std::size_t contextSize)
{
    return std::min<std::size_t>(512, contextSize / 8);
}

} // namespace

Reply::Reply(Engine &engine, TokenContext &context, const wire::Respond &request, ReplyPort port)
    : m_engine(engine)
    , m_context(context)
    , m_request(request)
    , m_port(std::move(port))
    , m_conversation(engine)
    , m_text([this](std::string piece) {
        m_port.send(wire::Text{m_request.id, std::move(piece)});
    })
    , m_evaluatedBefore(context.evaluatedCount())
{
}

wire::Finished Reply::run()
{
    open();
    m_engine.startSampling(samplingSettings(m_engine.samplingDefaults(), m_request.options));
    m_engine.setGrammar({});
    return m_request.schema ? runObject(*m_request.schema) : runText();
}

void Reply::open()
{
    std::vector<PreparedImage> images;
    if (!m_request.images.empty()) {
        if (!m_engine.readsImages())
            throw internalFailure("it was given an image, and reads none");
        images = m_engine.prepareImages(m_request.images);
    }
    m_sequence = m_conversation.opening(m_request, images);
    m_inputTokens = m_sequence.tokens.size();
    if (m_inputTokens + smallestReply > m_engine.contextSize())
        throw images.empty() ? promptTooLong() : imageTooLarge();
}

wire::Finished Reply::runText()
{
    while (readText() == TurnEnd::call) {
        countCall();
        m_engine.setGrammar(callGrammar(m_request.tools));
        const std::string call = readObject("{\"tool\":");
        m_engine.setGrammar({});
        makeCall(call);
    }
    return finished(std::nullopt);
}

wire::Finished Reply::runObject(const std::string &schema)
{
    const std::string grammar =
        m_request.tools.empty() ? objectGrammar(schema) : objectOrCallGrammar(schema, m_request.tools);
    for (;;) {
        m_engine.setGrammar(grammar);
        std::string object = readObject({});
        if (m_request.tools.empty() || !isToolCall(object))
            return finished(std::move(object));
        countCall();
        makeCall(object);
    }
}

Reply::TurnEnd Reply::readText()
{
    TextReader reader({.calls = !m_request.tools.empty(), .userTurn = m_conversation.isPlain()},
                      m_conversation.opensThought() ? ThoughtFilter::Start::inside : ThoughtFilter::Start::outside);
    std::string bytes;
    std::string text;
    Step done = Step::wrote;
    while ((done = step(bytes)) == Step::wrote) {
        text.clear();
        const auto [consumed, found] = reader.read(bytes, text);
        m_text.add(text);
        if (found == LineWatcher::Found::call) {
            m_text.flush();
            cutLastToken(std::string_view(bytes).substr(0, consumed));
            return TurnEnd::call;
        }
        if (found == LineWatcher::Found::userTurn)
            break;
    }
    text.clear();
    if (done != Step::wrote)
        reader.finish(text);
    m_text.add(text);
    m_text.flush();
    if (done == Step::filledContext)
        throw replyFilledContext();
    if (reader.isInsideThought())
        throw endedInThought();
    return TurnEnd::finished;
}

std::string Reply::readObject(std::string_view beginning)
{
    ObjectReader object(beginning);
    std::string bytes;
    while (!object.isComplete()) {
        if (step(bytes) != Step::wrote)
            throw answerCutShort();
        object.read(bytes);
    }
    return object.text();
}

Reply::Step Reply::step(std::string &bytes)
{
    const auto written = static_cast<std::int64_t>(m_sequence.tokens.size() - m_inputTokens);
    if (m_request.options.maximumTokens && written >= *m_request.options.maximumTokens)
        return Step::reachedLimit;
    if (m_sequence.tokens.size() >= m_engine.contextSize())
        return Step::filledContext;
    m_context.advanceTo(m_sequence, m_port.stop);
    const Token token = m_engine.sample();
    if (m_engine.endsTurn(token))
        return Step::endedTurn;
    m_sequence.tokens.push_back(token);
    bytes = m_engine.tokenBytes(token);
    return Step::wrote;
}

void Reply::countCall()
{
    if (++m_calls > mostCalls)
        throw tooManyCalls();
}

void Reply::makeCall(const std::string &json)
{
    const ToolCall call = parseToolCall(json);
    const std::string id = std::to_string(m_request.id) + "-" + std::to_string(m_calls);
    m_port.send(wire::ToolCall{m_request.id, id, call.name, call.arguments});
    const auto output = m_port.toolOutput(id);
    if (!output)
        throw cancelled();
    const std::vector<Token> turn = fittingTurn(call.name, *output);
    m_sequence.append(turn);
    m_inputTokens += turn.size();
}

// The grammar of a call begins right after its colon. A token that reaches beyond it is taken back, and only the part
// up to there is put in its place.
void Reply::cutLastToken(std::string_view bytes)
{
    if (bytes.size() == m_engine.tokenBytes(m_sequence.tokens.back()).size())
        return;
    m_sequence.tokens.pop_back();
    const std::vector<Token> part = m_engine.tokenize(bytes, SpecialTokens::asText);
    m_sequence.append(part);
}

std::vector<Token> Reply::fittingTurn(const std::string &tool, const std::string &output) const
{
    const std::size_t taken = m_sequence.tokens.size() + roomForAnswer(m_engine.contextSize());
    const std::size_t room = m_engine.contextSize() - std::min(taken, m_engine.contextSize());
    std::string_view part = prefixOfCharacters(output, room * longestPiece);
    for (;;) {
        std::vector<Token> turn = m_conversation.toolTurn(tool, part);
        if (turn.size() <= room)
            return turn;
        if (part.empty())
            throw replyFilledContext();
        // In proportion to what is too much, and a little more, so that few rounds are needed.
        part = prefixOfCharacters(part, part.size() * room / (turn.size() + 1));
    }
}

wire::Finished Reply::finished(std::optional<std::string> content) const
{
    return {m_request.id, static_cast<std::int64_t>(m_inputTokens),
            static_cast<std::int64_t>(m_sequence.tokens.size() - m_inputTokens),
            static_cast<std::int64_t>(m_context.evaluatedCount() - m_evaluatedBefore), std::move(content)};
}

} // namespace lumora::service
