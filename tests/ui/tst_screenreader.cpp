// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What a screen reader finds in the window, and what it can do there, from outside of the process.

#include "ui/windowtest.h"

#include <QEventLoop>
#include <QProcess>
#include <QTimer>

using namespace lumora;

namespace {

using Reason = Availability::UnavailableReason;

const QStringList empty = {
    R"(frame "New Chat" (New Chat))",
    R"(  label "Lumora")",
    R"(  push button "New chat" focusable (Start a new chat (⌘N)))",
    R"(  heading "Chats")",
    R"(  list "Chats" focusable)",
    R"(    list item "New Chat" selected focusable)",
    R"(  heading "Documents")",
    R"(  push button "Add Document" focusable (Add a text, Markdown, or PDF document for local search))",
    R"(  label "Add a document to ask questions about it.")",
    R"(  status bar "On-device model ready")",
    R"(  heading "Explore Apple’s on-device model")",
    R"(  label "Ask a question, try Structured mode, add a document, or attach an image to read text and barcodes. )"
    R"(Your chats stay on this Mac.")",
    R"(  panel "Response mode")",
    R"(    radio button "Chat" checked focusable)",
    R"(    radio button "Structured" focusable)",
    R"(  label "Context 0 / 4096 tokens" (Tokens counted for the latest prompt. Image, instructions, tools, and output )"
    R"(also use context.))",
    R"(  text "Message" focused editable multi-line focusable: )",
    R"(  push button "Attach Image" focusable (Attach an image))",
    R"(  label "Private · On this Mac" (Private on this Mac. Shift+Return inserts a new line.))",
    R"(  label "Shift+Return for a new line")",
    R"(  push button "Send" disabled)",
    R"(  split pane "Sidebar width" focusable (The left and right arrow keys change it.))",
};

/// Its many questions are answered by the event loop of this process.
void awaitEnd(QProcess &reader)
{
    QEventLoop loop;
    QObject::connect(&reader, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(30000, &loop, &QEventLoop::quit);
    if (reader.state() != QProcess::NotRunning)
        loop.exec();
    if (reader.state() != QProcess::NotRunning)
        qFatal("The screen reader does not end.");
}

} // namespace

class ScreenReaderTest : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void findsAnEmptyChat();
    void findsADraft();
    void findsAReplyAsItComes();
    void findsTheMessages_data();
    void findsTheMessages();
    void findsAPendingImage();
    void findsDocuments();
    void findsAvailability_data();
    void findsAvailability();
    void presses();
    void hears();

private:
    static void ask(QProcess &reader, const QStringList &question);
    static QStringList list();
    static bool perform(const QString &action, const QString &role, const QString &name);
    static void expect(const QStringList &lines);
};

void ScreenReaderTest::ask(QProcess &reader, const QStringList &question)
{
    reader.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    reader.start(SCREEN_READER, QStringList(QString::number(QCoreApplication::applicationPid())) + question);
}

QStringList ScreenReaderTest::list()
{
    QProcess reader;
    ask(reader, {"list"});
    awaitEnd(reader);
    return QString::fromUtf8(reader.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

bool ScreenReaderTest::perform(const QString &action, const QString &role, const QString &name)
{
    QProcess reader;
    ask(reader, {"do", action, role, name});
    awaitEnd(reader);
    return reader.exitCode() == 0;
}

/// Waits until these lines are found one after another.
void ScreenReaderTest::expect(const QStringList &lines)
{
    const QString wanted = u'\n' + lines.join(u'\n') + u'\n';
    QString found;
    const bool isFound = QTest::qWaitFor([&] {
        found = u'\n' + list().join(u'\n') + u'\n';
        return found.contains(wanted);
    });
    if (!isFound)
        qInfo().noquote() << "Found:" << found;
    QVERIFY2(isFound, qPrintable("Not found:" + wanted));
}

void ScreenReaderTest::findsAnEmptyChat()
{
    start();
    expect(empty);
    QCOMPARE(list(), empty);
}

void ScreenReaderTest::findsADraft()
{
    start();
    m_driver->type("Hello");
    expect({R"(  text "Message" focused editable multi-line focusable: Hello)"});
    expect({R"(  push button "Send" focusable)"});
}

void ScreenReaderTest::findsAReplyAsItComes()
{
    Script script = Script::hold().then(Script::text("A half")).then(Script::hold());
    script.usage = Usage{{812}, {95}};
    m_fixture->model->enqueue(script);
    start();
    say("Hello");
    expect({R"(    list item "You: Hello" focusable)", R"(      label "You")", R"(      label "Hello")",
            R"(    list item "Apple Foundation Model" focusable)", R"(      label "Apple Foundation Model")",
            R"(      animation "Waiting for the reply")"});
    expect({R"(  push button "Stop" focusable)"});

    QTRY_VERIFY(m_fixture->model->isHolding());
    m_fixture->model->release();
    expect({R"(    list item "Apple Foundation Model: A half" focusable)", R"(      label "Apple Foundation Model")",
            R"(      label "A half")"});

    QTRY_VERIFY(m_fixture->model->isHolding());
    m_fixture->model->release();
    expect({R"(      label "A half")", R"(      label "812 input · 95 output tokens")"});
    expect({R"(  push button "Send" disabled)"});
}

void ScreenReaderTest::findsTheMessages_data()
{
    QTest::addColumn<ChatMessage>("message");
    QTest::addColumn<QStringList>("lines");

    ChatMessage card = assistantMessage({});
    card.card = AnswerCard{"Title", "Summary", {"Point"}, {"Step"}};
    QTest::newRow("card") << card
                          << QStringList(
                                 {R"(    list item "Apple Foundation Model: Title\nSummary\nPoint\nStep" focusable)",
                                  R"(      label "Apple Foundation Model")", R"(      heading "Title")",
                                  R"(      label "Summary")", R"(      heading "Key points")", R"(      label "Point")",
                                  R"(      heading "Next steps")", R"(      label "Step")"});

    ChatMessage called = assistantMessage("It is Monday.");
    called.toolEvents = {{"1", "currentDate", "Complete"}, {"2", "searchDocuments", "Running"}};
    called.inputTokens = 812;
    called.outputTokens = 95;
    QTest::newRow("tool calls") << called
                                << QStringList({R"(      label "It is Monday.")",
                                                R"(      label "currentDate · Complete")",
                                                R"(      label "searchDocuments · Running")",
                                                R"(      label "812 input · 95 output tokens")"});

    ChatMessage pictured = userMessage("Look");
    pictured.imageFilename = "missing.png";
    QTest::newRow("missing image") << pictured
                                   << QStringList({R"(      label "Look")", R"(      label "Image unavailable")"});
}

void ScreenReaderTest::findsTheMessages()
{
    QFETCH(ChatMessage, message);
    QFETCH(QStringList, lines);
    start({conversation("Chat", 1, {message})});
    expect(lines);
}

void ScreenReaderTest::findsAPendingImage()
{
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QVERIFY(image.save(m_fixture->data.filePath("a.png")));
    start();
    m_store->attachImage(QUrl::fromLocalFile(m_fixture->data.filePath("a.png")));
    const QString copy = QFileInfo(m_store->pendingImageURL().value()).fileName();
    expect({R"(  image "Attached image")", QStringLiteral(R"(  label "%1")").arg(copy),
            R"(  push button "Remove image" focusable)"});
}

void ScreenReaderTest::findsDocuments()
{
    m_fixture->write("Documents/documents.json", R"([{"id":"5C0B3F62-4B2D-4F4C-9A50-0C7BB0A3B1A1","name":"notes.md",
        "filename":"5C0B3F62-4B2D-4F4C-9A50-0C7BB0A3B1A2.md","addedAt":1}])");
    start();
    expect({R"(  list "Documents" focusable)", R"(    list item "notes.md")",
            R"(      push button "Remove notes.md" focusable)"});
}

void ScreenReaderTest::findsAvailability_data()
{
    QTest::addColumn<Reason>("reason");
    QTest::addColumn<QString>("sign");

    QTest::newRow("not ready") << Reason::modelNotReady << R"(  animation "Checking model readiness")";
    QTest::newRow("unavailable") << Reason::other << QString();
}

void ScreenReaderTest::findsAvailability()
{
    QFETCH(Reason, reason);
    QFETCH(QString, sign);
    m_fixture->model->setAvailability(Availability::unavailable(reason));
    start();
    QStringList lines = {QStringLiteral(R"(  alert "%1")").arg(m_store->availabilityMessage())};
    if (!sign.isEmpty())
        lines.prepend(sign);
    expect(lines);
    expect({R"(  status bar "Model unavailable")"});
    expect({R"(  push button "Check Now" focusable)"});
}

void ScreenReaderTest::presses()
{
    start({conversation("First", 2, {userMessage("a")}), conversation("Second", 1, {userMessage("b")})});

    QVERIFY(perform("Press", "list item", "Second"));
    QCOMPARE(m_store->selectedConversation()->title, "Second");
    expect({R"(    list item "First" focusable)", R"(    list item "Second" selected focusable)"});

    QVERIFY(perform("Press", "radio button", "Structured"));
    QCOMPARE(m_store->replyStyle(), ReplyStyle::structured);
    expect({R"(    radio button "Chat" focusable)", R"(    radio button "Structured" checked focusable)"});

    QVERIFY(perform("Press", "push button", "New chat"));
    QVERIFY(m_store->selectedConversation()->messages.empty());
}

void ScreenReaderTest::hears()
{
    m_fixture->model->enqueue(Script::text("Good **morning**."));
    m_fixture->model->enqueue(Script::failure("The model stopped."));
    start();
    QProcess reader;
    ask(reader, {"hear"});
    QString heard;
    const auto hears = [&](const QString &line) {
        return QTest::qWaitFor([&] {
            heard += QString::fromUtf8(reader.readAllStandardOutput());
            return heard.endsWith(line + u'\n');
        });
    };
    QVERIFY(hears("ready"));

    say("Hello");
    QVERIFY2(hears("Reply: Good morning."), qPrintable(heard));
    say("And now?");
    QVERIFY2(hears("The model stopped."), qPrintable(heard));
    m_fixture->model->setAvailability(Availability::unavailable(Reason::other));
    QVERIFY2(hears(m_store->availabilityMessage()), qPrintable(heard));
    m_fixture->model->setAvailability(Availability::available());
    QVERIFY2(hears("On-device model ready"), qPrintable(heard));
    reader.kill();
    reader.waitForFinished();
}

int main(int argc, char *argv[])
{
    return runWindowTest<ScreenReaderTest>(argc, argv);
}

#include "tst_screenreader.moc"
