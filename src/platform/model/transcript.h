// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>

#include <variant>

namespace lumora {

/// What happened in a session, in order. Tool calls stand in it at once, their outputs as they arrive.
struct Transcript
{
    struct Instructions
    {
        QString text;
        bool operator==(const Instructions &) const = default;
    };
    struct PromptText
    {
        QString text;
        bool operator==(const PromptText &) const = default;
    };
    struct ToolCall
    {
        QString id; ///< unique in the session
        QString toolName;
        QString arguments; ///< a JSON object
        bool operator==(const ToolCall &) const = default;
    };
    struct ToolCalls
    {
        QList<ToolCall> calls;
        bool operator==(const ToolCalls &) const = default;
    };
    struct ToolOutput
    {
        QString id; ///< the call that it answers
        QString text;
        bool operator==(const ToolOutput &) const = default;
    };
    struct Response
    {
        QString text;
        bool operator==(const Response &) const = default;
    };
    using Entry = std::variant<Instructions, PromptText, ToolCalls, ToolOutput, Response>;

    QList<Entry> entries;

    bool operator==(const Transcript &) const = default;
};

/// Tokens as the engine counted them, over a whole session. Input is all that the model read: instructions, tools,
/// prompt and tool outputs. Output is all that it wrote, tool calls included.
struct Usage
{
    struct Tokens
    {
        qint64 totalTokenCount = 0;
        bool operator==(const Tokens &) const = default;
    };
    Tokens input;
    Tokens output;

    bool operator==(const Usage &) const = default;
};

} // namespace lumora
