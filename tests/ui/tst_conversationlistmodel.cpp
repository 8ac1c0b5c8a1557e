// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/storefixture.h"
#include "ui/conversationlistmodel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace lumora;

namespace {

QStringList shownTitles(const ConversationListModel &model)
{
    QStringList titles;
    for (int row = 0; row < model.rowCount(); ++row)
        titles << model.data(model.index(row), ConversationListModel::titleRole).toString();
    return titles;
}

} // namespace

class ConversationListModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_tester.reset();
        m_model.reset();
        m_fixture.write({conversation("Old", 1, {userMessage("a")}), conversation("New", 3, {userMessage("b")}),
                         conversation("Middle", 2, {userMessage("c")})});
        m_store = m_fixture.start();
        m_model = std::make_unique<ConversationListModel>();
        m_tester = std::make_unique<QAbstractItemModelTester>(m_model.get());
        m_model->setStore(m_store.get());
    }

    void insertsAndSelectsANewChat()
    {
        QSignalSpy inserted(m_model.get(), &QAbstractItemModel::rowsInserted);
        QSignalSpy reset(m_model.get(), &QAbstractItemModel::modelReset);

        m_store->newConversation();

        QCOMPARE(shownTitles(*m_model).first(), "New Chat");
        QCOMPARE(m_model->rowCount(), 4);
        QCOMPARE(m_model->selectedRow(), 0);
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(reset.count(), 0);
    }

    void removesOneRow()
    {
        QSignalSpy removed(m_model.get(), &QAbstractItemModel::rowsRemoved);

        m_store->deleteConversation(m_store->conversations()[1].id);

        QCOMPARE(shownTitles(*m_model), QStringList({"New", "Old"}));
        QCOMPARE(removed.count(), 1);
        QCOMPARE(removed.first().at(1).toInt(), 1);
        QCOMPARE(m_model->selectedRow(), 0);
    }

    void replacesTheLastChat()
    {
        while (m_store->conversations().size() > 1)
            m_store->deleteConversation(m_store->conversations().front().id);
        m_store->deleteConversation(m_store->conversations().front().id);

        QCOMPARE(shownTitles(*m_model), QStringList({"New Chat"}));
        QCOMPARE(m_model->selectedRow(), 0);
    }

    void retitlesOneRow()
    {
        m_store->newConversation();
        QSignalSpy changed(m_model.get(), &QAbstractItemModel::dataChanged);

        m_store->setDraft("What is this?");
        m_store->send();

        QCOMPARE(shownTitles(*m_model).first(), "What is this?");
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 0);
        m_store->stopGenerating();
    }

    void followsTheSelection()
    {
        QSignalSpy selected(m_model.get(), &ConversationListModel::selectedRowChanged);

        m_store->selectConversation(m_store->conversations()[2].id);
        QCOMPARE(m_model->selectedRow(), 2);
        m_store->selectConversation(QUuid::createUuid());
        QCOMPARE(m_model->selectedRow(), -1);
        QCOMPARE(selected.count(), 2);
    }

    void isEmptyWithoutAStore()
    {
        m_store.reset();
        m_model->setStore(nullptr);

        QCOMPARE(m_model->rowCount(), 0);
        QCOMPARE(m_model->selectedRow(), -1);
    }

private:
    StoreFixture m_fixture;
    std::unique_ptr<ChatStore> m_store;
    std::unique_ptr<ConversationListModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

QTEST_GUILESS_MAIN(ConversationListModelTest)
#include "tst_conversationlistmodel.moc"
