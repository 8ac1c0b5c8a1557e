// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/availability.h"
#include "store/records.h"

#include <QSet>
#include <QString>
#include <QUuid>

#include <cmath>
#include <optional>
#include <vector>

namespace lumora::races {

// What a store makes up itself is not known beforehand. Until it has been seen, an identifier is null, a point in time
// is this, and a text ends or begins with an asterisk in place of what may stand there.
inline const TimePoint unseenTime{std::nan("")};

/// What a run writes to, and what it was started with.
struct Run
{
    QUuid conversationID;
    QUuid messageID;
    QString typedText;
    std::optional<QString> image; ///< a bare name
    ReplyStyle style = ReplyStyle::chat;
};

/// The rules of the store, said as plainly as they can be: a value, and what each operation makes of it. It knows no
/// files, no event loop and no model.
struct StoreRules
{
    std::vector<Conversation> conversations;
    QUuid selectedID; ///< null: that of the first chat, which is new
    QString draft;
    ReplyStyle replyStyle = ReplyStyle::chat;
    qint64 contextTokens = 0;
    std::optional<QString> pendingImage; ///< a bare name
    bool isGenerating = false;
    QString error;
    Availability availability = Availability::available();
    QSet<QString> images; ///< what lies in the image folder
    int saves = 0;
    std::optional<Run> run;

    Conversation *find(const QUuid &id);
    const Conversation *find(const QUuid &id) const;
    bool canSend() const;

    void start(std::vector<Conversation> stored);
    void send();
    void stopGenerating();
    void newConversation();
    void selectConversation(const QUuid &id);
    void deleteConversation(const QUuid &id);
    void attachImage(const QString &suffix);
    void failToAttach();
    void removePendingImage();

    // What a run writes.
    void takeText(const QString &whole, const QList<ToolEvent> &events);
    void takeTextEnd(const QList<ToolEvent> &events, qint64 inputTokens, qint64 outputTokens);
    void takeCard(const AnswerCard &card, const QList<ToolEvent> &events, qint64 inputTokens, qint64 outputTokens);
    void takeFailure(const QString &description);

private:
    void compose(const QUuid &id);
    void append(ChatMessage message, const QUuid &conversationID);
    void endRun();
    ChatMessage *reply();
};

/// What a run asks the model, and the tools that it offers, in order.
QString promptText(const StoreRules &state, const Run &run, qint64 budget);
QStringList offeredTools(const Run &run, const QStringList &documentNames);

} // namespace lumora::races
