// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "samplehistory.h"

#include <QRandomGenerator>
#include <QStringList>

namespace lumora {

namespace {

constexpr int wordsPerEmoji = 100;

const QStringList &words()
{
    static const QStringList list{"the",     "lease",     "says",   "that",        "\"pets\"",     "are",     "allowed",
                                  "with",    "consent",   "of",     "a",           "landlord,",    "naïve",   "café",
                                  "in",      "writing.",  "\n",     "Überprüfung", "日本語の文章", "👍🏽",    "because",
                                  "it",      "was",       "agreed", "between",     "both",         "parties", "on",
                                  "Monday;", "C:\\notes", "see",    "page",        "12/14"};
    return list;
}

} // namespace

QString sampleText(qsizetype length, quint32 seed)
{
    QRandomGenerator random(seed);
    QString text;
    text.reserve(length + 16);
    while (text.size() < length) {
        const bool isEmoji = random.bounded(wordsPerEmoji) == 0;
        text += isEmoji ? QStringLiteral("👍🏽") : words()[random.bounded(int(words().size()))];
        text += u' ';
    }
    return text;
}

Conversation sampleConversation(int messages, qsizetype answerLength, quint32 seed)
{
    Conversation conversation;
    conversation.title = sampleText(40, seed);
    for (int i = 0; i < messages; ++i) {
        ChatMessage message{.role = i % 2 == 0 ? ChatMessage::Role::user : ChatMessage::Role::assistant,
                            .text = sampleText(i % 2 == 0 ? answerLength / 4 : answerLength, seed * 1000 + quint32(i))};
        if (i % 2 == 1) {
            message.toolEvents = QList<ToolEvent>{{"call", "currentDate", "Complete"}};
            message.inputTokens = 812;
            message.outputTokens = 95;
        }
        if (i % 10 == 9)
            message.card = AnswerCard{"Title", sampleText(100, seed), {"one point", "two"}, {"a step"}};
        conversation.messages.append(message);
    }
    return conversation;
}

std::vector<Conversation> sampleHistory(qsizetype bytes)
{
    constexpr int messages = 25;
    constexpr qsizetype answerLength = 1600;
    constexpr qsizetype bytesPerChat = messages * 1260; // about, keys and longer encodings included
    std::vector<Conversation> history;
    for (qsizetype i = 0; i * bytesPerChat < bytes; ++i)
        history.push_back(sampleConversation(messages, answerLength, quint32(i + 1)));
    return history;
}

} // namespace lumora
