// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/transcript.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <chrono>
#include <optional>
#include <variant>

namespace lumora {

/// What a scripted model does in one reply, step by step. A reply finishes after its last step.
struct Script
{
    /// A piece of text. Each %output% in it becomes the output of the latest tool call of the reply.
    struct Text
    {
        QString piece;
    };
    /// Calls a tool and waits for its output.
    struct ToolCall
    {
        QString toolName;
        QByteArray argumentsJson = "{}";
    };
    /// The whole answer to a request with a schema; JSON.
    struct Answer
    {
        QByteArray json;
    };
    /// Ends the reply with an error.
    struct Failure
    {
        QString description;
    };
    /// Waits for ScriptedModelService::release.
    struct Hold
    {
    };
    using Step = std::variant<Text, ToolCall, Answer, Failure, Hold>;

    QList<Step> steps;
    /// Before each step; none means the next turn of the event loop.
    std::chrono::milliseconds pieceDelay{0};
    /// Unset: counted from the texts with the service's token counter.
    std::optional<Usage> usage;

    static Script text(const QString &whole);
    /// One piece a word, as a model writes.
    static Script words(const QString &whole, std::chrono::milliseconds pieceDelay = {});
    static Script pieces(const QStringList &texts);
    static Script answer(const QByteArray &json);
    static Script failure(const QString &description);
    /// Never goes on, until it is cancelled or released.
    static Script hold();

    Script then(const Script &next) const;
};

} // namespace lumora
