// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/windowtest.h"

using namespace lumora;

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

        QTest::newRow("question") << userMessage("a **b**") << QStringList({user, "a **b**"})
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
            QVERIFY2(m_driver->showsText(text), qPrintable(text));
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
};

int main(int argc, char *argv[])
{
    return runWindowTest<WindowMessagesTest>(argc, argv);
}

#include "tst_windowmessages.moc"
