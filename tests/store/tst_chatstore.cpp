// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "storefixture.h"

#include <QSignalSpy>
#include <QTest>

using namespace lumora;

class ChatStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithOneSavedChat()
    {
        const StoreFixture fixture;
        const auto store = fixture.start();
        QCOMPARE(store->conversations().size(), 1U);
        QCOMPARE(store->selectedID(), store->conversations().front().id);
        QCOMPARE(store->windowTitle(), "New Chat");
        QVERIFY(store->errorMessage().isNull());
        QCOMPARE(fixture.saved(), store->conversations());
    }

    void loadsNewestFirstWithoutWriting()
    {
        const StoreFixture fixture;
        fixture.write(
            {conversation("old", 1), conversation("new", 3), conversation("also new", 3), conversation("middle", 2)});
        const QByteArray before = fixture.read("conversations.json");
        const auto store = fixture.start();
        QCOMPARE(titles(store->conversations()), (QStringList{"new", "also new", "middle", "old"}));
        QCOMPARE(store->windowTitle(), "new");
        QCOMPARE(fixture.read("conversations.json"), before);
        store->save();
        QCOMPARE(titles(fixture.saved()), titles(store->conversations()));
    }

    void cleansRepliesAtLoad()
    {
        ChatMessage cardOnly = assistantMessage({});
        cardOnly.card = AnswerCard{"T", "S", {}, {}};
        const StoreFixture fixture;
        fixture.write({conversation(
            "c", 1,
            {userMessage(" <start_of_turn>model hi "), assistantMessage("<start_of_turn>model\n Hello "), cardOnly,
             assistantMessage("<start_of_turn>model"), assistantMessage("a<start_of_turn>modelb <Start_of_turn>model"),
             userMessage({}), assistantMessage({})})});
        QStringList texts;
        const auto store = fixture.start();
        for (const ChatMessage &message : store->conversations().front().messages)
            texts.append(message.text);
        QCOMPARE(texts, (QStringList{" <start_of_turn>model hi ", "Hello", "", "", "ab <Start_of_turn>model", ""}));
    }

    void savesWhatNobodyHasLookedAt()
    {
        ChatMessage reply = assistantMessage(QString::fromUtf8("\uFEFFTea 🍵 a\0b \"c\"", 19));
        reply.card = AnswerCard{"T", "S", {}, {"step"}};
        reply.toolEvents = QList<ToolEvent>();
        reply.date = {0.1};
        const std::vector<Conversation> kept{conversation("a", 2, {userMessage("Hi"), reply}),
                                             conversation("b", 1, {userMessage("Ho")})};
        const StoreFixture fixture;
        std::vector<Conversation> all = kept;
        all.push_back(conversation("c", 0, {userMessage("old")}));
        fixture.write(all);
        const auto store = fixture.start();
        store->deleteConversation(all.back().id);
        QCOMPARE(fixture.read("conversations.json"), encodeConversations(kept));
        QCOMPARE(store->conversations(), kept);
        QCOMPARE(fixture.read("conversations.json"), encodeConversations(store->conversations()));
    }

    void keepsWhatItCannotRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("not JSON") << QByteArray("[{\"id\":");
        QTest::newRow("one bad role")
            << encodeConversations({conversation("a", 1, {userMessage("hi")})}).replace("user", "system");
        QTest::newRow("empty file") << QByteArray();
    }

    void keepsWhatItCannotRead()
    {
        QFETCH(QByteArray, bytes);
        const StoreFixture fixture;
        fixture.write("conversations.unreadable-1.json", "set aside earlier");
        fixture.write("conversations.json", bytes);
        const auto store = fixture.start();
        QCOMPARE(titles(store->conversations()), QStringList{"New Chat"});
        QVERIFY(store->errorMessage().isNull());
        QCOMPARE(fixture.saved(), store->conversations());
        QCOMPARE(fixture.read("conversations.unreadable-1.json"), "set aside earlier");
        QCOMPARE(fixture.read("conversations.unreadable-2.json"), bytes);
    }

    void keepsAHistoryThatComesIntoReach()
    {
        // The folder is a link to a place that is there only later, such as a disk that is mounted after the start.
        const StoreFixture fixture;
        QVERIFY(QFile::link(fixture.data.filePath("disk"), fixture.data.filePath("Lumora")));
        const auto store = fixture.start();
        QVERIFY(store->errorMessage().startsWith("Could not save chats: "));
        QVERIFY(QDir(fixture.data.path()).mkdir("disk"));
        fixture.write({conversation("from before", 1, {userMessage("hi")})});
        const QByteArray before = fixture.read("conversations.json");
        store->save();
        QCOMPARE(titles(fixture.saved()), QStringList{"New Chat"});
        QCOMPARE(fixture.read("conversations.unreadable-1.json"), before);
        store->save();
        QCOMPARE(QDir(fixture.path("")).entryList(QDir::Files).size(), 2);
    }

    void runsWithoutADataDirectory()
    {
        ChatStore store(SystemLanguageModel(std::make_shared<ScriptedModelService>()), std::nullopt);
        QVERIFY(!store.conversationsFileURL());
        QVERIFY(!store.imageURL("a.png"));
        store.newConversation();
        QVERIFY(store.errorMessage().isNull());
        store.attachImage(QUrl::fromLocalFile("/nowhere/a.png"));
        QCOMPARE(store.errorMessage(), "Could not find local image storage.");
    }

    void reportsFailedSavesAndTriesAgain()
    {
        const StoreFixture fixture;
        const auto store = fixture.start();
        fixture.blockHistory();
        store->setDraft("kept");
        store->stopGenerating();
        QVERIFY2(store->errorMessage().startsWith("Could not save chats: The file cannot be written: "),
                 qPrintable(store->errorMessage()));
        QCOMPARE(store->conversations().size(), 1U);
        const QString reported = store->errorMessage();
        fixture.unblockHistory();
        store->save();
        QCOMPARE(fixture.saved(), store->conversations());
        QCOMPARE(store->errorMessage(), reported);
    }

    void reusesAnEmptyChat()
    {
        const StoreFixture fixture;
        fixture.write({conversation("talk", 3, {userMessage("hi")}), conversation("New Chat", 2),
                       conversation("old", 1, {userMessage("a")})});
        const auto store = fixture.start();
        store->setDraft("draft");
        QSignalSpy inserted(store.get(), &ChatStore::conversationInserted);

        store->newConversation();
        QCOMPARE(titles(store->conversations()), (QStringList{"talk", "New Chat", "old"}));
        QCOMPARE(store->selectedID(), store->conversations()[1].id);
        QCOMPARE(store->conversations()[1].updatedAt, TimePoint{2});
        QCOMPARE(store->draft(), QString());
        QCOMPARE(inserted.count(), 0);

        store->deleteConversation(store->conversations()[1].id);
        store->newConversation();
        QCOMPARE(titles(store->conversations()), (QStringList{"New Chat", "talk", "old"}));
        QCOMPARE(store->selectedID(), store->conversations().front().id);
        store->newConversation();
        QCOMPARE(store->conversations().size(), 3U);
        QCOMPARE(fixture.saved(), store->conversations());
    }

    void selectingClearsTheComposer()
    {
        const StoreFixture fixture;
        fixture.write({conversation("a", 2, {userMessage("hi")}), conversation("b", 1, {userMessage("ho")})});
        const auto store = fixture.start();
        const QUuid a = store->conversations()[0].id;
        const QUuid b = store->conversations()[1].id;
        store->attachImage(QUrl::fromLocalFile("/nowhere"));
        QVERIFY(!store->errorMessage().isNull());
        store->setDraft("draft");

        store->selectConversation(a);
        QCOMPARE(store->draft(), "draft");
        QVERIFY(!store->errorMessage().isNull());
        store->selectConversation(b);
        QCOMPARE(store->selectedID(), b);
        QCOMPARE(store->draft(), QString());
        QVERIFY(store->errorMessage().isNull());

        const QUuid unknown = QUuid::createUuid();
        store->selectConversation(unknown);
        QCOMPARE(store->selectedID(), unknown);
        QVERIFY(!store->selectedConversation());
        QCOMPARE(store->windowTitle(), "Lumora");
    }

    void deletesChats()
    {
        const StoreFixture fixture;
        fixture.write({conversation("a", 3, {userMessage("1")}), conversation("b", 2, {userMessage("2")}),
                       conversation("c", 1, {userMessage("3")})});
        const auto store = fixture.start();
        store->setDraft("draft");
        store->deleteConversation(store->conversations()[1].id);
        QCOMPARE(store->windowTitle(), "a");
        store->deleteConversation(store->conversations()[0].id);
        QCOMPARE(store->windowTitle(), "c");
        QCOMPARE(store->draft(), "draft");
        QCOMPARE(titles(fixture.saved()), QStringList{"c"});
        store->deleteConversation(QUuid::createUuid());
        QCOMPARE(store->conversations().size(), 1U);

        const QUuid last = store->conversations()[0].id;
        store->deleteConversation(last);
        QCOMPARE(titles(store->conversations()), QStringList{"New Chat"});
        QVERIFY(store->conversations()[0].id != last);
        QCOMPARE(store->selectedID(), store->conversations()[0].id);
        QCOMPARE(fixture.saved(), store->conversations());
    }

    void titlesAChatOnce_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("title");
        const QString family = "👨‍👩‍👧‍👦";
        QTest::newRow("short") << "Ten chars!"
                               << "Ten chars!";
        QTest::newRow("cut, the blank stays") << QString(47, u'x') + " tail of the message" << QString(47, u'x') + ' ';
        QTest::newRow("one character of many code points") << family.repeated(50) << family.repeated(48);
    }

    void titlesAChatOnce()
    {
        QFETCH(QString, text);
        QFETCH(QString, title);
        const StoreFixture fixture;
        const auto store = fixture.start();
        for (const QString &draft : {text, QStringLiteral("and more")}) {
            store->setDraft(draft);
            store->send();
            QTRY_VERIFY(!store->isGenerating());
            QCOMPARE(store->windowTitle(), title);
        }
        QCOMPARE(titles(fixture.saved()), QStringList{title});
    }

    void explainsUnavailability_data()
    {
        using Reason = Availability::UnavailableReason;
        QTest::addColumn<Availability>("availability");
        QTest::addColumn<QString>("message");
        QTest::newRow("available") << Availability::available() << QString();
        QTest::newRow("not eligible")
            << Availability::unavailable(Reason::deviceNotEligible)
            << "This Mac does not support Apple Intelligence. The on-device model needs a compatible "
               "Apple silicon Mac.";
        QTest::newRow("not enabled") << Availability::unavailable(Reason::appleIntelligenceNotEnabled)
                                     << "Turn on Apple Intelligence in System Settings to use the on-device model.";
        QTest::newRow("not ready")
            << Availability::unavailable(Reason::modelNotReady)
            << "Apple reports that the on-device model is not ready. It may be downloading or waiting for "
               "system conditions.";
        QTest::newRow("other") << Availability::unavailable(Reason::other)
                               << "The on-device model is unavailable right now.";
    }

    void explainsUnavailability()
    {
        QFETCH(Availability, availability);
        QFETCH(QString, message);
        const StoreFixture fixture;
        fixture.model->setAvailability(availability);
        const auto store = fixture.start();
        store->setDraft("Hello");
        QCOMPARE(store->availabilityMessage(), message);
        QCOMPARE(store->canSend(), message.isNull());
    }

    void looksAtAvailabilityAnew()
    {
        const StoreFixture fixture;
        const auto store = fixture.start();
        QSignalSpy checked(store.get(), &ChatStore::modelAvailabilityChanged);
        for (int i = 0; i < 2; ++i) {
            const TimePoint before = store->lastAvailabilityCheck();
            store->refreshAvailability();
            QVERIFY(store->lastAvailabilityCheck() > before);
        }
        QCOMPARE(checked.count(), 2);

        store->setDraft("Hello");
        fixture.model->setAvailability(Availability::unavailable(Availability::UnavailableReason::modelNotReady));
        QTRY_VERIFY(!store->canSend());
        fixture.model->setAvailability(Availability::available());
        QTRY_VERIFY(store->canSend());
    }

    void sendsOnlyWhatCanBeSent()
    {
        const StoreFixture fixture;
        const auto store = fixture.start();
        QSignalSpy changed(store.get(), &ChatStore::canSendChanged);
        for (const char *draft : {"", " \n\t\u3000"}) {
            store->setDraft(draft);
            store->send();
            QVERIFY(!store->canSend());
            QVERIFY(store->conversations().front().messages.empty());
            QCOMPARE(store->draft(), QString::fromUtf8(draft));
        }
        store->setDraft(" Hello ");
        QVERIFY(store->canSend());
        QCOMPARE(changed.count(), 1);
        store->send();
        QVERIFY(!store->canSend());
        QCOMPARE(store->draft(), QString());
        QCOMPARE(store->conversations().front().messages.front().text, "Hello");
        QCOMPARE(fixture.saved(), store->conversations());
    }
};

QTEST_GUILESS_MAIN(ChatStoreTest)
#include "tst_chatstore.moc"
