// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/storefixture.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSignalSpy>
#include <QTest>

using namespace lumora;

namespace {

/// The reply that the run fills, or filled.
const ChatMessage &reply(const ChatStore &store)
{
    return store.conversations().front().messages.back();
}

} // namespace

class GenerationRunTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void streamsAReply()
    {
        const StoreFixture fixture;
        fixture.model->enqueue(Script::pieces({"<start_of_turn>model\n", " Hello", ", **wor", "ld** "}));
        const auto store = fixture.start();
        ask(*store, "Hi");
        QVERIFY(store->isGenerating());
        QVERIFY(reply(*store).isEmptyReply());
        QCOMPARE(fixture.saved(), store->conversations());
        const TimePoint sent = store->conversations().front().updatedAt;

        QTRY_VERIFY(!store->isGenerating());
        QCOMPARE(reply(*store).text, "Hello, **world**");
        QCOMPARE(reply(*store).toolEvents, QList<ToolEvent>());
        QVERIFY(reply(*store).inputTokens > 0 && reply(*store).outputTokens > 0);
        QVERIFY(store->conversations().front().updatedAt > sent);
        QVERIFY(store->errorMessage().isNull());
        QCOMPARE(fixture.saved(), store->conversations());

        const ReplyRequest request = fixture.model->requests().front();
        QCOMPARE(request.prompt, (Prompt{"Latest user message:\nHi\n\nRespond to the latest user message.", {}}));
        QCOMPARE(request.options, GenerationOptions());
        QVERIFY(!request.schema);
        QCOMPARE(store->contextTokens(), fixture.model->countTokens(request.prompt.text));
    }

    void publishesEachSnapshotOnOneRow()
    {
        const StoreFixture fixture;
        fixture.model->enqueue(Script::words("one two three four"));
        const auto store = fixture.start();
        QSignalSpy changed(store.get(), &ChatStore::messageChanged);
        QStringList seen;
        connect(store.get(), &ChatStore::messageChanged, this, [&seen, &store] { seen.append(reply(*store).text); });
        ask(*store, "Hi");
        QTRY_VERIFY(!store->isGenerating());
        for (const QList<QVariant> &arguments : changed) {
            QCOMPARE(arguments[0].toUuid(), *store->selectedID());
            QCOMPARE(arguments[1].value<qsizetype>(), 1);
        }
        QVERIFY(seen.contains("one"));
        QCOMPARE(seen.back(), "one two three four");
    }

    void asksForAnAnswerCard()
    {
        const StoreFixture fixture;
        fixture.model->enqueue(Script::answer(R"({"title":"T","summary":"S","keyPoints":["a"],"nextSteps":[]})"));
        const auto store = fixture.start();
        store->setReplyStyle(ReplyStyle::structured);
        ask(*store, "Hi");
        const TimePoint sent = store->conversations().front().updatedAt;
        QTRY_VERIFY(!store->isGenerating());
        QCOMPARE(reply(*store).card, (AnswerCard{"T", "S", {"a"}, {}}));
        QCOMPARE(reply(*store).text, QString());
        QCOMPARE(reply(*store).toolEvents, QList<ToolEvent>());
        QVERIFY(reply(*store).outputTokens);
        QCOMPARE(store->conversations().front().updatedAt, sent);
        QCOMPARE(fixture.saved(), store->conversations());
        QVERIFY(fixture.model->requests().front().schema);
    }

    void fitsThePromptToTheContext_data()
    {
        QTest::addColumn<int>("contextSize");
        QTest::addColumn<int>("attempts");
        QTest::addColumn<int>("tokens");
        // One token a character: 58 characters of layout around the last 8000, 4500, … of the message.
        QTest::newRow("fits") << 20000 << 1 << 8058;
        QTest::newRow("exactly three quarters") << 10744 << 1 << 8058;
        QTest::newRow("one token too many") << 10743 << 2 << 4558;
        QTest::newRow("four halvings") << 2000 << 4 << 1183;
        QTest::newRow("sent although too long") << 100 << 6 << 339;
    }

    void fitsThePromptToTheContext()
    {
        QFETCH(int, contextSize);
        QFETCH(int, attempts);
        QFETCH(int, tokens);
        const StoreFixture fixture;
        fixture.model->setContextSize(contextSize);
        fixture.model->setTokenCounter([](const QString &text) { return text.size(); });
        const auto store = fixture.start();
        ask(*store, QString(9000, u'x'));
        QTRY_VERIFY(!store->isGenerating());
        QCOMPARE(fixture.model->countedTexts().size(), attempts);
        QCOMPARE(store->contextTokens(), tokens);
        QCOMPARE(fixture.model->requests().front().prompt.text, fixture.model->countedTexts().back());
    }

    void recordsToolCallsAsTheyHappen()
    {
        const StoreFixture fixture;
        const Script::ToolCall call{"currentDate", R"({"question":"When?"})"};
        fixture.model->enqueue(Script{{call, call, Script::Hold{}, Script::Text{"It is %output%"}}});
        const auto store = fixture.start();
        QList<QStringList> statuses;
        connect(store.get(), &ChatStore::messageChanged, this, [&statuses, &store] {
            QStringList now;
            for (const ToolEvent &event : reply(*store).toolEvents.value_or(QList<ToolEvent>()))
                now.append(event.status);
            if (statuses.isEmpty() || statuses.back() != now)
                statuses.append(now);
        });
        ask(*store, "What is today?");
        QTRY_VERIFY(fixture.model->isHolding());
        fixture.model->release();
        QTRY_VERIFY(!store->isGenerating());

        QVERIFY2(statuses.contains(QStringList{"Running"}), "a call must show while it runs");
        QCOMPARE(statuses.back(), (QStringList{"Complete", "Complete"}));
        const QList<ToolEvent> events = *reply(*store).toolEvents;
        QCOMPARE(events[0].name, "currentDate");
        QVERIFY(events[0].id != events[1].id);
        QVERIFY(reply(*store).text.startsWith("It is "));
        QVERIFY(reply(*store).text.contains(QString::number(QDate::currentDate().year())));
        QCOMPARE(fixture.saved(), store->conversations());
    }

    void reportsFailures_data()
    {
        QTest::addColumn<bool>("isStructured");
        QTest::addColumn<bool>("countFails");
        QTest::addColumn<Script>("script");
        QTest::addColumn<QString>("keptText");
        const QString removed;
        QTest::newRow("token count") << false << true << Script() << removed;
        QTest::newRow("before any text") << false << false << Script::failure("It broke.") << removed;
        QTest::newRow("after some text") << false << false
                                         << Script::text("Some text").then(Script::failure("It broke.")) << "Some text";
        QTest::newRow("structured") << true << false << Script::failure("It broke.") << removed;
    }

    void reportsFailures()
    {
        QFETCH(bool, isStructured);
        QFETCH(bool, countFails);
        QFETCH(Script, script);
        QFETCH(QString, keptText);
        const StoreFixture fixture;
        if (countFails)
            fixture.model->setTokenCountFailure("It broke.");
        else
            fixture.model->enqueue(script);
        const auto store = fixture.start();
        if (isStructured)
            store->setReplyStyle(ReplyStyle::structured);
        ask(*store, "Hi");
        QTRY_VERIFY(!store->isGenerating());
        QCOMPARE(store->errorMessage(), "It broke.");
        const auto &messages = store->conversations().front().messages;
        QCOMPARE(messages.size(), keptText.isEmpty() ? 1U : 2U);
        QCOMPARE(messages.front().text, "Hi");
        if (!keptText.isEmpty())
            QCOMPARE(messages.back().text, keptText);
        QVERIFY(!messages.back().inputTokens);
        QCOMPARE(store->contextTokens() == 0, countFails);
        QCOMPARE(fixture.saved(), store->conversations());

        fixture.model->setTokenCountFailure(std::nullopt);
        store->setReplyStyle(ReplyStyle::chat);
        ask(*store, "Again");
        QVERIFY(store->errorMessage().isNull());
        QTRY_VERIFY(!store->isGenerating());
        QCOMPARE(reply(*store).text, "Scripted reply.");
    }

    void stopsSilently_data()
    {
        QTest::addColumn<bool>("holdsCount");
        QTest::addColumn<bool>("isStructured");
        QTest::addColumn<Script>("script");
        QTest::addColumn<QString>("keptText");
        QTest::newRow("while counting") << true << false << Script() << QString();
        QTest::newRow("before any text") << false << false << Script::hold() << QString();
        QTest::newRow("after some text") << false << false << Script::text("Some text").then(Script::hold())
                                         << "Some text";
        QTest::newRow("before the answer") << false << true << Script::hold() << QString();
    }

    void stopsSilently()
    {
        QFETCH(bool, holdsCount);
        QFETCH(bool, isStructured);
        QFETCH(Script, script);
        QFETCH(QString, keptText);
        const StoreFixture fixture;
        fixture.model->enqueue(script);
        if (holdsCount)
            fixture.model->holdTokenCounts();
        const auto store = fixture.start();
        if (isStructured)
            store->setReplyStyle(ReplyStyle::structured);
        ask(*store, "Hi");
        QTRY_VERIFY(holdsCount ? !fixture.model->countedTexts().isEmpty() : fixture.model->isHolding());
        QTRY_COMPARE(reply(*store).text, keptText);

        store->stopGenerating();
        QVERIFY(!store->isGenerating());
        QVERIFY(store->errorMessage().isNull());
        const auto &messages = store->conversations().front().messages;
        QCOMPARE(messages.size(), keptText.isEmpty() ? 1U : 2U);
        QVERIFY(!messages.back().inputTokens);
        QCOMPARE(fixture.saved(), store->conversations());
        const auto stopped = store->conversations();
        fixture.model->releaseTokenCounts();
        settle();
        QCOMPARE(store->conversations(), stopped);
        QVERIFY(store->errorMessage().isNull());
        QCOMPARE(fixture.model->cancelledReplies(), holdsCount ? 0 : 1);
        QCOMPARE(store->contextTokens() == 0, holdsCount);
        QCOMPARE(fixture.model->requests().isEmpty(), holdsCount);
        QVERIFY(!fixture.model->isHolding());
    }

    void everyWayOutStopsTheReply_data()
    {
        QTest::addColumn<QString>("way");
        for (const char *way : {"new chat", "select", "delete"})
            QTest::newRow(way) << QString::fromLatin1(way);
    }

    void everyWayOutStopsTheReply()
    {
        QFETCH(QString, way);
        const StoreFixture fixture;
        fixture.write({conversation("a", 2, {userMessage("1")}), conversation("b", 1, {userMessage("2")})});
        fixture.model->enqueue(Script::hold());
        const auto store = fixture.start();
        const QUuid a = *store->selectedID();
        ask(*store, "Hi");
        QTRY_VERIFY(fixture.model->isHolding());
        if (way == "new chat")
            store->newConversation();
        else if (way == "select")
            store->selectConversation(store->conversations()[1].id);
        else
            store->deleteConversation(a);
        QVERIFY(!store->isGenerating());
        QVERIFY(store->selectedID() != a);
        QCOMPARE(store->contextTokens() == 0, way != "delete");
        for (const Conversation &chat : store->conversations()) {
            if (chat.id == a)
                QCOMPARE(chat.messages.back().text, "Hi");
        }
        settle();
        QCOMPARE(fixture.model->cancelledReplies(), 1);
        QCOMPARE(fixture.saved(), store->conversations());
    }

    void aStoppedRunNeverWritesAgain()
    {
        const StoreFixture fixture;
        fixture.model->enqueue(Script::text("First").then(Script::hold()));
        fixture.model->enqueue(Script::text("Second"));
        const auto store = fixture.start();
        ask(*store, "One");
        QTRY_COMPARE(reply(*store).text, "First");
        store->stopGenerating();
        ask(*store, "Two");
        fixture.model->release();
        QTRY_VERIFY(!store->isGenerating());
        QStringList texts;
        for (const ChatMessage &message : store->conversations().front().messages)
            texts.append(message.text);
        QCOMPARE(texts, (QStringList{"One", "First", "Two", "Second"}));
        QVERIFY(!store->conversations().front().messages[1].inputTokens);
    }

    void survivesTheEndOfStoreAndService_data()
    {
        QTest::addColumn<bool>("holdsCount");
        QTest::addColumn<bool>("hasStarted");
        QTest::addColumn<bool>("storeIsLastOwner"); // of the service, as in the program
        for (const bool storeIsLastOwner : {false, true}) {
            const char *owner = storeIsLastOwner ? ", the store its owner" : "";
            QTest::addRow("before it starts%s", owner) << false << false << storeIsLastOwner;
            QTest::addRow("while counting%s", owner) << true << true << storeIsLastOwner;
            QTest::addRow("while streaming%s", owner) << false << true << storeIsLastOwner;
        }
    }

    void survivesTheEndOfStoreAndService()
    {
        QFETCH(bool, holdsCount);
        QFETCH(bool, hasStarted);
        QFETCH(bool, storeIsLastOwner);
        StoreFixture fixture;
        fixture.model->enqueue(Script::text("Some text").then(Script::hold()));
        if (holdsCount)
            fixture.model->holdTokenCounts();
        auto store = fixture.start();
        ask(*store, "Hi");
        if (hasStarted)
            QTRY_VERIFY(holdsCount ? !fixture.model->countedTexts().isEmpty() : fixture.model->isHolding());
        const QByteArray saved = fixture.read("conversations.json");
        if (storeIsLastOwner)
            fixture.model.reset();
        store.reset();
        fixture.model.reset();
        settle();
        QCOMPARE(fixture.read("conversations.json"), saved);
        QCOMPARE(fixture.saved().front().messages.front().text, "Hi");
    }

    void keepsTheStyleAndTextOfItsStart()
    {
        const StoreFixture fixture;
        fixture.model->holdTokenCounts();
        const auto store = fixture.start();
        ask(*store, " What is today? ");
        store->setReplyStyle(ReplyStyle::structured);
        store->setDraft("Something else");
        QTRY_VERIFY(!fixture.model->countedTexts().isEmpty());
        fixture.model->releaseTokenCounts();
        QTRY_VERIFY(!store->isGenerating());
        const ReplyRequest &request = fixture.model->requests().front();
        QVERIFY(!request.schema);
        QCOMPARE(request.tools.size(), 1);
        QCOMPARE(request.tools.front().name, "currentDate");
        QCOMPARE(store->draft(), "Something else");
    }

    void canSendAgainFromTheSignalOfItsEnd()
    {
        const StoreFixture fixture;
        const auto store = fixture.start();
        int sent = 1;
        connect(store.get(), &ChatStore::isGeneratingChanged, this, [&] {
            if (!store->isGenerating() && sent < 3) {
                ++sent;
                ask(*store, "Again");
            }
        });
        ask(*store, "Hi");
        QTRY_COMPARE(store->conversations().front().messages.size(), 6U);
        QTRY_VERIFY(!store->isGenerating());
        QCOMPARE(reply(*store).text, "Scripted reply.");
        QCOMPARE(fixture.saved(), store->conversations());
    }

private:
    static void ask(ChatStore &store, const QString &text)
    {
        store.setDraft(text);
        store.send();
    }
    /// What a coroutine still has to do once its wait has ended.
    static void settle()
    {
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents();
    }
};

QTEST_GUILESS_MAIN(GenerationRunTest)
#include "tst_generationrun.moc"
