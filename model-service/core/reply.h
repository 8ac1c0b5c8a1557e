// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/conversation.h"
#include "core/engine.h"
#include "core/replyreader.h"
#include "core/sequence.h"
#include "core/textpacer.h"
#include "core/tokencontext.h"
#include "wire/messages.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::service {

/// What a reply needs from outside while it is generated.
struct ReplyPort
{
    std::function<void(wire::Answer)> send;
    /// Waits for a call's output; nothing where the reply was cancelled meanwhile.
    std::function<std::optional<std::string>(const std::string &call)> toolOutput;
    std::stop_token stop;
};

/// Generates one reply: text or, with a schema, one object, and in either the calls of tools.
class Reply
{
public:
    static constexpr int mostCalls = 8;

    Reply(Engine &engine, TokenContext &context, const wire::Respond &request, ReplyPort port);

    /// Sends texts and calls as they come. Throws Failure; what was sent until then stands.
    wire::Finished run();

private:
    enum class TurnEnd {
        finished,
        call,
    };

    /// What the model did next.
    enum class Step {
        wrote,
        endedTurn,
        reachedLimit,
        filledContext,
    };

    void open();
    wire::Finished runText();
    wire::Finished runObject(const std::string &schema);
    TurnEnd readText();
    std::string readObject(std::string_view beginning);
    Step step(std::string &bytes);
    void countCall();
    void makeCall(const std::string &json);
    void cutLastToken(std::string_view bytes);
    std::vector<Token> fittingTurn(const std::string &tool, const std::string &output) const;
    wire::Finished finished(std::optional<std::string> content) const;

    Engine &m_engine;
    TokenContext &m_context;
    const wire::Respond &m_request;
    ReplyPort m_port;
    Conversation m_conversation;
    TextPacer m_text;
    Sequence m_sequence;           // all that the model has read and written
    std::size_t m_inputTokens = 0; // of it, what it did not write
    std::size_t m_evaluatedBefore = 0;
    int m_calls = 0;
};

} // namespace lumora::service
