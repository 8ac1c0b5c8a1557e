// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/promptassembly.h"

#include <QTest>

using namespace lumora;

namespace {

ChatMessage user(const QString &text, const std::optional<QString> &image = std::nullopt)
{
    return {.role = ChatMessage::Role::user, .text = text, .imageFilename = image};
}

ChatMessage assistant(const QString &text)
{
    return {.role = ChatMessage::Role::assistant, .text = text};
}

const QString ending = "\n\nRespond to the latest user message.";

/// What came before the latest message, or nothing.
QString historyOf(const QString &prompt)
{
    return prompt.left(prompt.indexOf("Latest user message:\n"));
}

} // namespace

class PromptAssemblyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void laysOutTheConversation()
    {
        Conversation chat;
        QCOMPARE(assemblePrompt(chat, QUuid(), 9000), QString());
        chat.messages = {user("Hi")};
        QCOMPARE(assemblePrompt(chat, QUuid(), 9000), "Latest user message:\nHi" + ending);

        ChatMessage card = assistant({});
        card.card = AnswerCard{"T", "S", {}, {}};
        chat.messages = {user("Hi"), assistant("Hello, how can I help?"), user("Look", "A.png"), card,
                         user("What is on this page?", "B.png")};
        QCOMPARE(
            assemblePrompt(chat, QUuid(), 9000),
            "Previous conversation:\n\nUser: Hi\n\nAssistant: Hello, how can I help?\n\nUser: Look [Image attached]\n\n"
            "Assistant: \n\nLatest user message:\nWhat is on this page?" +
                ending);
    }

    void leavesOneMessageOut()
    {
        const ChatMessage reply = assistant({});
        Conversation chat{.messages = {user("Hi"), reply}};
        QCOMPARE(assemblePrompt(chat, reply.id, 9000), "Latest user message:\nHi" + ending);
        QCOMPARE(assemblePrompt(chat, QUuid::createUuid(), 9000),
                 "Previous conversation:\n\nUser: Hi\n\nLatest user message:\n" + ending);
        chat.messages = {reply};
        QCOMPARE(assemblePrompt(chat, reply.id, 9000), QString());
    }

    void fitsTheHistoryToTheBudget_data()
    {
        QTest::addColumn<std::vector<ChatMessage>>("earlier");
        QTest::addColumn<int>("budget");
        QTest::addColumn<QString>("history");
        const QString header = "Previous conversation:\n\n";

        QTest::newRow("exactly") << std::vector{user("1234")} << 10 << header + "User: 1234\n\n";
        QTest::newRow("one too long") << std::vector{user("12345")} << 10 << QString();
        QTest::newRow("newest first") << std::vector{user("a"), user("b")} << 13 << header + "User: b\n\n";
        QTest::newRow("both") << std::vector{user("a"), user("b")} << 14 << header + "User: a\n\nUser: b\n\n";
        QTest::newRow("stops at the first that does not fit")
            << std::vector{user("a"), user("much too long"), user("b")} << 16 << header + "User: b\n\n";
        QTest::newRow("the marker counts") << std::vector{user("1234", "A.png")} << 26 << QString();
        QTest::newRow("the marker fits") << std::vector{user("1234", "A.png")} << 27
                                         << header + "User: 1234 [Image attached]\n\n";
        QTest::newRow("characters, not code units")
            << std::vector{user("👨‍👩‍👧‍👦🇩🇪e\u0301\r\n")} << 10
            << header + "User: 👨‍👩‍👧‍👦🇩🇪e\u0301\r\n\n\n";
        QTest::newRow("a mark joins the blank before it")
            << std::vector{user("\u0301123")} << 9 << header + "User: \u0301123\n\n";
    }

    void fitsTheHistoryToTheBudget()
    {
        QFETCH(std::vector<ChatMessage>, earlier);
        QFETCH(int, budget);
        QFETCH(QString, history);
        Conversation chat{.messages = earlier};
        chat.messages.append(user("latest"));
        QCOMPARE(historyOf(assemblePrompt(chat, QUuid(), budget)), history);
    }

    void cutsTheLatestMessage_data()
    {
        QTest::addColumn<int>("budget");
        QTest::addColumn<int>("kept");
        QTest::newRow("capped") << 9000 << 8000;
        QTest::newRow("by the budget") << 281 << 281;
    }

    void cutsTheLatestMessage()
    {
        QFETCH(int, budget);
        QFETCH(int, kept);
        const Conversation chat{.messages = {user(QString(5000, u'a') + QString(5000, u'b'))}};
        const QString expected = QString(std::max(0, kept - 5000), u'a') + QString(std::min(kept, 5000), u'b');
        QCOMPARE(assemblePrompt(chat, QUuid(), budget), "Latest user message:\n" + expected + ending);
    }

    void capsEarlierMessages()
    {
        const Conversation chat{.messages = {user("x" + QString(8000, u'y'), "A.png"), user("latest")}};
        QCOMPARE(historyOf(assemblePrompt(chat, QUuid(), 9000)),
                 "Previous conversation:\n\nUser: " + QString(8000, u'y') + " [Image attached]\n\n");
    }
};

QTEST_APPLESS_MAIN(PromptAssemblyTest)
#include "tst_promptassembly.moc"
