// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/storefixture.h"
#include "ui/messagelistmodel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace lumora;

class MessageListModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_tester.reset();
        m_model.reset();
        m_store.reset();
        m_fixture = std::make_unique<StoreFixture>();
    }

    void tokenLineNeedsBothCounts_data()
    {
        QTest::addColumn<std::optional<qint64>>("input");
        QTest::addColumn<std::optional<qint64>>("output");
        QTest::addColumn<QString>("line");

        using Count = std::optional<qint64>;
        QTest::newRow("both") << Count(812) << Count(95) << QStringLiteral("812 input · 95 output tokens");
        QTest::newRow("no grouping") << Count(1234567) << Count(0) << QStringLiteral("1234567 input · 0 output tokens");
        QTest::newRow("beyond a double") << Count(9007199254740993) << Count(-1)
                                         << QStringLiteral("9007199254740993 input · -1 output tokens");
        QTest::newRow("input only") << Count(812) << Count() << QString();
        QTest::newRow("output only") << Count() << Count(95) << QString();
    }

    void tokenLineNeedsBothCounts()
    {
        QFETCH(std::optional<qint64>, input);
        QFETCH(std::optional<qint64>, output);
        ChatMessage reply = assistantMessage("a");
        reply.inputTokens = input;
        reply.outputTokens = output;
        start({conversation("A", 1, {reply})});

        QTEST(shown(0, MessageListModel::tokenLineRole).toString(), "line");
    }

    void aSnapshotChangesOneRowAndOnlyItsText()
    {
        start({conversation("A", 1, {userMessage("a"), assistantMessage("b")})});
        m_fixture->model->enqueue(
            Script::text("One").then(Script::hold()).then(Script::text(" two")).then(Script::hold()));
        send("c");
        QTRY_COMPARE(shown(3, MessageListModel::textRole).toString(), "One");

        QSignalSpy changed(m_model.get(), &QAbstractItemModel::dataChanged);
        m_fixture->model->release();
        QTRY_COMPARE(shown(3, MessageListModel::textRole).toString(), "One two");

        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 3);
        QCOMPARE(changed.first().at(1).toModelIndex().row(), 3);
        QCOMPARE(changed.first().at(2).value<QList<int>>(), QList<int>({MessageListModel::textRole, Qt::DisplayRole}));
    }

    void toolCallsAndTokensChangeTheirRolesOnly()
    {
        start({});
        m_fixture->model->enqueue(
            Script{.steps = {Script::Text{"One"}, Script::Hold{},
                             Script::ToolCall{"currentDate", R"({"question":"today"})"}, Script::Hold{}}});
        send("What day is it today?");
        QTRY_VERIFY(m_fixture->model->isHolding());
        QSignalSpy changed(m_model.get(), &QAbstractItemModel::dataChanged);

        m_fixture->model->release();
        QTRY_COMPARE(shown(1, MessageListModel::toolEventsRole).value<QList<ToolEvent>>().value(0).status, "Complete");
        QTRY_VERIFY(m_fixture->model->isHolding());
        for (const QList<QVariant> &signal : changed)
            QCOMPARE(signal.at(2).value<QList<int>>(), QList<int>({MessageListModel::toolEventsRole}));

        changed.clear();
        m_fixture->model->release();
        QTRY_VERIFY(!m_store->isGenerating());
        QVERIFY(!shown(1, MessageListModel::tokenLineRole).toString().isEmpty());
        const QList<int> growing{MessageListModel::isGrowingRole};
        QCOMPARE(changed.takeLast().at(2).value<QList<int>>(), growing);
        QCOMPARE(changed.last().at(2).value<QList<int>>(), QList<int>({MessageListModel::tokenLineRole}));
    }

    void aStopRemovesTheEmptyReply()
    {
        start({});
        m_fixture->model->enqueue(Script::hold());
        send("a");
        QCOMPARE(m_model->count(), 2);
        QSignalSpy removed(m_model.get(), &QAbstractItemModel::rowsRemoved);

        m_store->stopGenerating();

        QCOMPARE(m_model->count(), 1);
        QCOMPARE(removed.count(), 1);
    }

    void tellsWhenTheEndMoves()
    {
        start({conversation("A", 2, {userMessage("same")}), conversation("B", 1, {userMessage("same")})});
        m_fixture->model->enqueue(Script::text("One").then(Script::hold()));
        QSignalSpy moved(m_model.get(), &MessageListModel::endChanged);

        m_store->selectConversation(m_store->conversations()[1].id);
        QCOMPARE(moved.count(), 0);
        send("c");
        QCOMPARE(moved.count(), 2);
        QTRY_COMPARE(shown(2, MessageListModel::textRole).toString(), "One");
        QCOMPARE(moved.count(), 3);
        m_store->selectConversation(m_store->conversations()[0].id);
        QCOMPARE(moved.count(), 4);
    }

private:
    void start(const std::vector<Conversation> &conversations)
    {
        m_fixture->write(conversations);
        m_store = m_fixture->start();
        m_model = std::make_unique<MessageListModel>();
        m_tester = std::make_unique<QAbstractItemModelTester>(m_model.get());
        m_model->setStore(m_store.get());
    }

    void send(const QString &text)
    {
        m_store->setDraft(text);
        m_store->send();
    }

    QVariant shown(int row, MessageListModel::Role role) const { return m_model->data(m_model->index(row), role); }

    std::unique_ptr<StoreFixture> m_fixture;
    std::unique_ptr<ChatStore> m_store;
    std::unique_ptr<MessageListModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

QTEST_GUILESS_MAIN(MessageListModelTest)
#include "tst_messagelistmodel.moc"
