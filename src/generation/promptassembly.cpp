// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/promptassembly.h"

#include "platform/text/graphemes.h"
#include "store/chatstore.h"

#include <QStringBuilder>

#include <algorithm>

namespace lumora {

namespace {

QString historyLine(const ChatMessage &message)
{
    const QStringView label = message.role == ChatMessage::Role::user ? u"User" : u"Assistant";
    const QStringView marker = message.imageFilename ? QStringView(u" [Image attached]") : QStringView();
    return label % u": " % lastCharacters(message.text, messageCharacterCap) % marker;
}

/// Walks back over the messages but the excluded one.
class BackwardWalk
{
public:
    BackwardWalk(const std::vector<ChatMessage> &messages, const QUuid &excluding)
        : m_next(messages.rbegin())
        , m_end(messages.rend())
        , m_excluding(excluding)
    {
    }

    const ChatMessage *next()
    {
        while (m_next != m_end) {
            const ChatMessage &message = *m_next++;
            if (message.id != m_excluding)
                return &message;
        }
        return nullptr;
    }

private:
    std::vector<ChatMessage>::const_reverse_iterator m_next;
    std::vector<ChatMessage>::const_reverse_iterator m_end;
    QUuid m_excluding;
};

/// The lines that fit, oldest first.
QStringList fittingLines(BackwardWalk earlier, qint64 budget)
{
    QStringList lines;
    qint64 remaining = budget;
    while (const ChatMessage *message = earlier.next()) {
        const QString line = historyLine(*message);
        const qint64 length = characterCount(line);
        if (remaining < length)
            break;
        remaining -= length;
        lines.append(line);
    }
    std::ranges::reverse(lines);
    return lines;
}

} // namespace

QString assemblePrompt(const Conversation &conversation, const QUuid &excluding, qint64 budget)
{
    BackwardWalk messages(conversation.messages.all(), excluding);
    const ChatMessage *latest = messages.next();
    if (!latest)
        return {};
    QString history;
    if (const QStringList lines = fittingLines(messages, budget); !lines.isEmpty())
        history = u"Previous conversation:\n\n" % lines.join(u"\n\n") % u"\n\n";
    return history % u"Latest user message:\n" % lastCharacters(latest->text, std::min(budget, messageCharacterCap)) %
           u"\n\nRespond to the latest user message.";
}

qint64 promptTokenLimit(qint64 contextSize)
{
    return contextSize * 3 / 4;
}

QString ChatStore::promptText(const QUuid &conversationID, const QUuid &excluding, qint64 budget) const
{
    const Conversation *conversation = m_conversations.find(conversationID);
    return conversation ? assemblePrompt(*conversation, excluding, budget) : QString();
}

} // namespace lumora
