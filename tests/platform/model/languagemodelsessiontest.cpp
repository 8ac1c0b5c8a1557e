// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/languagemodelsession.h"

#include "platform/model/outcome.h"
#include "platform/model/scripted/scriptedmodelservice.h"
#include "platform/model/testrecords.h"

#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <functional>

using namespace lumora;
using namespace Qt::StringLiterals;

namespace {

using NextSnapshot = std::shared_ptr<Outcome<std::optional<Snapshot>>>;

struct StreamLog
{
    QStringList snapshots;
    QList<qsizetype> transcriptSizes; // as each snapshot came
    bool isComplete = false;
    bool isCancelled = false;
    std::optional<QString> failure;

    bool hasEnded() const { return isComplete || isCancelled || failure; }
};

// Reads to the end; session may be gone before.
QCoro::Task<> readAll(ResponseStream stream, std::shared_ptr<StreamLog> log, const LanguageModelSession *session)
{
    try {
        while (!log->isComplete) {
            QCoro::Task<std::optional<Snapshot>> next = stream.next();
            const std::optional<Snapshot> snapshot = co_await next;
            if (snapshot) {
                log->snapshots.append(snapshot->content);
                log->transcriptSizes.append(session->transcript().entries.size());
            }
            log->isComplete = !snapshot;
        }
    } catch (const ModelError &error) {
        log->failure = error.description();
    } catch (const CancellationError &) {
        log->isCancelled = true;
    }
}

Script toolThenText(const QByteArray &argumentsJson = R"({"question":"why"})")
{
    Script script;
    script.steps = {Script::Text{u"Let me see. "_s}, Script::ToolCall{u"ask"_s, argumentsJson},
                    Script::Text{u"Because %output%."_s}};
    return script;
}

} // namespace

class LanguageModelSessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everySnapshotHoldsTheWholeText();
    void slowReaderGetsTheNewestAndTheLast();
    void failureComesAfterTheLastSnapshot();
    void requestCarriesInstructionsToolsAndOptions();
    void repliesAddUp();
    void newReplyCancelsTheRunningOne();

    void toolCallsShowAtOnceAndEndWithTheirOutput();
    void toolsRunOnWorkersInTheOrderOfTheirCalls();
    void toolFailureFailsTheReply_data();
    void toolFailureFailsTheReply();

    void structuredReplyGivesTheRecord_data();
    void structuredReplyGivesTheRecord();
    void structuredReplyOfAnotherShapeIsAConversionFailure();

    void cancelEndsTheWaitFromTheEventLoop_data();
    void cancelEndsTheWaitFromTheEventLoop();
    void destructionEndsTheWaitAtOnce_data();
    void destructionEndsTheWaitAtOnce();
    void toolThatStillRunsAfterTheEndIsHarmless();
    void countEndsWithTheService();

private:
    std::shared_ptr<StreamLog> stream(LanguageModelSession &session, const QString &prompt = u"Why?"_s)
    {
        auto log = std::make_shared<StreamLog>();
        readAll(session.streamResponse({prompt, {}}, {}), log, &session);
        return log;
    }
    SystemLanguageModel model() const { return SystemLanguageModel(m_service); }

    std::shared_ptr<ScriptedModelService> m_service;
};

void LanguageModelSessionTest::init()
{
    m_service = std::make_shared<ScriptedModelService>();
}

void LanguageModelSessionTest::cleanup()
{
    m_service.reset();
    QVERIFY(QThreadPool::globalInstance()->waitForDone(10000));
}

void LanguageModelSessionTest::everySnapshotHoldsTheWholeText()
{
    LanguageModelSession session(model(), {}, u"Be brief."_s);
    m_service->enqueue(Script::pieces({u"Hel"_s, u"lo "_s, u"you"_s}));
    const auto log = stream(session);
    QTRY_VERIFY(log->isComplete);
    QCOMPARE(log->snapshots, QStringList({u"Hel"_s, u"Hello "_s, u"Hello you"_s}));

    const QList<Transcript::Entry> entries{Transcript::Instructions{u"Be brief."_s}, Transcript::PromptText{u"Why?"_s},
                                           Transcript::Response{u"Hello you"_s}};
    QCOMPARE(session.transcript().entries, entries);
    QCOMPARE(session.usage(), (Usage{{4}, {3}}));
}

void LanguageModelSessionTest::slowReaderGetsTheNewestAndTheLast()
{
    LanguageModelSession session(model(), {}, {});
    m_service->enqueue(Script::pieces({u"a"_s, u"b"_s}).then(Script::hold()).then(Script::pieces({u"c"_s, u"d"_s})));
    ResponseStream stream = session.streamResponse({}, {});
    QTRY_VERIFY(m_service->isHolding());

    NextSnapshot next = outcomeOf(stream.next());
    QVERIFY(next->value.has_value());
    QCOMPARE((*next->value)->content, u"ab"_s);

    m_service->release();
    QTRY_COMPARE(session.transcript().entries.size(), 2);
    next = outcomeOf(stream.next());
    QCOMPARE((*next->value)->content, u"abcd"_s);
    next = outcomeOf(stream.next());
    QVERIFY(next->isDone());
    QVERIFY(!next->value->has_value());
}

void LanguageModelSessionTest::failureComesAfterTheLastSnapshot()
{
    LanguageModelSession session(model(), {}, {});
    m_service->enqueue(Script::text(u"Half an"_s).then(Script::failure(u"The model tripped."_s)));
    const auto log = stream(session);
    QTRY_VERIFY(log->hasEnded());
    QCOMPARE(log->failure, u"The model tripped."_s);
    QCOMPARE(log->snapshots, QStringList{u"Half an"_s});
    QCOMPARE(session.usage(), Usage());
}

void LanguageModelSessionTest::requestCarriesInstructionsToolsAndOptions()
{
    LanguageModelSession session(model(), {makeTool(TestTool{})}, u"Be brief."_s);
    const Prompt prompt{u"Look"_s, {Attachment(u"/tmp/a.png"_s).label(u"attached image"_s)}};
    const GenerationOptions options{GenerationOptions::SamplingMode::greedy, 0.5, 100};
    session.streamResponse(prompt, options);

    QCOMPARE(m_service->requests().size(), 1);
    const ReplyRequest &request = m_service->requests().first();
    QCOMPARE(request.instructions, u"Be brief."_s);
    QCOMPARE(request.prompt, prompt);
    QCOMPARE(request.options, options);
    QVERIFY(!request.schema);
    QCOMPARE(request.tools.size(), 1);
    QCOMPARE(request.tools.first().name, u"ask"_s);
    QCOMPARE(request.tools.first().description, u"Asks something."_s);
    QCOMPARE(request.tools.first().parameters, TestTool::Arguments::generationSchema());
}

void LanguageModelSessionTest::repliesAddUp()
{
    LanguageModelSession session(model(), {}, {});
    for (const QString &text : {u"one"_s, u"two"_s}) {
        Script script = Script::text(text);
        script.usage = Usage{{10}, {2}};
        m_service->enqueue(script);
        const auto log = stream(session, text);
        QTRY_VERIFY(log->isComplete);
        QCOMPARE(log->snapshots, QStringList{text});
    }
    const QList<Transcript::Entry> entries{Transcript::PromptText{u"one"_s}, Transcript::Response{u"one"_s},
                                           Transcript::PromptText{u"two"_s}, Transcript::Response{u"two"_s}};
    QCOMPARE(session.transcript().entries, entries);
    QCOMPARE(session.usage(), (Usage{{20}, {4}}));
}

void LanguageModelSessionTest::newReplyCancelsTheRunningOne()
{
    LanguageModelSession session(model(), {}, {});
    m_service->enqueue(Script::hold());
    m_service->enqueue(Script::text(u"second"_s));
    const auto first = stream(session);
    const auto second = stream(session);
    QTRY_VERIFY(second->isComplete);
    QVERIFY(first->isCancelled);
    QCOMPARE(second->snapshots, QStringList{u"second"_s});
}

void LanguageModelSessionTest::toolCallsShowAtOnceAndEndWithTheirOutput()
{
    QSemaphore mayAnswer;
    TestTool tool;
    tool.action = [&mayAnswer](const QString &) {
        mayAnswer.acquire();
        return u"it is so"_s;
    };
    LanguageModelSession session(model(), {makeTool(tool)}, {});
    Script script;
    script.steps = {Script::ToolCall{u"ask"_s, R"({"question":"why"})"}, Script::Text{u"Because %output%."_s}};
    m_service->enqueue(script);
    const auto log = stream(session);

    QTRY_COMPARE(log->snapshots, QStringList{QString()});
    const auto call = std::get<Transcript::ToolCalls>(session.transcript().entries.at(1)).calls.first();
    QCOMPARE(call.toolName, u"ask"_s);
    QCOMPARE(call.arguments, uR"({"question":"why"})"_s);
    QVERIFY(!call.id.isEmpty());

    mayAnswer.release();
    QTRY_VERIFY(log->isComplete);
    QCOMPARE(log->snapshots, QStringList({QString(), QString(), u"Because it is so."_s}));
    QCOMPARE(log->transcriptSizes, QList<qsizetype>({2, 3, 3}));
    QCOMPARE(session.transcript().entries.at(2), Transcript::Entry(Transcript::ToolOutput{call.id, u"it is so"_s}));
}

void LanguageModelSessionTest::toolsRunOnWorkersInTheOrderOfTheirCalls()
{
    std::atomic<bool> wasOnMainThread = false;
    TestTool tool;
    tool.action = [&wasOnMainThread, main = QThread::currentThread()](const QString &question) {
        if (QThread::currentThread() == main)
            wasOnMainThread = true;
        return question.toUpper();
    };
    LanguageModelSession session(model(), {makeTool(tool)}, {});
    m_service->enqueue(toolThenText(R"({"question":"a"})").then(toolThenText(R"({"question":"b"})")));
    const auto log = stream(session);
    QTRY_VERIFY(log->isComplete);
    QCOMPARE(log->snapshots.last(), u"Let me see. Because A.Let me see. Because B."_s);
    QVERIFY(!wasOnMainThread);

    const auto &entries = session.transcript().entries;
    const auto first = std::get<Transcript::ToolCalls>(entries.at(1)).calls.first();
    const auto second = std::get<Transcript::ToolCalls>(entries.at(3)).calls.first();
    QCOMPARE_NE(first.id, second.id);
    QCOMPARE(entries.at(2), Transcript::Entry(Transcript::ToolOutput{first.id, u"A"_s}));
    QCOMPARE(entries.at(4), Transcript::Entry(Transcript::ToolOutput{second.id, u"B"_s}));
}

void LanguageModelSessionTest::toolFailureFailsTheReply_data()
{
    using Action = std::function<QString(const QString &)>;
    QTest::addColumn<QString>("toolName");
    QTest::addColumn<QByteArray>("argumentsJson");
    QTest::addColumn<Action>("action");
    QTest::addColumn<QString>("failure"); // a part of it

    const QString ask = u"ask"_s;
    const QByteArray good = R"({"question":"why"})";
    const Action fine = [](const QString &) { return u"fine"_s; };
    const Action modelError = [](const QString &) -> QString { throw ModelError(u"The index is broken."_s); };
    const Action standardError = [](const QString &) -> QString { throw std::runtime_error("out of ideas"); };
    const Action anything = [](const QString &) -> QString { throw 42; };
    QTest::newRow("the tool's own error") << ask << good << modelError << u"The index is broken."_s;
    QTest::newRow("a standard error") << ask << good << standardError << u"out of ideas"_s;
    QTest::newRow("something else thrown") << ask << good << anything << u"“ask” failed"_s;
    QTest::newRow("argument missing") << ask << QByteArray("{}") << fine << u"lacks the property “question”"_s;
    QTest::newRow("argument of another type")
        << ask << QByteArray(R"({"question":1})") << fine << u"“question” that is not a text"_s;
    QTest::newRow("arguments cut") << ask << QByteArray("{") << fine << u"not complete JSON"_s;
    QTest::newRow("unknown tool") << u"guess"_s << good << fine << u"“guess”, which it was not offered"_s;
}

void LanguageModelSessionTest::toolFailureFailsTheReply()
{
    QFETCH(QString, toolName);
    QFETCH(QByteArray, argumentsJson);
    QFETCH(std::function<QString(const QString &)>, action);
    QFETCH(QString, failure);

    TestTool tool;
    tool.action = action;
    LanguageModelSession session(model(), {makeTool(tool)}, {});
    Script script;
    script.steps = {Script::Text{u"So far"_s}, Script::ToolCall{toolName, argumentsJson}, Script::Text{u"never"_s}};
    m_service->enqueue(script);
    const auto log = stream(session);
    QTRY_VERIFY(log->hasEnded());
    QVERIFY2(log->failure && log->failure->contains(failure), qPrintable(log->failure.value_or(u"none"_s)));
    QCOMPARE(log->snapshots.last(), u"So far"_s);
    QCOMPARE(m_service->cancelledReplies(), 1);
    QVERIFY(std::holds_alternative<Transcript::ToolCalls>(session.transcript().entries.last()));
}

void LanguageModelSessionTest::structuredReplyGivesTheRecord_data()
{
    QTest::addColumn<bool>("isSchemaInPrompt");
    QTest::newRow("schema in the prompt") << true;
    QTest::newRow("schema beside the prompt") << false;
}

void LanguageModelSessionTest::structuredReplyGivesTheRecord()
{
    QFETCH(bool, isSchemaInPrompt);
    const TestCard card{u"A"_s, {u"b"_s, u"c"_s}};
    const QByteArray json = card.generatedContent().toJson();
    LanguageModelSession session(model(), {makeTool(TestTool{})}, {});
    Script script;
    script.steps = {Script::ToolCall{u"ask"_s, R"({"question":"why"})"}, Script::Answer{json}};
    m_service->enqueue(script);

    const auto include = isSchemaInPrompt ? IncludeSchemaInPrompt::yes : IncludeSchemaInPrompt::no;
    const auto outcome = outcomeOf(session.respond<TestCard>({u"Why?"_s, {}}, include, {}));
    QTRY_VERIFY(outcome->isDone());
    QCOMPARE(outcome->value, card);

    const ReplyRequest &request = m_service->requests().first();
    QCOMPARE(request.schema, TestCard::generationSchema());
    const QString schemaText = QString::fromUtf8(TestCard::generationSchema().toJson());
    QVERIFY(request.prompt.text.startsWith(u"Why?"_s));
    QCOMPARE(request.prompt.text.endsWith(schemaText), isSchemaInPrompt);
    QCOMPARE(request.prompt.text == u"Why?"_s, !isSchemaInPrompt);

    const auto &entries = session.transcript().entries;
    QCOMPARE(entries.size(), 4);
    QVERIFY(std::holds_alternative<Transcript::ToolOutput>(entries.at(2)));
    QCOMPARE(entries.last(), Transcript::Entry(Transcript::Response{QString::fromUtf8(json)}));
}

void LanguageModelSessionTest::structuredReplyOfAnotherShapeIsAConversionFailure()
{
    LanguageModelSession session(model(), {}, {});
    m_service->enqueue(Script::answer(R"({"title":"A"})"));
    const auto outcome = outcomeOf(session.respond<TestCard>({}, IncludeSchemaInPrompt::no, {}));
    QTRY_VERIFY(outcome->isDone());
    QVERIFY(outcome->isConversionFailure);
}

void LanguageModelSessionTest::cancelEndsTheWaitFromTheEventLoop_data()
{
    QTest::addColumn<Script>("script");
    QTest::addColumn<qsizetype>("entries"); // of the transcript, when it is cancelled
    QTest::newRow("before the first piece") << Script::hold() << qsizetype(1);
    QTest::newRow("between two pieces") << Script::text(u"Half"_s).then(Script::hold()) << qsizetype(1);
    QTest::newRow("after a tool call") << toolThenText().then(Script::hold()) << qsizetype(3);
}

void LanguageModelSessionTest::cancelEndsTheWaitFromTheEventLoop()
{
    QFETCH(Script, script);
    QFETCH(qsizetype, entries);
    LanguageModelSession session(model(), {makeTool(TestTool{})}, {});
    m_service->enqueue(script);
    const auto log = stream(session);
    QTRY_VERIFY(m_service->isHolding());
    QTRY_COMPARE(session.transcript().entries.size(), entries);

    session.cancel();
    QVERIFY(!log->hasEnded());
    QCOMPARE(m_service->cancelledReplies(), 1);
    QTRY_VERIFY(log->hasEnded());
    QVERIFY(log->isCancelled);
    m_service->release();
    session.cancel();
    QCOMPARE(m_service->cancelledReplies(), 1);
    QCOMPARE(session.usage(), Usage());
}

void LanguageModelSessionTest::destructionEndsTheWaitAtOnce_data()
{
    QTest::addColumn<bool>("isService");
    QTest::addColumn<bool>("wasCancelled");
    QTest::newRow("session") << false << false;
    QTest::newRow("session, cancelled before") << false << true;
    QTest::newRow("service") << true << false;
    QTest::newRow("service, cancelled before") << true << true;
}

void LanguageModelSessionTest::destructionEndsTheWaitAtOnce()
{
    QFETCH(bool, isService);
    QFETCH(bool, wasCancelled);
    m_service->enqueue(Script::hold());
    auto session = std::make_unique<LanguageModelSession>(model(), ToolList{}, QString());
    const auto outcome = outcomeOf(session->respond<TestCard>({}, IncludeSchemaInPrompt::no, {}));
    if (wasCancelled)
        session->cancel();
    QVERIFY(!outcome->isDone());

    if (isService)
        m_service.reset();
    else
        session.reset();
    QVERIFY(outcome->isCancelled);

    if (session) {
        const auto later = outcomeOf(session->streamResponse({}, {}).next());
        QVERIFY(later->isCancelled);
    }
}

void LanguageModelSessionTest::toolThatStillRunsAfterTheEndIsHarmless()
{
    // Shared with the tool: it outlives this function's own variables if it must.
    auto mayAnswer = std::make_shared<QSemaphore>();
    auto hasAnswered = std::make_shared<QSemaphore>();
    TestTool tool;
    tool.action = [mayAnswer, hasAnswered](const QString &question) {
        mayAnswer->acquire();
        hasAnswered->release();
        return question;
    };
    m_service->enqueue(toolThenText());
    auto session = std::make_unique<LanguageModelSession>(model(), ToolList{makeTool(tool)}, QString());
    const auto log = stream(*session);
    QTRY_COMPARE(session->transcript().entries.size(), 2);
    session.reset();
    QVERIFY(log->isCancelled);

    mayAnswer->release();
    QVERIFY(hasAnswered->tryAcquire(1, 10000));
    QCoreApplication::processEvents();
    QCOMPARE(m_service->cancelledReplies(), 1);
}

void LanguageModelSessionTest::countEndsWithTheService()
{
    m_service->holdTokenCounts();
    const auto held = outcomeOf(m_service->tokenCount(u"four"_s));
    m_service->releaseTokenCounts();
    const auto answered = outcomeOf(m_service->tokenCount(u"eight, so"_s));
    // Neither has come back through the event loop yet.
    m_service.reset();
    QCOMPARE(held->value, 1);
    QCOMPARE(answered->value, 3);
}

QTEST_GUILESS_MAIN(LanguageModelSessionTest)
#include "languagemodelsessiontest.moc"
