// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/historyfile.h"

#include <QTest>

using namespace lumora;

namespace {

const QUuid conversationID = QUuid::fromString("11111111-aaaa-4bbb-8ccc-000000000001");
const QUuid messageID = QUuid::fromString("22222222-aaaa-4bbb-8ccc-000000000002");

Conversation conversationWith(const ChatMessage &message)
{
    return {.id = conversationID, .title = "T", .messages = {message}, .updatedAt = {0.5}};
}

QByteArray fileWith(const QByteArray &message)
{
    return R"([{"id":"11111111-AAAA-4BBB-8CCC-000000000001","title":"T","messages":[)" + message +
           R"(],"updatedAt":0.5}])";
}

QByteArray messageWith(const QByteArray &more)
{
    return R"({"id":"22222222-AAAA-4BBB-8CCC-000000000002","role":"assistant","text":"Hi","date":1.25)" + more + '}';
}

} // namespace

class HistoryFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesEachRecordByteForByte_data()
    {
        QTest::addColumn<ChatMessage>("message");
        QTest::addColumn<QByteArray>("json");
        const ChatMessage plain{.id = messageID, .role = ChatMessage::Role::assistant, .text = "Hi", .date = {1.25}};

        QTest::newRow("no optional fields") << plain << messageWith({});
        ChatMessage user = plain;
        user.role = ChatMessage::Role::user;
        user.imageFilename = "A.png";
        QTest::newRow("user with an image")
            << user << messageWith(R"(,"imageFilename":"A.png")").replace("assistant", "user");
        ChatMessage empty = plain;
        empty.toolEvents.emplace();
        empty.inputTokens = 0;
        empty.outputTokens = 0;
        QTest::newRow("present but empty")
            << empty << messageWith(R"(,"toolEvents":[],"inputTokens":0,"outputTokens":0)");
        ChatMessage full = plain;
        full.card = AnswerCard{"A", "B", {"c", "d"}, {}};
        full.toolEvents = {{"1", "currentDate", "Complete"}, {"2", "currentDate", "Running"}};
        full.inputTokens = 812;
        full.outputTokens = -1;
        QTest::newRow("everything")
            << full
            << messageWith(
                   R"(,"card":{"title":"A","summary":"B","keyPoints":["c","d"],"nextSteps":[]})"
                   R"(,"toolEvents":[{"id":"1","name":"currentDate","status":"Complete"},{"id":"2","name":"currentDate","status":"Running"}])"
                   R"(,"inputTokens":812,"outputTokens":-1)");
    }

    void writesEachRecordByteForByte()
    {
        QFETCH(ChatMessage, message);
        QFETCH(QByteArray, json);
        const QByteArray bytes = encodeConversations({conversationWith(message)});
        QCOMPARE(bytes, fileWith(json));
        QCOMPARE(decodeConversations(bytes), std::vector{conversationWith(message)});
    }

    void readsWhatOthersMayWrite_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nulls") << fileWith(messageWith(
            R"(,"imageFilename":null,"card":null,"toolEvents":null,"inputTokens":null,"outputTokens":null)"));
        QTest::newRow("white space") << QByteArray(" \n") + fileWith(messageWith({})).replace(",", " ,\n\t") + '\n';
        QTest::newRow("lower-case identifiers")
            << fileWith(messageWith({})).replace("AAAA-4BBB-8CCC", "aaaa-4bbb-8ccc");
        QTest::newRow("unknown keys") << fileWith(messageWith(R"(,"later":{"a":[1]})"));
        QTest::newRow("another order of keys")
            << fileWith(R"({"date":1.25,"text":"Hi","role":"assistant","id":"22222222-AAAA-4BBB-8CCC-000000000002"})");
        QTest::newRow("escapes") << fileWith(messageWith({})).replace("Hi", "\\u0048\\u0069");
    }

    void readsWhatOthersMayWrite()
    {
        QFETCH(QByteArray, bytes);
        const auto conversations = decodeConversations(bytes);
        QVERIFY(conversations);
        QCOMPARE(encodeConversations(*conversations), fileWith(messageWith({})));
    }

    void refusesTheWholeFileForOneFault_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray sound = fileWith(messageWith({}));
        const auto replaced = [&sound](const char *before, const char *after) {
            return QByteArray(sound).replace(before, after);
        };

        QTest::newRow("not an array") << QByteArray("{}");
        QTest::newRow("cut") << sound.chopped(1);
        QTest::newRow("behind the end") << sound + "]";
        QTest::newRow("role system") << replaced("assistant", "system");
        QTest::newRow("too large a number") << replaced("0.5", "1.8e308");
        QTest::newRow("no updatedAt") << replaced(R"(,"updatedAt":0.5)", "");
        QTest::newRow("no title") << replaced(R"("title":"T",)", "");
        QTest::newRow("no messages") << replaced(R"("messages")", R"("message")");
        QTest::newRow("no role") << replaced(R"("role":"assistant",)", "");
        QTest::newRow("no text") << replaced(R"("text":"Hi",)", "");
        QTest::newRow("no date") << replaced(R"(,"date":1.25)", "");
        QTest::newRow("null for a required key") << replaced(R"("Hi")", "null");
        QTest::newRow("bad identifier") << replaced("AAAA", "AAA");
        QTest::newRow("date as text") << replaced("1.25", R"("1.25")");
        QTest::newRow("tokens with a fraction") << fileWith(messageWith(R"(,"inputTokens":1.5)"));
        QTest::newRow("tokens as text") << fileWith(messageWith(R"(,"outputTokens":"1")"));
        QTest::newRow("card without a summary")
            << fileWith(messageWith(R"(,"card":{"title":"A","keyPoints":[],"nextSteps":[]})"));
        QTest::newRow("card with a number")
            << fileWith(messageWith(R"(,"card":{"title":"A","summary":"B","keyPoints":[1],"nextSteps":[]})"));
        QTest::newRow("tool event without an id")
            << fileWith(messageWith(R"(,"toolEvents":[{"name":"a","status":"b"}])"));
        QTest::newRow("image name as a number") << fileWith(messageWith(R"(,"imageFilename":1)"));
    }

    void refusesTheWholeFileForOneFault()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!decodeConversations(bytes));
    }

    void readsAndWritesEmptyLists()
    {
        QCOMPARE(encodeConversations({}), "[]");
        const auto none = decodeConversations("[]");
        QVERIFY(none && none->empty());
    }
};

QTEST_APPLESS_MAIN(HistoryFileTest)
#include "tst_historyfile.moc"
