// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/chatstore.h"

#include <QPointer>
#include <QUuid>
#include <qcoro/qcorotask.h>

#include <memory>
#include <optional>

namespace lumora {

/// What one reply is generated from, taken when it was asked for; later changes do not touch it. After every wait a run
/// asks currentStore() before it writes: the store may be gone, or the run stopped or superseded meanwhile.
struct GenerationRun
{
    QPointer<ChatStore> store;
    QUuid conversationID;
    QUuid messageID;   ///< the empty reply to be filled
    QString typedText; ///< the trimmed draft, possibly empty
    std::optional<QString> imageURL;
    ReplyStyle replyStyle = ReplyStyle::chat;
    QUuid generationID;
    std::shared_ptr<GenerationTask> task;

    /// The store while it lives and this run is its current one; null otherwise.
    ChatStore *currentStore() const;

    // These throw CancellationError where the run is not current.
    ChatStore &requireCurrentStore() const;
    SystemLanguageModel model() const; ///< not to be held over a wait: a run must not keep the model's service alive
    QCoro::Task<qint64> tokenCount(const QString &text) const;
    QString promptText(qint64 budget) const;
    ToolList selectTools() const;
    void publishContextTokens(qint64 tokens) const;

    // These do nothing where it is not.
    void applySnapshot(const Snapshot &snapshot) const;
    void applyAnswer(const StructuredAnswer &answer) const;
    void record(const LanguageModelSession &session) const;
    void recordToolEvents(const LanguageModelSession &session) const;
    void fail(const QString &description) const;
    void end() const;
};

/// Generates the reply: fits the prompt, opens a session, streams or asks for one answer, and ends the run. Throws
/// nothing: a failure becomes the store's error line, a cancellation is silent.
QCoro::Task<> generate(GenerationRun run);

} // namespace lumora
