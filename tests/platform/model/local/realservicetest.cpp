// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/childprocesses.h"
#include "platform/model/languagemodelsession.h"
#include "platform/model/local/localmodelservice.h"
#include "platform/model/outcome.h"
#include "platform/model/testrecords.h"

#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace lumora;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct StreamLog
{
    QStringList snapshots;
    std::optional<QString> failure;
    bool isCancelled = false;
    bool isComplete = false;

    bool hasEnded() const { return failure || isCancelled || isComplete; }
};

QCoro::Task<> readAll(ResponseStream stream, std::shared_ptr<StreamLog> log)
{
    try {
        while (!log->isComplete) {
            QCoro::Task<std::optional<Snapshot>> next = stream.next();
            const std::optional<Snapshot> snapshot = co_await next;
            log->isComplete = !snapshot;
            if (snapshot)
                log->snapshots.append(snapshot->content);
        }
    } catch (const ModelError &error) {
        log->failure = error.description();
    } catch (const CancellationError &) {
        log->isCancelled = true;
    }
}

} // namespace

// The whole way: a session, the service process, the engine, and a tiny model with random weights.
class RealServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void countsAndStreams();
    void structuredAnswerConverts();
    void toolIsCalledAndItsOutputRead();
    void cancelledReplyLeavesTheServiceUsable();
    void killedServiceStartsAnew();
    void imageIsRead();
    void brokenFileIsNoCrash_data();
    void brokenFileIsNoCrash();

private:
    void useModel(const QString &path);
    static std::shared_ptr<StreamLog> stream(LanguageModelSession &session, std::optional<qint64> tokens = {});

    LocalModelSettings m_settings;
    std::shared_ptr<LocalModelService> m_service;
};

void RealServiceTest::init()
{
    m_settings = {};
    m_settings.command.program = QStringLiteral(REAL_SERVICE);
    m_settings.patience.untilSettled = 0ms;
}

void RealServiceTest::cleanup()
{
    m_service.reset();
}

void RealServiceTest::useModel(const QString &path)
{
    m_settings.builtInModels = {path};
    m_service = std::make_shared<LocalModelService>(m_settings);
}

std::shared_ptr<StreamLog> RealServiceTest::stream(LanguageModelSession &session, std::optional<qint64> tokens)
{
    auto log = std::make_shared<StreamLog>();
    readAll(session.streamResponse({u"Tell me something."_s, {}}, {{}, {}, tokens}), log);
    return log;
}

void RealServiceTest::countsAndStreams()
{
    useModel(QStringLiteral(TINY_MODEL));
    const auto shorter = outcomeOf(m_service->tokenCount(u"Hello"_s));
    const auto longer = outcomeOf(m_service->tokenCount(u"Hello, and good morning to all of you."_s));
    QTRY_VERIFY_WITH_TIMEOUT(longer->isDone(), 60000);
    QVERIFY(shorter->value > 0);
    QVERIFY(longer->value > shorter->value);
    QVERIFY(m_service->contextSize() >= 512);
    QCOMPARE(m_service->availability(), Availability::available());

    LanguageModelSession session(SystemLanguageModel(m_service), {}, u"Be brief."_s);
    const auto log = stream(session, 24);
    QTRY_VERIFY_WITH_TIMEOUT(log->hasEnded(), 60000);
    QVERIFY2(log->isComplete, qPrintable(log->failure.value_or(QString())));
    QVERIFY(!log->snapshots.isEmpty());
    for (qsizetype at = 1; at < log->snapshots.size(); ++at)
        QVERIFY(log->snapshots.at(at).startsWith(log->snapshots.at(at - 1)));
    QVERIFY(session.usage().input.totalTokenCount > 0);
    QVERIFY(session.usage().output.totalTokenCount > 0 && session.usage().output.totalTokenCount <= 24);
}

void RealServiceTest::structuredAnswerConverts()
{
    useModel(QStringLiteral(TINY_MODEL));
    LanguageModelSession session(SystemLanguageModel(m_service), {}, {});
    const auto card = outcomeOf(session.respond<TestCard>({u"Anything."_s, {}}, IncludeSchemaInPrompt::yes, {}));
    QTRY_VERIFY_WITH_TIMEOUT(card->isDone(), 120000);
    QVERIFY2(card->value, qPrintable(card->failure.value_or(QString())));
}

void RealServiceTest::toolIsCalledAndItsOutputRead()
{
    useModel(QStringLiteral(TOOL_CALLING_MODEL));
    LanguageModelSession session(SystemLanguageModel(m_service), {makeTool(TestTool{})}, {});
    const auto log = stream(session);
    QTRY_VERIFY_WITH_TIMEOUT(log->hasEnded(), 120000);
    const auto &entries = session.transcript().entries;
    QVERIFY2(entries.size() >= 3, qPrintable(log->failure.value_or(log->snapshots.value(0))));
    const auto call = std::get<Transcript::ToolCalls>(entries.at(1)).calls.first();
    QCOMPARE(call.toolName, u"ask"_s);
    const QString question = GeneratedContent::fromJson(call.arguments.toUtf8()).text(u"question");
    QCOMPARE(entries.at(2), Transcript::Entry(Transcript::ToolOutput{call.id, question.toUpper()}));
    QVERIFY2(log->isComplete, qPrintable(log->failure.value_or(QString())));
}

void RealServiceTest::cancelledReplyLeavesTheServiceUsable()
{
    useModel(QStringLiteral(ENDLESS_MODEL));
    LanguageModelSession session(SystemLanguageModel(m_service), {}, {});
    const auto cancelled = stream(session);
    QTRY_VERIFY_WITH_TIMEOUT(!cancelled->snapshots.isEmpty(), 60000);
    session.cancel();
    QTRY_VERIFY_WITH_TIMEOUT(cancelled->hasEnded(), 60000);
    QVERIFY(cancelled->isCancelled);
    const auto next = stream(session, 8);
    QTRY_VERIFY_WITH_TIMEOUT(next->hasEnded(), 60000);
    QVERIFY(next->isComplete);
}

void RealServiceTest::killedServiceStartsAnew()
{
    useModel(QStringLiteral(ENDLESS_MODEL));
    LanguageModelSession session(SystemLanguageModel(m_service), {}, {});
    const auto killed = stream(session);
    QTRY_VERIFY_WITH_TIMEOUT(!killed->snapshots.isEmpty(), 60000);
    for (const int pid : childProcesses())
        QVERIFY(::kill(pid, SIGKILL) == 0);
    QTRY_VERIFY_WITH_TIMEOUT(killed->hasEnded(), 60000);
    QVERIFY(killed->failure && killed->failure->contains(u"killed"_s));

    const auto next = stream(session, 8);
    QTRY_VERIFY_WITH_TIMEOUT(next->hasEnded(), 60000);
    QVERIFY(next->isComplete);
}

void RealServiceTest::imageIsRead()
{
#ifndef READS_IMAGES
    QSKIP("the engine was built without libmtmd");
#endif
    const QTemporaryDir folder;
    QVERIFY(QFile::copy(QStringLiteral(TINY_MODEL), folder.filePath(u"tiny.gguf"_s)));
    QVERIFY(QFile::copy(QStringLiteral(TINY_PROJECTOR), folder.filePath(u"mmproj-tiny.gguf"_s)));
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(folder.filePath(u"red.png"_s)));
    useModel(folder.filePath(u"tiny.gguf"_s));

    const auto tokensOf = [this](const QList<Attachment> &attachments) {
        LanguageModelSession session(SystemLanguageModel(m_service), {}, {});
        const auto log = std::make_shared<StreamLog>();
        readAll(session.streamResponse({u"What is it?"_s, attachments}, {{}, {}, 4}), log);
        [&log] { QTRY_VERIFY_WITH_TIMEOUT(log->hasEnded(), 60000); }();
        return log->isComplete ? session.usage().input.totalTokenCount : 0;
    };
    const qint64 withoutImage = tokensOf({});
    QVERIFY(withoutImage > 0);
    QVERIFY(tokensOf({Attachment(folder.filePath(u"red.png"_s))}) >= withoutImage + 5 * 4);
}

void RealServiceTest::brokenFileIsNoCrash_data()
{
    QTest::addColumn<qint64>("size"); // that is left of a good file
    QTest::newRow("magic only") << qint64(4);
    QTest::newRow("header cut") << qint64(1000);
    QTest::newRow("weights cut") << QFile(QStringLiteral(TINY_MODEL)).size() - 1000;
}

void RealServiceTest::brokenFileIsNoCrash()
{
    QFETCH(qint64, size);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"cut.gguf"_s);
    QVERIFY(QFile::copy(QStringLiteral(TINY_MODEL), path));
    QVERIFY(QFile::resize(path, size));
    useModel(path);
    QTRY_COMPARE_WITH_TIMEOUT(m_service->availability(),
                              Availability::unavailable(Availability::UnavailableReason::other), 60000);
    const auto count = outcomeOf(m_service->tokenCount(u"Hello"_s));
    QTRY_VERIFY(count->isDone());
    QVERIFY2(count->failure && count->failure->contains(u"cut.gguf"_s), qPrintable(count->failure.value_or(u"none"_s)));
}

QTEST_GUILESS_MAIN(RealServiceTest)
#include "realservicetest.moc"
