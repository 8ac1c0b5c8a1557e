// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The window without a mouse.

#include "ui/windowtest.h"

using namespace lumora;

class WindowKeyboardTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void tabReachesEveryControl();
    void arrowsWalkTheChats();
    void menuOfAChat_data();
    void menuOfAChat();
    void keysWalkTheMessages();
    void returnOpensTheLinksOfAMessage();
    void arrowsWalkTheDocuments();
    void arrowsMoveTheSidebarsEdge();
    void focusIsNeverLost_data();
    void focusIsNeverLost();
    void closes_data();
    void closes();

private:
    void startWithEverything();
    void focus(const QString &name) const;
    QString selectedTitle() const { return m_store->selectedConversation()->title; }
};

/// Three chats, two documents, a pending image and a model that is not there.
void WindowKeyboardTest::startWithEverything()
{
    m_fixture->model->setAvailability(Availability::unavailable(Availability::UnavailableReason::other));
    m_fixture->write("Documents/documents.json",
                     R"([{"id":"5C0B3F62-4B2D-4F4C-9A50-0C7BB0A3B1A1","name":"a.md","filename":"a.md","addedAt":1},)"
                     R"({"id":"5C0B3F62-4B2D-4F4C-9A50-0C7BB0A3B1A2","name":"b.md","filename":"b.md","addedAt":2}])");
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QVERIFY(image.save(m_fixture->data.filePath("a.png")));
    start({conversation("First", 3, std::vector<ChatMessage>(20, userMessage("a\nb\nc"))),
           conversation("Second", 2, {userMessage("b")}), conversation("Third", 1, {userMessage("c")})});
    m_store->attachImage(QUrl::fromLocalFile(m_fixture->data.filePath("a.png")));
}

void WindowKeyboardTest::focus(const QString &name) const
{
    for (int i = 0; i < 20 && m_driver->focusName() != name; ++i)
        m_driver->press(Qt::Key_Tab);
    QCOMPARE(m_driver->focusName(), name);
}

void WindowKeyboardTest::tabReachesEveryControl()
{
    startWithEverything();
    QCOMPARE(m_driver->focusName(), "Message");

    const QStringList order = {"Attach Image", "Sidebar width", "New chat",  "First",
                               "Add Document", "Remove a.md",   "Check Now", "Messages",
                               "Chat",         "Remove image",  "Message"};
    QStringList forwards;
    QStringList backwards;
    for (qsizetype i = 0; i < order.size(); ++i) {
        m_driver->press(Qt::Key_Tab);
        forwards.append(m_driver->focusName());
    }
    for (qsizetype i = 0; i < order.size(); ++i) {
        backwards.prepend(m_driver->focusName());
        m_driver->press(Qt::Key_Backtab, Qt::ShiftModifier);
    }
    QCOMPARE(forwards, order);
    QCOMPARE(backwards, order);
}

void WindowKeyboardTest::arrowsWalkTheChats()
{
    startWithEverything();
    focus("First");
    m_driver->press(Qt::Key_Down);
    QCOMPARE(m_driver->focusName(), "Second");
    m_driver->press(Qt::Key_End);
    QCOMPARE(m_driver->focusName(), "Third");
    m_driver->press(Qt::Key_Home);
    QCOMPARE(m_driver->focusName(), "First");
    m_driver->press(Qt::Key_PageDown);
    QCOMPARE(m_driver->focusName(), "Third");
    QCOMPARE(selectedTitle(), "First");

    m_driver->press(Qt::Key_Space);
    QCOMPARE(selectedTitle(), "Third");
    m_driver->press(Qt::Key_Up);
    m_driver->press(Qt::Key_Return);
    QCOMPARE(selectedTitle(), "Second");
    QCOMPARE(m_driver->focusName(), "Second");
}

void WindowKeyboardTest::menuOfAChat_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");

    QTest::newRow("menu key") << Qt::Key_Menu << Qt::KeyboardModifiers();
    QTest::newRow("Shift+F10") << Qt::Key_F10 << Qt::KeyboardModifiers(Qt::ShiftModifier);
    QTest::newRow("Delete") << Qt::Key_Delete << Qt::KeyboardModifiers();
}

void WindowKeyboardTest::menuOfAChat()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    startWithEverything();
    focus("First");
    m_driver->press(Qt::Key_Down);

    m_driver->press(key, modifiers);
    QTRY_COMPARE(m_driver->focusName(), "Delete Chat");
    m_driver->press(Qt::Key_Escape);
    QTRY_COMPARE(m_driver->focusName(), "Second");
    QCOMPARE(m_store->conversations().size(), size_t(3));

    m_driver->press(key, modifiers);
    QTRY_COMPARE(m_driver->focusName(), "Delete Chat");
    m_driver->press(Qt::Key_Return);
    QTRY_COMPARE(titles(m_store->conversations()), QStringList({"First", "Third"}));
    QTRY_COMPARE(m_driver->focusName(), "Third");
}

void WindowKeyboardTest::returnOpensTheLinksOfAMessage()
{
    m_fixture->model->enqueue({.steps = {Script::Text{"[a](https://a.example) and\n- [b](https://b.example)"}}});
    start({conversation("Links", 1, std::vector<ChatMessage>(20, userMessage("a\nb\nc")))});
    say("Go");
    QTRY_VERIFY(!m_store->isGenerating());
    focus("Messages");
    m_driver->press(Qt::Key_Up);
    QVERIFY2(m_driver->focusName().contains("a and"), qPrintable(m_driver->focusName()));
    m_driver->press(Qt::Key_Return);
    QTRY_COMPARE(m_driver->focusName(), "https://a.example");
    m_driver->press(Qt::Key_Down);
    QCOMPARE(m_driver->focusName(), "https://b.example");
    m_driver->press(Qt::Key_Escape);
    QTRY_VERIFY(m_driver->focusName().contains("a and"));
}

void WindowKeyboardTest::keysWalkTheMessages()
{
    startWithEverything();
    const QQuickItem *list = messageList();
    const auto position = [list] { return list->property("contentY").toReal(); };
    focus("Messages");

    m_driver->press(Qt::Key_Home);
    QVERIFY(list->property("atYBeginning").toBool());
    m_driver->press(Qt::Key_PageDown);
    const qreal onePage = position();
    QVERIFY(onePage > list->height() / 2);
    m_driver->press(Qt::Key_PageUp);
    QVERIFY(list->property("atYBeginning").toBool());

    m_driver->press(Qt::Key_Down);
    QCOMPARE(m_driver->focusName(), "You: a\nb\nc");
    QCOMPARE(list->property("currentIndex").toInt(), 0);
    for (int i = 0; i < 15 && list->property("currentIndex").toInt() < 10; ++i)
        m_driver->press(Qt::Key_Down);
    QCOMPARE(list->property("currentIndex").toInt(), 10);
    const QQuickItem *row = m_driver->window()->activeFocusItem();
    const auto isInView = [&] {
        return QRectF(0, 0, list->width(), list->height()).contains(row->mapRectToItem(list, row->boundingRect()));
    };
    QTRY_VERIFY(isInView());
    m_driver->press(Qt::Key_End);
    QVERIFY(list->property("atYEnd").toBool());
    QCOMPARE(list->property("currentIndex").toInt(), 19);

    m_driver->press(Qt::Key_Tab);
    QCOMPARE(m_driver->focusName(), "Chat");
    m_driver->press(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(m_driver->focusName(), "Messages");
}

void WindowKeyboardTest::arrowsWalkTheDocuments()
{
    startWithEverything();
    focus("Remove a.md");
    m_driver->press(Qt::Key_Down);
    QCOMPARE(m_driver->focusName(), "Remove b.md");
    m_driver->press(Qt::Key_Up);
    m_driver->press(Qt::Key_Space);
    QCOMPARE(m_store->library()->documents().size(), 1);
    QTRY_COMPARE(m_driver->focusName(), "Remove b.md");
    m_driver->press(Qt::Key_Delete);
    QVERIFY(m_store->library()->documents().isEmpty());
    QTRY_COMPARE(m_driver->focusName(), "Add Document");
}

void WindowKeyboardTest::arrowsMoveTheSidebarsEdge()
{
    start();
    const QQuickItem *newChat = button("New chat");
    const qreal width = newChat->width();
    focus("Sidebar width");
    m_driver->press(Qt::Key_Right);
    QTRY_COMPARE(newChat->width(), width + 10);
    for (int i = 0; i < 10; ++i)
        m_driver->press(Qt::Key_Left);
    QTRY_COMPARE(newChat->width(), width - 30); // as narrow as it may be
}

void WindowKeyboardTest::focusIsNeverLost_data()
{
    using Act = std::function<void(ChatStore *, ScriptedModelService *)>;
    QTest::addColumn<QString>("control");
    QTest::addColumn<Act>("act");

    QTest::newRow("the image is removed")
        << "Remove image" << Act([](ChatStore *store, auto *) { store->removePendingImage(); });
    QTest::newRow("the banner goes") << "Check Now" << Act([](auto *, ScriptedModelService *model) {
        model->setAvailability(Availability::available());
    });
    QTest::newRow("the chat is empty") << "Messages" << Act([](ChatStore *store, auto *) { store->newConversation(); });
    QTest::newRow("Send becomes Stop") << "Send" << Act([](ChatStore *store, auto *) { store->send(); });
    QTest::newRow("nothing to send") << "Send" << Act([](ChatStore *store, auto *) { store->setDraft({}); });
    QTest::newRow("Stop becomes Send") << "Stop" << Act([](ChatStore *store, auto *) { store->stopGenerating(); });
}

void WindowKeyboardTest::focusIsNeverLost()
{
    QFETCH(QString, control);
    using Act = std::function<void(ChatStore *, ScriptedModelService *)>;
    QFETCH(Act, act);
    startWithEverything();
    if (control == "Send" || control == "Stop") {
        m_fixture->model->enqueue(Script::hold());
        m_fixture->model->setAvailability(Availability::available());
        m_store->removePendingImage();
        m_store->setDraft("Hello");
        if (control == "Stop")
            m_store->send();
    }
    focus(control);
    act(m_store.get(), m_fixture->model.get());
    QTRY_COMPARE(m_driver->focusName(), "Message");
}

void WindowKeyboardTest::closes_data()
{
    QTest::addColumn<Qt::Key>("key");

    QTest::newRow("Ctrl+Q") << Qt::Key_Q;
    QTest::newRow("Ctrl+W") << Qt::Key_W;
}

void WindowKeyboardTest::closes()
{
    QFETCH(Qt::Key, key);
    start();
    m_driver->press(key, Qt::ControlModifier);
    QTRY_VERIFY(!m_driver->window()->isVisible());
}

int main(int argc, char *argv[])
{
    return runWindowTest<WindowKeyboardTest>(argc, argv);
}

#include "tst_windowkeyboard.moc"
