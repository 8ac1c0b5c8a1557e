// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/messagetext.h"
#include "ui/windowtest.h"

#include <QClipboard>
#include <QDesktopServices>

using namespace lumora;

/// Stands in for the browser.
class LinkCatcher : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void open(const QUrl &url) { opened << url; }

    QList<QUrl> opened;
};

class WindowMessagesTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void messageShowsItsParts_data()
    {
        QTest::addColumn<ChatMessage>("message");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("absent");

        const QString user = "You";
        const QString model = "Apple Foundation Model";
        const QString spinner = "Waiting for the reply";
        const QString points = "Key points";
        const QString steps = "Next steps";

        QTest::newRow("question") << userMessage("a **b**") << QStringList({user, "a b"})
                                  << QStringList({model, spinner, points});
        QTest::newRow("reply") << assistantMessage("a") << QStringList({model, "a"})
                               << QStringList({user, spinner, points, steps});

        ChatMessage card = assistantMessage({});
        card.card = AnswerCard{"T", "S *s*", {"<b>k</b>"}, {}};
        QTest::newRow("card") << card << QStringList({model, "T", "S *s*", points, "<b>k</b>"})
                              << QStringList({spinner, steps});

        ChatMessage called = assistantMessage("a");
        called.toolEvents = {{"1", "currentDate", "Complete"}, {"2", "other", "complete"}};
        called.inputTokens = 812;
        called.outputTokens = 95;
        QTest::newRow("tools and tokens")
            << called << QStringList({"currentDate · Complete", "other · complete", "812 input · 95 output tokens"})
            << QStringList({"Image unavailable"});

        ChatMessage pictured = userMessage("a");
        pictured.imageFilename = "missing.png";
        QTest::newRow("missing image") << pictured << QStringList({"Image unavailable"})
                                       << QStringList({"Attached image"});
        pictured.imageFilename = "there.png";
        QTest::newRow("image") << pictured << QStringList({"Attached image"}) << QStringList({"Image unavailable"});
    }

    void messageShowsItsParts()
    {
        QFETCH(ChatMessage, message);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, absent);
        QImage image(400, 200, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        QDir().mkpath(m_fixture->path("Images"));
        QVERIFY(image.save(m_fixture->path("Images/there.png")));
        start({conversation("Chat", 1, {message})});

        for (const QString &text : shown)
            QTRY_VERIFY2(m_driver->showsText(text), qPrintable(text));
        for (const QString &text : absent)
            QVERIFY2(!m_driver->showsText(text), qPrintable(text));
    }

    void errorBannerComesAndGoes()
    {
        m_fixture->model->enqueue(Script::failure("The **model** <b>stopped</b>."));
        start();
        say("Hello");
        QTRY_VERIFY(m_driver->shows(QAccessible::AlertMessage, "The **model** <b>stopped</b>."));

        say("Again");
        QVERIFY(!m_driver->shows(QAccessible::AlertMessage, "The **model** <b>stopped</b>."));
    }

    void firstDisplayShowsTheStart()
    {
        std::vector<ChatMessage> messages(30, userMessage("a\nb\nc"));
        start({conversation("Long", 1, messages)});

        QVERIFY(messageList()->property("atYBeginning").toBool());
        QVERIFY(!messageList()->property("atYEnd").toBool());
    }

    void anotherChatIsShownFromItsEnd()
    {
        const std::vector<ChatMessage> messages(30, userMessage("a\nb\nc"));
        std::vector<ChatMessage> others(40, userMessage("d\ne"));
        start({conversation("Long", 3, messages), conversation("Longer", 2, others), conversation("Empty", 1)});
        QQuickItem *list = messageList();

        m_store->selectConversation(m_store->conversations()[1].id);
        QTRY_VERIFY(list->property("atYEnd").toBool());
        QVERIFY(m_driver->showsText("d\ne"));
        m_store->selectConversation(m_store->conversations()[2].id);
        QVERIFY(!messageList());
        m_store->selectConversation(m_store->conversations()[0].id);
        QTRY_VERIFY(m_driver->showsText("a\nb\nc"));
        QVERIFY(list->property("atYBeginning").toBool()); // it has come anew, so that it is read from its start
    }

    void whatIsSelectedStaysWhileAReplyStreams_data()
    {
        QTest::addColumn<int>("row");

        QTest::newRow("in the reply itself") << 3;
        QTest::newRow("in a message that is scrolled away") << 0;
    }

    void whatIsSelectedStaysWhileAReplyStreams()
    {
        QFETCH(int, row);
        Script script = Script::text("Some **words").then(Script::hold());
        for (int i = 0; i < 40; ++i)
            script = script.then(Script::text("\n\nSome more words"));
        m_fixture->model->enqueue(script);
        start({conversation("Chat", 1, {userMessage("Some words"), assistantMessage("Others")})});
        say("Go on");
        QTRY_VERIFY(m_fixture->model->isHolding());

        const QPointer<QQuickItem> text = textOf(row);
        const QPoint words = text->mapToScene({60, text->height() / 2}).toPoint();
        QTest::mouseDClick(m_driver->window(), Qt::LeftButton, {}, words);
        QCOMPARE(text->property("selectedText").toString(), "words");
        m_fixture->model->release();
        QTRY_VERIFY(!m_store->isGenerating());

        QVERIFY(messageList()->property("contentY").toReal() > 500);
        QVERIFY(text);
        QCOMPARE(text->property("selectedText").toString(), "words");
        m_driver->press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), "words");
        m_store->newConversation();
        m_store->selectConversation(m_store->conversations()[1].id);
        QVERIFY(!text || text->property("selectedText").toString().isEmpty());
    }

    void aClickScrollsNothing()
    {
        start({conversation("Chat", 1, {userMessage("Hi"), userMessage(QString("a line\n\n").repeated(100))})});
        m_driver->press(Qt::Key_Tab, Qt::ShiftModifier); // so that the list is laid out
        QQuickItem *list = messageList();
        list->setProperty("contentY", 1500);
        QTRY_COMPARE(list->property("contentY").toReal(), 1500);
        const QQuickItem *text = textOf(1);
        QTest::mouseClick(m_driver->window(), Qt::LeftButton, {},
                          list->mapToScene({text->mapToItem(list, {20, 0}).x(), 100}).toPoint());
        QTest::qWait(300);
        QCOMPARE(list->property("contentY").toReal(), 1500);

        m_store->newConversation();
        QTRY_COMPARE(m_driver->focusName(), "Message");
    }

    void aLinkOpensOnAClick()
    {
        LinkCatcher catcher;
        for (const char *scheme : {"https", "javascript", "file"})
            QDesktopServices::setUrlHandler(scheme, &catcher, "open");
        start({conversation("Chat", 1,
                            {assistantMessage("[page](https://example.org/a)"),
                             assistantMessage("[code](javascript:alert(1)) [file](file:///etc/passwd)")})});

        for (int row = 0; row < 2; ++row) {
            const QQuickItem *text = textOf(row);
            for (const int x : {15, 50})
                QTest::mouseClick(m_driver->window(), Qt::LeftButton, {},
                                  text->mapToScene({qreal(x), text->height() / 2}).toPoint());
        }
        QCOMPARE(catcher.opened, QList<QUrl>({QUrl("https://example.org/a")}));
        for (const char *scheme : {"https", "javascript", "file"})
            QDesktopServices::unsetUrlHandler(scheme);
    }

    void followsTheEndWithoutAJump()
    {
        std::vector<ChatMessage> messages(30, userMessage("a\nb\nc"));
        QStringList pieces;
        for (int i = 0; i < 60; ++i)
            pieces << "some words and a **line** break\n\n- one\n\n";
        m_fixture->model->enqueue(Script::pieces(pieces));
        start({conversation("Long", 1, messages)});
        const QQuickItem *list = messageList();

        say("Go on");
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

private:
    /// The item that shows the text of a message.
    QQuickItem *textOf(int row) const
    {
        QQuickItem *message = nullptr;
        QMetaObject::invokeMethod(messageList(), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, message), Q_ARG(int, row));
        const auto *text = message ? message->findChild<MessageText *>() : nullptr;
        return text ? qobject_cast<QQuickItem *>(text->parent()) : nullptr;
    }
};

int main(int argc, char *argv[])
{
    return runWindowTest<WindowMessagesTest>(argc, argv);
}

#include "tst_windowmessages.moc"
