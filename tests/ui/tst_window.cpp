// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/storefixture.h"
#include "ui/windowdriver.h"

#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QTest>

using namespace lumora;

class WindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void returnSends_data();
    void returnSends();
    void shiftReturnBreaksTheLine();
    void returnWithoutAnythingToSendDoesNothing_data();
    void returnWithoutAnythingToSendDoesNothing();
    void returnThatEndsACompositionDoesNotSend();
    void sendAndStopSwap();
    void sendIsDisabledWhileThereIsNothingToSend();

    void newChatByShortcutAndButton();
    void selectsAChat_data();
    void selectsAChat();
    void deletesAChatThroughItsMenu_data();
    void deletesAChatThroughItsMenu();

    void bannerTellsTheAvailability_data();
    void bannerTellsTheAvailability();
    void checksTheAvailabilityByItselfAndOnRequest();
    void errorBannerComesAndGoes();
    void titleNamesTheChat();
    void emptyStateGivesWayToTheList();
    void messageShowsItsParts_data();
    void messageShowsItsParts();

    void modeControlSetsTheStyle();
    void meterCountsTheContext();
    void narrowComposerShortensItsTexts();
    void tabReachesEveryControl();
    void firstDisplayShowsTheStart();
    void followsTheEndWithoutAJump();

private:
    void start(const std::vector<Conversation> &conversations = {});
    QQuickItem *messageList() const { return m_driver->find(QAccessible::List, QStringLiteral("Messages")); }
    QQuickItem *chatRow(const QString &title) const { return m_driver->find(QAccessible::ListItem, title); }

    std::unique_ptr<StoreFixture> m_fixture;
    std::unique_ptr<ChatStore> m_store;
    std::unique_ptr<WindowDriver> m_driver;
};

void WindowTest::init()
{
    m_fixture = std::make_unique<StoreFixture>();
}

void WindowTest::cleanup()
{
    m_driver.reset();
    m_store.reset();
    m_fixture.reset();
}

void WindowTest::start(const std::vector<Conversation> &conversations)
{
    if (!conversations.empty())
        m_fixture->write(conversations);
    m_store = m_fixture->start();
    m_driver = std::make_unique<WindowDriver>(m_store.get());
}

void WindowTest::returnSends_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");

    QTest::newRow("Return") << Qt::Key_Return << Qt::KeyboardModifiers();
    QTest::newRow("Enter") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Control") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("Alt") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::AltModifier);
}

void WindowTest::returnSends()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    start();

    m_driver->type(QStringLiteral("Hello there"));
    QCOMPARE(m_store->draft(), QStringLiteral("Hello there"));
    m_driver->press(key, modifiers);

    QCOMPARE(m_store->draft(), QString());
    QTRY_VERIFY(m_driver->showsText(QStringLiteral("Scripted reply.")));
    QVERIFY(m_driver->showsText(QStringLiteral("Hello there")));
    QTRY_COMPARE(m_fixture->model->requests().size(), 1);
    QCOMPARE(m_store->selectedConversation()->messages.size(), size_t(2));
}

void WindowTest::shiftReturnBreaksTheLine()
{
    start();

    m_driver->type(QStringLiteral("a"));
    m_driver->press(Qt::Key_Return, Qt::ShiftModifier);
    m_driver->type(QStringLiteral("b"));
    m_driver->press(Qt::Key_Enter, Qt::ShiftModifier | Qt::KeypadModifier);

    QCOMPARE(m_store->draft(), QStringLiteral("a\nb\n"));
    QVERIFY(!m_store->isGenerating());
}

void WindowTest::returnWithoutAnythingToSendDoesNothing_data()
{
    QTest::addColumn<QString>("draft");
    QTest::addColumn<bool>("isAvailable");

    QTest::newRow("nothing") << QString() << true;
    QTest::newRow("blanks") << QStringLiteral("  ") << true;
    QTest::newRow("no model") << QStringLiteral("Hello") << false;
}

void WindowTest::returnWithoutAnythingToSendDoesNothing()
{
    QFETCH(QString, draft);
    QFETCH(bool, isAvailable);
    if (!isAvailable)
        m_fixture->model->setAvailability(Availability::unavailable(Availability::UnavailableReason::other));
    start();

    m_driver->type(draft);
    m_driver->press(Qt::Key_Return);

    QCOMPARE(m_store->draft(), draft);
    QVERIFY(m_store->selectedConversation()->messages.empty());
}

void WindowTest::returnThatEndsACompositionDoesNotSend()
{
    start();
    m_driver->type(QStringLiteral("a"));
    QInputMethodEvent composing(QStringLiteral("ni"), {});
    QCoreApplication::sendEvent(m_driver->window()->activeFocusItem(), &composing);

    m_driver->press(Qt::Key_Return);
    QVERIFY(m_store->selectedConversation()->messages.empty());
    QVERIFY(!m_store->draft().contains(u'\n'));

    QInputMethodEvent committed;
    committed.setCommitString(QStringLiteral("\u4f60"));
    QCoreApplication::sendEvent(m_driver->window()->activeFocusItem(), &committed);
    QVERIFY(m_store->draft().endsWith(u'\u4f60'));
    m_driver->press(Qt::Key_Return);
    QCOMPARE(m_store->selectedConversation()->messages.size(), size_t(2));
}

void WindowTest::sendAndStopSwap()
{
    m_fixture->model->enqueue(Script::text(QStringLiteral("Half a")).then(Script::hold()));
    start();
    QVERIFY(!m_driver->shows(QAccessible::Button, QStringLiteral("Stop")));

    m_driver->type(QStringLiteral("Hello"));
    m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("Send")));
    QVERIFY(!m_driver->shows(QAccessible::Button, QStringLiteral("Send")));
    QTRY_VERIFY(m_driver->showsText(QStringLiteral("Half a")));
    m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("Stop")));

    QVERIFY(!m_store->isGenerating());
    QVERIFY(m_driver->shows(QAccessible::Button, QStringLiteral("Send")));
    QVERIFY(m_driver->showsText(QStringLiteral("Half a")));
    QCOMPARE(m_driver->focusName(), QStringLiteral("Message"));
}

void WindowTest::sendIsDisabledWhileThereIsNothingToSend()
{
    start();
    QQuickItem *send = m_driver->find(QAccessible::Button, QStringLiteral("Send"));
    QVERIFY(!send->isEnabled());
    m_driver->click(send);
    QVERIFY(m_store->selectedConversation()->messages.empty());

    m_driver->type(QStringLiteral("a"));
    QVERIFY(send->isEnabled());
}

void WindowTest::newChatByShortcutAndButton()
{
    start({conversation(QStringLiteral("Old"), 1, {userMessage(QStringLiteral("a"))})});

    m_driver->press(Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(m_store->conversations().size(), size_t(2));
    QVERIFY(m_store->selectedConversation()->messages.empty());
    m_driver->type(QStringLiteral("typed at once"));
    QCOMPARE(m_store->draft(), QStringLiteral("typed at once"));

    m_driver->click(chatRow(QStringLiteral("Old")));
    m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("New chat")));
    QCOMPARE(m_store->conversations().size(), size_t(2));
    QVERIFY(m_store->selectedConversation()->messages.empty());
}

void WindowTest::selectsAChat_data()
{
    QTest::addColumn<bool>("byKeyboard");

    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void WindowTest::selectsAChat()
{
    QFETCH(bool, byKeyboard);
    start({conversation(QStringLiteral("First"), 3, {userMessage(QStringLiteral("a"))}),
           conversation(QStringLiteral("Second"), 2, {userMessage(QStringLiteral("b"))}),
           conversation(QStringLiteral("Third"), 1, {userMessage(QStringLiteral("c"))})});

    if (byKeyboard) {
        m_driver->find(QAccessible::List, QStringLiteral("Chats"))->forceActiveFocus(Qt::TabFocusReason);
        m_driver->press(Qt::Key_Down);
        m_driver->press(Qt::Key_Down);
        QCOMPARE(m_store->selectedConversation()->title, QStringLiteral("First"));
        m_driver->press(Qt::Key_Return);
    } else {
        m_driver->click(chatRow(QStringLiteral("Third")));
    }

    QCOMPARE(m_store->selectedConversation()->title, QStringLiteral("Third"));
    QVERIFY(m_driver->showsText(QStringLiteral("c")));
    QVERIFY(!m_driver->showsText(QStringLiteral("a")));
}

void WindowTest::deletesAChatThroughItsMenu_data()
{
    selectsAChat_data();
}

void WindowTest::deletesAChatThroughItsMenu()
{
    QFETCH(bool, byKeyboard);
    start({conversation(QStringLiteral("First"), 3, {userMessage(QStringLiteral("a"))}),
           conversation(QStringLiteral("Second"), 2, {userMessage(QStringLiteral("b"))})});

    if (byKeyboard) {
        m_driver->find(QAccessible::List, QStringLiteral("Chats"))->forceActiveFocus(Qt::TabFocusReason);
        m_driver->press(Qt::Key_Down);
        m_driver->press(Qt::Key_F10, Qt::ShiftModifier);
        QTRY_VERIFY(m_driver->shows(QAccessible::MenuItem, QStringLiteral("Delete Chat")));
        m_driver->press(Qt::Key_Down);
        m_driver->press(Qt::Key_Return);
    } else {
        m_driver->click(chatRow(QStringLiteral("Second")), Qt::RightButton);
        QTRY_VERIFY(m_driver->shows(QAccessible::MenuItem, QStringLiteral("Delete Chat")));
        m_driver->click(m_driver->find(QAccessible::MenuItem, QStringLiteral("Delete Chat")));
    }

    QTRY_COMPARE(titles(m_store->conversations()), QStringList({QStringLiteral("First")}));
    QTRY_VERIFY(!chatRow(QStringLiteral("Second")));
    QVERIFY(chatRow(QStringLiteral("First")));
}

void WindowTest::bannerTellsTheAvailability_data()
{
    using Reason = Availability::UnavailableReason;
    QTest::addColumn<std::optional<Reason>>("reason");
    QTest::addColumn<QString>("footer");

    const QString unavailable = QStringLiteral("Model unavailable");
    QTest::newRow("available") << std::optional<Reason>() << QStringLiteral("On-device model ready");
    QTest::newRow("not ready") << std::optional(Reason::modelNotReady) << unavailable;
    QTest::newRow("turned off") << std::optional(Reason::appleIntelligenceNotEnabled) << unavailable;
    QTest::newRow("another reason") << std::optional(Reason::other) << unavailable;
}

void WindowTest::bannerTellsTheAvailability()
{
    QFETCH(std::optional<Availability::UnavailableReason>, reason);
    QFETCH(QString, footer);
    if (reason)
        m_fixture->model->setAvailability(Availability::unavailable(*reason));
    start();

    const bool isNotReady = reason == Availability::UnavailableReason::modelNotReady;
    QVERIFY(m_driver->showsText(footer));
    QCOMPARE(m_driver->shows(QAccessible::Button, QStringLiteral("Check Now")), reason.has_value());
    QCOMPARE(m_driver->shows(QAccessible::AlertMessage, m_store->availabilityMessage()), reason.has_value());
    QCOMPARE(m_driver->shows(QAccessible::Animation, QStringLiteral("Checking model readiness")), isNotReady);
    QCOMPARE(m_driver->showsText(
                 QStringLiteral("macOS does not provide this app with a download percentage or transfer status.")),
             isNotReady);
}

void WindowTest::checksTheAvailabilityByItselfAndOnRequest()
{
    m_fixture->model->setAvailability(Availability::unavailable(Availability::UnavailableReason::other));
    start();
    QObject *timer = nullptr;
    for (QObject *child : m_driver->window()->findChildren<QObject *>()) {
        if (child->property("interval").toInt() == 10000)
            timer = child;
    }
    QVERIFY(timer && timer->property("repeat").toBool() && timer->property("running").toBool());
    const int checks = m_fixture->model->availabilityChecks();

    QVERIFY(QMetaObject::invokeMethod(timer, "triggered"));
    QCOMPARE(m_fixture->model->availabilityChecks(), checks + 1);
    m_driver->click(m_driver->find(QAccessible::Button, QStringLiteral("Check Now")));
    QCOMPARE(m_fixture->model->availabilityChecks(), checks + 2);
}

void WindowTest::errorBannerComesAndGoes()
{
    m_fixture->model->enqueue(Script::failure(QStringLiteral("The **model** <b>stopped</b>.")));
    start();
    m_driver->type(QStringLiteral("Hello"));
    m_driver->press(Qt::Key_Return);
    QTRY_VERIFY(m_driver->shows(QAccessible::AlertMessage, QStringLiteral("The **model** <b>stopped</b>.")));

    m_driver->type(QStringLiteral("Again"));
    m_driver->press(Qt::Key_Return);
    QVERIFY(!m_driver->shows(QAccessible::AlertMessage, QStringLiteral("The **model** <b>stopped</b>.")));
}

void WindowTest::titleNamesTheChat()
{
    start();
    QCOMPARE(m_driver->window()->title(), QStringLiteral("New Chat"));
    m_driver->type(QStringLiteral("What is this?"));
    m_driver->press(Qt::Key_Return);
    QCOMPARE(m_driver->window()->title(), QStringLiteral("What is this?"));

    m_store->selectConversation(QUuid::createUuid());
    QCOMPARE(m_driver->window()->title(), QStringLiteral("Lumora"));
}

void WindowTest::emptyStateGivesWayToTheList()
{
    const QString title = QStringLiteral("Explore Apple\u2019s on-device model");
    start();
    QVERIFY(m_driver->showsText(title));
    QVERIFY(!messageList());

    m_driver->type(QStringLiteral("Hello"));
    m_driver->press(Qt::Key_Return);
    QVERIFY(!m_driver->showsText(title));
    QVERIFY(messageList());

    m_store->selectConversation(QUuid::createUuid());
    QVERIFY(m_driver->showsText(title));
}

void WindowTest::messageShowsItsParts_data()
{
    QTest::addColumn<ChatMessage>("message");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QStringList>("absent");

    const QString user = QStringLiteral("You");
    const QString model = QStringLiteral("Apple Foundation Model");
    const QString spinner = QStringLiteral("Waiting for the reply");
    const QString points = QStringLiteral("Key points");
    const QString steps = QStringLiteral("Next steps");

    QTest::newRow("question") << userMessage(QStringLiteral("a **b**"))
                              << QStringList({user, QStringLiteral("a **b**")})
                              << QStringList({model, spinner, points});
    QTest::newRow("reply") << assistantMessage(QStringLiteral("a")) << QStringList({model, QStringLiteral("a")})
                           << QStringList({user, spinner, points, steps});

    ChatMessage card = assistantMessage({});
    card.card = AnswerCard{QStringLiteral("T"), QStringLiteral("S *s*"), {QStringLiteral("<b>k</b>")}, {}};
    QTest::newRow("card") << card
                          << QStringList({model, QStringLiteral("T"), QStringLiteral("S *s*"), points,
                                          QStringLiteral("<b>k</b>")})
                          << QStringList({spinner, steps});

    ChatMessage called = assistantMessage(QStringLiteral("a"));
    called.toolEvents = {{QStringLiteral("1"), QStringLiteral("currentDate"), QStringLiteral("Complete")},
                         {QStringLiteral("2"), QStringLiteral("other"), QStringLiteral("complete")}};
    called.inputTokens = 812;
    called.outputTokens = 95;
    QTest::newRow("tools and tokens") << called
                                      << QStringList({QStringLiteral("currentDate · Complete"),
                                                      QStringLiteral("other · complete"),
                                                      QStringLiteral("812 input · 95 output tokens")})
                                      << QStringList({QStringLiteral("Image unavailable")});

    ChatMessage pictured = userMessage(QStringLiteral("a"));
    pictured.imageFilename = QStringLiteral("missing.png");
    QTest::newRow("missing image") << pictured << QStringList({QStringLiteral("Image unavailable")})
                                   << QStringList({QStringLiteral("Attached image")});
    pictured.imageFilename = QStringLiteral("there.png");
    QTest::newRow("image") << pictured << QStringList({QStringLiteral("Attached image")})
                           << QStringList({QStringLiteral("Image unavailable")});
}

void WindowTest::messageShowsItsParts()
{
    QFETCH(ChatMessage, message);
    QFETCH(QStringList, shown);
    QFETCH(QStringList, absent);
    QImage image(400, 200, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QDir().mkpath(m_fixture->path(QStringLiteral("Images")));
    QVERIFY(image.save(m_fixture->path(QStringLiteral("Images/there.png"))));
    start({conversation(QStringLiteral("Chat"), 1, {message})});

    for (const QString &text : shown)
        QVERIFY2(m_driver->showsText(text), qPrintable(text));
    for (const QString &text : absent)
        QVERIFY2(!m_driver->showsText(text), qPrintable(text));
}

void WindowTest::modeControlSetsTheStyle()
{
    start();
    QQuickItem *structured = m_driver->find(QAccessible::RadioButton, QStringLiteral("Structured"));
    m_driver->click(structured);
    QCOMPARE(m_store->replyStyle(), ReplyStyle::structured);
    QCOMPARE(m_driver->focusName(), QStringLiteral("Message"));

    structured->forceActiveFocus(Qt::TabFocusReason);
    m_driver->press(Qt::Key_Left);
    QCOMPARE(m_store->replyStyle(), ReplyStyle::chat);
    QCOMPARE(m_driver->focusName(), QStringLiteral("Chat"));
    m_driver->press(Qt::Key_Left);
    QCOMPARE(m_store->replyStyle(), ReplyStyle::chat);
}

void WindowTest::meterCountsTheContext()
{
    m_fixture->model->setTokenCounter([](const QString &) { return 1234; });
    start();
    QVERIFY(m_driver->showsText(QStringLiteral("Context 0 / 4096 tokens")));
    m_driver->type(QStringLiteral("Hello"));
    m_driver->press(Qt::Key_Return);
    QTRY_VERIFY(m_driver->showsText(QStringLiteral("Context 1234 / 4096 tokens")));
}

void WindowTest::narrowComposerShortensItsTexts()
{
    start();
    QVERIFY(m_driver->showsText(QStringLiteral("Private · On this Mac")));
    QVERIFY(!m_driver->showsText(QStringLiteral("On-device")));
    const QQuickItem *meter = m_driver->find(QAccessible::StaticText, QStringLiteral("Context 0 / 4096 tokens"));
    const QQuickItem *mode = m_driver->find(QAccessible::RadioButton, QStringLiteral("Chat"));
    QVERIFY(meter->mapToScene({}).x() > mode->mapToScene({}).x() + 240);

    m_driver->window()->resize(620, 520);
    QTRY_VERIFY(m_driver->showsText(QStringLiteral("On-device")));
    QVERIFY(!m_driver->showsText(QStringLiteral("Private · On this Mac")));
    QTRY_VERIFY(meter->mapToScene({}).y() > mode->mapToScene({0, mode->height()}).y());
}

void WindowTest::tabReachesEveryControl()
{
    m_fixture->model->setAvailability(Availability::unavailable(Availability::UnavailableReason::other));
    start();
    QCOMPARE(m_driver->focusName(), QStringLiteral("Message"));

    QStringList names;
    do {
        m_driver->press(Qt::Key_Tab);
        names << m_driver->focusName();
    } while (names.last() != QStringLiteral("Message") && names.size() < 20);

    QCOMPARE(names, QStringList({QStringLiteral("Attach Image"), QStringLiteral("New chat"), QStringLiteral("New Chat"),
                                 QStringLiteral("Add Document"), QStringLiteral("Check Now"), QStringLiteral("Chat"),
                                 QStringLiteral("Message")}));
    m_driver->press(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(m_driver->focusName(), QStringLiteral("Chat"));
}

void WindowTest::firstDisplayShowsTheStart()
{
    std::vector<ChatMessage> messages(30, userMessage(QStringLiteral("a\nb\nc")));
    start({conversation(QStringLiteral("Long"), 1, messages)});

    QVERIFY(messageList()->property("atYBeginning").toBool());
    QVERIFY(!messageList()->property("atYEnd").toBool());
}

void WindowTest::followsTheEndWithoutAJump()
{
    std::vector<ChatMessage> messages(30, userMessage(QStringLiteral("a\nb\nc")));
    QStringList pieces;
    for (int i = 0; i < 60; ++i)
        pieces << QStringLiteral("some words and a **line** break\n\n- one\n\n");
    m_fixture->model->enqueue(Script::pieces(pieces));
    start({conversation(QStringLiteral("Long"), 1, messages)});
    const QQuickItem *list = messageList();

    m_driver->type(QStringLiteral("Go on"));
    m_driver->press(Qt::Key_Return);
    int frames = 0;
    int framesAway = 0;
    connect(m_driver->window(), &QQuickWindow::frameSwapped, this, [&] {
        ++frames;
        framesAway += list->property("atYEnd").toBool() ? 0 : 1;
    });
    QTRY_VERIFY(!m_store->isGenerating());
    QTRY_VERIFY(list->property("atYEnd").toBool());

    QVERIFY(frames > 5);
    QCOMPARE(framesAway, 0);
}

int main(int argc, char *argv[])
{
    // No graphics card is asked for, so that what is tested is the same everywhere.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(argc, argv);
    QAccessible::setActive(true);
    WindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_window.moc"
