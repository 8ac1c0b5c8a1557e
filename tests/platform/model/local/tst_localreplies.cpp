// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/localservicetest.h"

#include <QFile>
#include <QImage>
#include <QSignalSpy>

using namespace lumora;
using namespace std::chrono_literals;

class LocalRepliesTest : public LocalServiceTest
{
    Q_OBJECT

private Q_SLOTS:
    void answersCountsAndReplies()
    {
        writeModel("GGUF fine 1234");
        createService();
        QCOMPARE(m_service->contextSize(), 0);
        const auto count = outcomeOf(m_service->tokenCount("four"));
        const auto failed = outcomeOf(m_service->tokenCount("fail"));
        const TestReply reply(*m_service, "structured");
        QTRY_VERIFY(reply.hasEnded());
        QTRY_COMPARE(count->value, 4);
        QTRY_COMPARE(failed->failure, "Cannot count.");
        QCOMPARE(reply.text, "So far ");
        QCOMPARE(reply.usage, (Usage{{1}, {2}}));
        QCOMPARE(reply.json, QByteArray(R"({"title":"A"})"));
        QCOMPARE(m_service->contextSize(), 1234);

        const TestReply failing(*m_service, "fail");
        QTRY_VERIFY(failing.hasEnded());
        QCOMPARE(failing.failure, "Too much.");
    }

    void requestReachesTheService()
    {
        becomeAvailable();
        const GenerationSchema schema{"Card", {{"title", "A title", GenerationSchema::Type::text}}};
        ReplyRequest request;
        request.instructions = "Be brief.";
        request.tools = {{"ask", "Asks.", schema}};
        request.prompt.attachments = {Attachment("/tmp/secret.png").label("attached image")};
        request.schema = schema;
        request.options = {GenerationOptions::SamplingMode::greedy, 0.5, 100};
        const TestReply reply(*m_service, "echo “ü”", request);
        QTRY_VERIFY(reply.hasEnded());

        const auto message = wire::decodeRequest(reply.text.toStdString());
        QVERIFY(message);
        const auto sent = std::get<wire::Respond>(*message);
        QCOMPARE(sent.instructions, "Be brief.");
        QCOMPARE(sent.prompt, "echo “ü”\n\n[attached image]");
        QVERIFY(sent.tools == (std::vector<wire::Tool>{{"ask", "Asks.", schema.toJson().toStdString()}}));
        QVERIFY(sent.schema == schema.toJson().toStdString());
        QVERIFY(sent.options == (wire::Options{wire::Sampling::greedy, 0.5, 100}));
    }

    void imagesReachAModelThatReadsThem_data()
    {
        QTest::addColumn<QByteArray>("projector"); // empty: none
        QTest::addColumn<QByteArray>("loads");
        QTest::addColumn<QByteArray>("prompt");
        const QByteArray label = "\n\n[attached image]";
        const auto row = [](const char *name, const QByteArray &projector, const QByteArray &loads,
                            const QByteArray &prompt) { QTest::newRow(name) << projector << loads << prompt; };
        row("no projector", {}, ".", "echo" + label + label);
        row("good", "GGUF good", "p", "echo" + label);
        row("does not load", "GGUF bad", "p", "echo" + label + label);
        row("crashes", "GGUF crash", "p.", "echo" + label + label);
        row("takes too much memory", "GGUF kill", "p.", "echo" + label + label);
    }

    void imagesReachAModelThatReadsThem()
    {
        QFETCH(QByteArray, projector);
        QFETCH(QByteArray, loads);
        QFETCH(QByteArray, prompt);
        if (!projector.isEmpty())
            write("mmproj-any.gguf", projector);
        becomeAvailable();
        QCOMPARE(this->loads(), loads);
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(QColor(1, 2, 3));
        image.setPixelColor(2, 1, QColor(250, 251, 252));
        const wire::Respond sent = echo({writeImage("a.png", image), write("b.png", "not an image")});
        QCOMPARE(QByteArray::fromStdString(sent.prompt), prompt);
        if (projector.endsWith("good")) {
            const QByteArray pixels = QByteArray("\1\2\3").repeated(5) + "\xFA\xFB\xFC";
            QVERIFY(sent.images == (std::vector<wire::Image>{{3, 2, pixels.toStdString()}}));
        } else {
            QVERIFY(sent.images.empty());
        }
    }

    void imagesAreMadeFit()
    {
        write("mmproj-any.gguf", "GGUF good");
        becomeAvailable();
        QImage large(2688, 96, QImage::Format_RGB32);
        large.fill(Qt::red);
        QImage clear(10, 10, QImage::Format_ARGB32);
        clear.fill(Qt::transparent);
        QImage line(500, 2, QImage::Format_RGB32);
        line.fill(Qt::black);
        const wire::Respond sent =
            echo({writeImage("large.png", large), writeImage("clear.png", clear), writeImage("line.png", line)});
        QCOMPARE(sent.images.size(), 3);
        QVERIFY(sent.images[0].width == 1344 && sent.images[0].height == 84);
        QVERIFY(sent.images[1].pixels == std::string(300, '\xFF'));
        QVERIFY(sent.images[2].width == 500 && sent.images[2].height > 20);
    }

    void requestsWaitForImagesBeforeThem()
    {
        write("mmproj-any.gguf", "GGUF good");
        becomeAvailable();
        ReplyRequest request;
        request.prompt.attachments.append(Attachment(writeImage("a.png", QImage(300, 300, QImage::Format_RGB32))));
        const TestReply cancelled(*m_service, "abort", request);
        const TestReply first(*m_service, "structured", request);
        const auto count = outcomeOf(m_service->tokenCount("four"));
        bool wasCountedBefore = false;
        connect(first.reply.get(), &ModelReply::finished, this, [&] { wasCountedBefore = count->isDone(); });
        cancelled->cancel();
        QTRY_VERIFY(first.hasEnded());
        QTRY_COMPARE(count->value, 4);
        QVERIFY(first.usage && !wasCountedBefore && !cancelled.hasEnded());
    }

    void toolCallGoesThereAndBack()
    {
        becomeAvailable();
        const TestReply reply(*m_service, "tool", requestWithTool());
        QTRY_COMPARE(reply.calls, QList<QStringList>({{"call 1", "ask", R"({"question":"why"})"}}));
        QCOMPARE(reply.text, "So far Asking");
        // A look does not disturb it.
        QCOMPARE(m_service->availability(), Availability::available());
        reply->answerToolCall("call 1", "that");
        QTRY_VERIFY(reply.hasEnded());
        QCOMPARE(reply.text, "So far Asking: call 1 gave that");
        QCOMPARE(reply.usage, (Usage{{7}, {3}}));
    }

    void longToolOutputIsCutBetweenCharacters()
    {
        becomeAvailable();
        const TestReply reply(*m_service, "tool", requestWithTool());
        QTRY_COMPARE(reply.calls.size(), 1);
        // A mebibyte ends inside a character.
        reply->answerToolCall("call 1", QString("€").repeated(qsizetype{1024} * 1024));
        QTRY_VERIFY(reply.hasEnded());
        QCOMPARE(reply.text, "So far Asking: call 1 gave " + QString("€").repeated(qsizetype{1024} * 1024 / 3));
    }

    void serviceGetsHarmlessSurroundings()
    {
        qputenv("HOME", "/somewhere");
        qputenv("DISPLAY", ":99");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        qputenv("LANG", "C.UTF-8");
        becomeAvailable();
        const TestReply reply(*m_service, "environment");
        QTRY_VERIFY(reply.hasEnded());
        QVERIFY(reply.text.contains("PATH="));
        QVERIFY(reply.text.contains("LANG=C.UTF-8\n"));
        for (const char *word : {"HOME", "DISPLAY", "DBUS"})
            QVERIFY2(!reply.text.contains(word), qPrintable(reply.text));
        QVERIFY(reply.text.endsWith("\nin /"));
    }

    void errorOutputDoesNotHoldUpTheService()
    {
        becomeAvailable();
        const TestReply reply(*m_service, "noise");
        QTRY_VERIFY(reply.usage);
    }

    void countKeepsTheModelForTheReply()
    {
        m_settings.patience.untilNextLook = 1s;
        becomeAvailable();
        const auto count = outcomeOf(m_service->tokenCount("four"));
        writeModel("GGUF other 99");
        QCOMPARE(m_service->availability(), Availability::available());
        QTRY_COMPARE(count->value, 4);
        QCOMPARE(m_service->contextSize(), 1000);
        QTRY_COMPARE(m_service->contextSize(), 99);
    }

    void changedFileWaitsForTheReply_data()
    {
        QTest::addColumn<bool>("isRemoved");
        QTest::newRow("another file") << false;
        QTest::newRow("removed") << true;
    }

    void changedFileWaitsForTheReply()
    {
        QFETCH(bool, isRemoved);
        becomeAvailable();
        const TestReply reply(*m_service, "tool", requestWithTool());
        QTRY_COMPARE(reply.calls.size(), 1);

        QVERIFY(QFile::remove(path("model.gguf")));
        if (!isRemoved)
            writeModel("GGUF other 99");
        for (int check = 0; check < 3; ++check) {
            QCOMPARE(m_service->availability(), Availability::available());
            QTest::qWait(20);
        }
        QCOMPARE(m_service->contextSize(), 1000);

        QSignalSpy changes(m_service.get(), &ModelService::availabilityChanged);
        reply->answerToolCall("call 1", "that");
        QTRY_VERIFY(reply.usage);
        QTRY_VERIFY(!changes.isEmpty());
        if (isRemoved) {
            QCOMPARE(m_service->availability(), Availability::unavailable(Reason::appleIntelligenceNotEnabled));
        } else {
            QTRY_COMPARE(m_service->availability(), Availability::available());
            QCOMPARE(m_service->contextSize(), 99);
        }
    }

    void cancelStopsTheReply()
    {
        becomeAvailable();
        const qint64 pid = servicePid();
        const TestReply reply(*m_service, "stream");
        QTRY_VERIFY(reply.text.count("la") > 3);
        reply->cancel();
        const QString text = reply.text;
        QCOMPARE(servicePid(), pid);
        QCOMPARE(reply.text, text);
        QVERIFY(!reply.hasEnded());
    }

    void cancelledReplyThatWaitsIsNeverSent()
    {
        writeModel("GGUF fine");
        createService();
        const TestReply cancelled(*m_service, "abort");
        cancelled->cancel();
        {
            const TestReply dropped(*m_service, "abort");
        }
        const TestReply next(*m_service, "structured");
        QTRY_VERIFY(next.hasEnded());
        QVERIFY(next.usage);
        QVERIFY(!cancelled.hasEnded());
    }

    void refusedReplyOutlivesTheService()
    {
        createService();
        const TestReply reply(*m_service, "pid");
        // It has been refused, but nobody was told so far. Who waits for it gives up when the service goes.
        connect(m_service.get(), &QObject::destroyed, this, [&reply] { reply->cancel(); });
        m_service.reset();
        QTest::qWait(20);
        QVERIFY(!reply.hasEnded());
    }

private:
    QString writeImage(const QString &name, const QImage &image) const
    {
        if (!image.save(path(name)))
            qFatal("cannot write");
        return path(name);
    }
};

QTEST_GUILESS_MAIN(LocalRepliesTest)
#include "tst_localreplies.moc"
