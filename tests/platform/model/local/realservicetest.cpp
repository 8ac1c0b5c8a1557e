// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/localmodelservice.h"
#include "platform/model/outcome.h"
#include "platform/model/streamlog.h"
#include "platform/model/testrecords.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// The whole way: a session, the service process, the engine, and a tiny model with random weights.
class RealServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_settings = {};
        m_settings.command.program = QStringLiteral(REAL_SERVICE);
        m_settings.patience.untilSettled = 0ms;
    }

    void cleanup() { m_service.reset(); }

    void countsAndStreams()
    {
        const QTemporaryDir folder;
        QVERIFY(QFile::link(QStringLiteral(TINY_MODEL), folder.filePath("link.gguf")));
        useModel(folder.filePath("link.gguf"));
        const auto shorter = outcomeOf(m_service->tokenCount("Hello"));
        const auto longer = outcomeOf(m_service->tokenCount("Hello, and good morning to all of you."));
        QTRY_VERIFY_WITH_TIMEOUT(longer->isDone(), 60000);
        QVERIFY(shorter->value > 0);
        QVERIFY(longer->value > shorter->value);
        QVERIFY(m_service->contextSize() >= 512);
        QCOMPARE(m_service->availability(), Availability::available());

        LanguageModelSession session(SystemLanguageModel(m_service), {}, "Be brief.");
        const auto log = stream(session, 24);
        QTRY_VERIFY_WITH_TIMEOUT(log->hasEnded(), 60000);
        QVERIFY2(log->isComplete, qPrintable(log->failure.value_or(QString())));
        QVERIFY(!log->snapshots.isEmpty());
        for (qsizetype at = 1; at < log->snapshots.size(); ++at)
            QVERIFY(log->snapshots.at(at).startsWith(log->snapshots.at(at - 1)));
        QVERIFY(session.usage().input.totalTokenCount > 0);
        QVERIFY(session.usage().output.totalTokenCount > 0 && session.usage().output.totalTokenCount <= 24);
    }

    void structuredAnswerConverts()
    {
        useModel(QStringLiteral(TINY_MODEL));
        LanguageModelSession session(SystemLanguageModel(m_service), {}, {});
        const auto card = outcomeOf(session.respond<TestCard>({"Anything.", {}}, IncludeSchemaInPrompt::yes, {}));
        QTRY_VERIFY_WITH_TIMEOUT(card->isDone(), 120000);
        QVERIFY2(card->value, qPrintable(card->failure.value_or(QString())));
    }

    void toolIsCalledAndItsOutputRead()
    {
        useModel(QStringLiteral(TOOL_CALLING_MODEL));
        LanguageModelSession session(SystemLanguageModel(m_service), {makeTool(TestTool{})}, {});
        const auto log = stream(session);
        QTRY_VERIFY_WITH_TIMEOUT(log->hasEnded(), 120000);
        const auto &entries = session.transcript().entries;
        QVERIFY2(entries.size() >= 3, qPrintable(log->failure.value_or(log->snapshots.value(0))));
        const auto call = std::get<Transcript::ToolCalls>(entries.at(1)).calls.first();
        QCOMPARE(call.toolName, "ask");
        const QString question = GeneratedContent::fromJson(call.arguments.toUtf8()).text(u"question");
        QCOMPARE(entries.at(2), Transcript::Entry(Transcript::ToolOutput{call.id, question.toUpper()}));
        QVERIFY2(log->isComplete, qPrintable(log->failure.value_or(QString())));
    }

    void imageIsRead()
    {
#ifndef READS_IMAGES
        QSKIP("the engine was built without libmtmd");
#endif
        const QTemporaryDir folder;
        QVERIFY(QFile::copy(QStringLiteral(TINY_MODEL), folder.filePath("tiny.gguf")));
        QVERIFY(QFile::copy(QStringLiteral(TINY_PROJECTOR), folder.filePath("mmproj-tiny.gguf")));
        QImage image(200, 100, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(folder.filePath("red.png")));
        useModel(folder.filePath("tiny.gguf"));

        const auto tokensOf = [this](const QList<Attachment> &attachments) {
            LanguageModelSession session(SystemLanguageModel(m_service), {}, {});
            const auto log = streamOf(session, {"What is it?", attachments}, {{}, {}, 4});
            [&log] { QTRY_VERIFY_WITH_TIMEOUT(log->hasEnded(), 60000); }();
            return log->isComplete ? session.usage().input.totalTokenCount : 0;
        };
        const qint64 withoutImage = tokensOf({});
        QVERIFY(withoutImage > 0);
        QVERIFY(tokensOf({Attachment(folder.filePath("red.png"))}) >= withoutImage + 5 * 4);
    }

private:
    void useModel(const QString &path)
    {
        m_settings.builtInModel = path;
        m_service = std::make_shared<LocalModelService>(m_settings);
    }

    static std::shared_ptr<StreamLog> stream(LanguageModelSession &session, std::optional<qint64> tokens = {})
    {
        return streamOf(session, {"Tell me something.", {}}, {{}, {}, tokens});
    }

    LocalModelSettings m_settings;
    std::shared_ptr<LocalModelService> m_service;
};

QTEST_GUILESS_MAIN(RealServiceTest)
#include "realservicetest.moc"
