// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/languagemodelsession.h"

#include "platform/model/outcome.h"
#include "platform/model/replyworkers.h"
#include "platform/model/scripted/scriptedmodelservice.h"
#include "platform/model/streamlog.h"
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

Script toolThenText(const QByteArray &argumentsJson = R"({"question":"why"})")
{
    Script script;
    script.steps = {Script::Text{"Let me see. "}, Script::ToolCall{"ask", argumentsJson},
                    Script::Text{"Because %output%."}};
    return script;
}

} // namespace

class LanguageModelSessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_service = std::make_shared<ScriptedModelService>(); }

    void cleanup()
    {
        m_service.reset();
        QVERIFY(replyWorkers()->waitForDone(10000));
    }

    void repliesGrowAndAddUp()
    {
        LanguageModelSession session(model(), {}, "Be brief.");
        m_service->enqueue(Script::pieces({"Hel", "lo ", "you"}));
        const auto log = stream(session);
        QTRY_VERIFY(log->isComplete);
        QCOMPARE(log->snapshots, QStringList({"Hel", "Hello ", "Hello you"}));

        QList<Transcript::Entry> entries{Transcript::Instructions{"Be brief."}, Transcript::PromptText{"Why?"},
                                         Transcript::Response{"Hello you"}};
        QCOMPARE(session.transcript().entries, entries);
        QCOMPARE(session.usage(), (Usage{{4}, {3}}));

        Script second = Script::text("No.");
        second.usage = Usage{{10}, {2}};
        m_service->enqueue(second);
        const auto secondLog = stream(session, "Sure?");
        QTRY_VERIFY(secondLog->isComplete);
        QCOMPARE(secondLog->snapshots, QStringList{"No."});
        entries << Transcript::PromptText{"Sure?"} << Transcript::Response{"No."};
        QCOMPARE(session.transcript().entries, entries);
        QCOMPARE(session.usage(), (Usage{{14}, {5}}));
    }

    void slowReaderGetsTheNewestAndTheLast()
    {
        LanguageModelSession session(model(), {}, {});
        m_service->enqueue(Script::pieces({"a", "b"}).then(Script::hold()).then(Script::pieces({"c", "d"})));
        ResponseStream stream = session.streamResponse({}, {});
        QTRY_VERIFY(m_service->isHolding());

        auto next = outcomeOf(stream.next());
        QVERIFY(next->value.has_value());
        QCOMPARE((*next->value)->content, "ab");

        m_service->release();
        QTRY_COMPARE(session.transcript().entries.size(), 2);
        next = outcomeOf(stream.next());
        QCOMPARE((*next->value)->content, "abcd");
        next = outcomeOf(stream.next());
        QVERIFY(next->isDone());
        QVERIFY(!next->value->has_value());
    }

    void requestCarriesInstructionsToolsAndOptions()
    {
        LanguageModelSession session(model(), {makeTool(TestTool{})}, "Be brief.");
        const Prompt prompt{"Look", {Attachment("/tmp/a.png").label("attached image")}};
        const GenerationOptions options{GenerationOptions::SamplingMode::greedy, 0.5, 100};
        session.streamResponse(prompt, options);

        QCOMPARE(m_service->requests().size(), 1);
        const ReplyRequest &request = m_service->requests().first();
        QCOMPARE(request.instructions, "Be brief.");
        QCOMPARE(request.prompt, prompt);
        QCOMPARE(request.options, options);
        QVERIFY(!request.schema);
        QCOMPARE(request.tools.size(), 1);
        QCOMPARE(request.tools.first().name, "ask");
        QCOMPARE(request.tools.first().description, "Asks something.");
        QCOMPARE(request.tools.first().parameters, TestTool::Arguments::generationSchema());
    }

    void newReplyCancelsTheRunningOne()
    {
        LanguageModelSession session(model(), {}, {});
        m_service->enqueue(Script::hold());
        m_service->enqueue(Script::text("second"));
        const auto first = stream(session);
        const auto second = stream(session);
        QTRY_VERIFY(second->isComplete);
        QVERIFY(first->isCancelled);
        QCOMPARE(second->snapshots, QStringList{"second"});
    }

    void toolCallsShowAtOnceAndEndWithTheirOutput()
    {
        QSemaphore mayAnswer;
        TestTool tool;
        tool.action = [&mayAnswer](const QString &) {
            mayAnswer.acquire();
            return "it is so";
        };
        LanguageModelSession session(model(), {makeTool(tool)}, {});
        Script script;
        script.steps = {Script::ToolCall{"ask", R"({"question":"why"})"}, Script::Text{"Because %output%."}};
        m_service->enqueue(script);
        const auto log = stream(session);

        QTRY_COMPARE(log->snapshots, QStringList{QString()});
        const auto call = std::get<Transcript::ToolCalls>(session.transcript().entries.at(1)).calls.first();
        QCOMPARE(call.toolName, "ask");
        QCOMPARE(call.arguments, R"({"question":"why"})");
        QVERIFY(!call.id.isEmpty());

        mayAnswer.release();
        QTRY_VERIFY(log->isComplete);
        QCOMPARE(log->snapshots, QStringList({QString(), QString(), "Because it is so."}));
        QCOMPARE(log->transcriptSizes, QList<qsizetype>({2, 3, 3}));
        QCOMPARE(session.transcript().entries.at(2), Transcript::Entry(Transcript::ToolOutput{call.id, "it is so"}));
    }

    void toolsRunOnWorkersInTheOrderOfTheirCalls()
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
        QCOMPARE(log->snapshots.last(), "Let me see. Because A.Let me see. Because B.");
        QVERIFY(!wasOnMainThread);

        const auto &entries = session.transcript().entries;
        const auto first = std::get<Transcript::ToolCalls>(entries.at(1)).calls.first();
        const auto second = std::get<Transcript::ToolCalls>(entries.at(3)).calls.first();
        QCOMPARE_NE(first.id, second.id);
        QCOMPARE(entries.at(2), Transcript::Entry(Transcript::ToolOutput{first.id, "A"}));
        QCOMPARE(entries.at(4), Transcript::Entry(Transcript::ToolOutput{second.id, "B"}));
    }

    void toolFailureFailsTheReply_data()
    {
        using Action = std::function<QString(const QString &)>;
        QTest::addColumn<QString>("toolName");
        QTest::addColumn<QByteArray>("argumentsJson");
        QTest::addColumn<Action>("action");
        QTest::addColumn<QString>("failure"); // a part of it

        const QString ask = "ask";
        const QByteArray good = R"({"question":"why"})";
        const Action fine = [](const QString &) { return "fine"; };
        const Action modelError = [](const QString &) -> QString { throw ModelError("The index is broken."); };
        const Action standardError = [](const QString &) -> QString { throw std::runtime_error("out of ideas"); };
        const Action badAlloc = [](const QString &) -> QString { throw std::bad_alloc(); };
        const Action anything = [](const QString &) -> QString { throw 42; };
        QTest::newRow("the tool's own error") << ask << good << modelError << u"The index is broken."_s;
        QTest::newRow("a standard error") << ask << good << standardError << u"out of ideas"_s;
        QTest::newRow("no memory") << ask << good << badAlloc << u"Close other programs"_s;
        QTest::newRow("something else thrown") << ask << good << anything << u"“ask” failed"_s;
        QTest::newRow("argument missing") << ask << QByteArray("{}") << fine << u"lacks the property “question”"_s;
        QTest::newRow("argument of another type")
            << ask << QByteArray(R"({"question":1})") << fine << u"something else in the property “question”"_s;
        QTest::newRow("arguments cut") << ask << QByteArray("{") << fine << u"not complete JSON"_s;
        QTest::newRow("unknown tool") << u"guess"_s << good << fine << u"“guess”, which it was not offered"_s;
    }

    void toolFailureFailsTheReply()
    {
        QFETCH(QString, toolName);
        QFETCH(QByteArray, argumentsJson);
        QFETCH(std::function<QString(const QString &)>, action);
        QFETCH(QString, failure);

        TestTool tool;
        tool.action = action;
        LanguageModelSession session(model(), {makeTool(tool)}, {});
        Script script;
        script.steps = {Script::Text{"So far"}, Script::ToolCall{toolName, argumentsJson}, Script::Text{"never"}};
        m_service->enqueue(script);
        const auto log = stream(session);
        QTRY_VERIFY(log->hasEnded());
        QVERIFY2(log->failure && log->failure->contains(failure), qPrintable(log->failure.value_or("none")));
        QCOMPARE(log->snapshots.last(), "So far");
        QCOMPARE(m_service->cancelledReplies(), 1);
        QVERIFY(std::holds_alternative<Transcript::ToolCalls>(session.transcript().entries.last()));
    }

    void structuredReplyGivesTheRecord_data()
    {
        QTest::addColumn<bool>("isSchemaInPrompt");
        QTest::newRow("schema in the prompt") << true;
        QTest::newRow("schema beside the prompt") << false;
    }

    void structuredReplyGivesTheRecord()
    {
        QFETCH(bool, isSchemaInPrompt);
        const TestCard card{"A", {"b", "c"}};
        const QByteArray json = card.generatedContent().toJson();
        LanguageModelSession session(model(), {makeTool(TestTool{})}, {});
        Script script;
        script.steps = {Script::ToolCall{"ask", R"({"question":"why"})"}, Script::Answer{json}};
        m_service->enqueue(script);

        const auto include = isSchemaInPrompt ? IncludeSchemaInPrompt::yes : IncludeSchemaInPrompt::no;
        const auto outcome = outcomeOf(session.respond<TestCard>({"Why?", {}}, include, {}));
        QTRY_VERIFY(outcome->isDone());
        QCOMPARE(outcome->value, card);

        const ReplyRequest &request = m_service->requests().first();
        QCOMPARE(request.schema, TestCard::generationSchema());
        const QString schemaText = QString::fromUtf8(TestCard::generationSchema().toJson());
        QVERIFY(request.prompt.text.startsWith("Why?"));
        QCOMPARE(request.prompt.text.endsWith(schemaText), isSchemaInPrompt);
        QCOMPARE(request.prompt.text == "Why?", !isSchemaInPrompt);

        const auto &entries = session.transcript().entries;
        QCOMPARE(entries.size(), 4);
        QVERIFY(std::holds_alternative<Transcript::ToolOutput>(entries.at(2)));
        QCOMPARE(entries.last(), Transcript::Entry(Transcript::Response{QString::fromUtf8(json)}));
    }

    void structuredReplyOfAnotherShapeIsAConversionFailure()
    {
        LanguageModelSession session(model(), {}, {});
        m_service->enqueue(Script::answer(R"({"title":"A"})"));
        const auto outcome = outcomeOf(session.respond<TestCard>({}, IncludeSchemaInPrompt::no, {}));
        QTRY_VERIFY(outcome->isDone());
        QVERIFY(outcome->isConversionFailure);
    }

    void cancelEndsTheWaitFromTheEventLoop_data()
    {
        QTest::addColumn<Script>("script");
        QTest::addColumn<qsizetype>("entries"); // of the transcript, when it is cancelled
        QTest::newRow("before the first piece") << Script::hold() << qsizetype(1);
        QTest::newRow("between two pieces") << Script::text("Half").then(Script::hold()) << qsizetype(1);
        QTest::newRow("after a tool call") << toolThenText().then(Script::hold()) << qsizetype(3);
    }

    void cancelEndsTheWaitFromTheEventLoop()
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

    void destructionEndsTheWaitAtOnce_data()
    {
        QTest::addColumn<bool>("isService");
        QTest::addColumn<bool>("wasCancelled");
        QTest::newRow("session") << false << false;
        QTest::newRow("session, cancelled before") << false << true;
        QTest::newRow("service") << true << false;
        QTest::newRow("service, cancelled before") << true << true;
    }

    void destructionEndsTheWaitAtOnce()
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

    void endOfTheReplyStopsItsTool_data()
    {
        QTest::addColumn<QString>("end");
        for (const char *end : {"cancel", "next reply", "session", "service"})
            QTest::newRow(end) << end;
    }

    void endOfTheReplyStopsItsTool()
    {
        QFETCH(QString, end);
        const EndlessTool tool;
        m_service->enqueue(toolThenText());
        auto session = std::make_unique<LanguageModelSession>(model(), ToolList{makeTool(tool)}, QString());
        const auto log = stream(*session);
        QTRY_VERIFY(*tool.isRunning);
        std::shared_ptr<StreamLog> next;
        if (end == "cancel")
            session->cancel();
        else if (end == "next reply")
            next = stream(*session);
        else if (end == "session")
            session.reset();
        else
            m_service.reset();
        QTRY_VERIFY(!*tool.isRunning);
        QTRY_VERIFY(log->isCancelled);
        QCOMPARE(log->snapshots.last(), "Let me see. ");
    }

private:
    static std::shared_ptr<StreamLog> stream(LanguageModelSession &session, const QString &prompt = "Why?")
    {
        return streamOf(session, {prompt, {}});
    }
    SystemLanguageModel model() const { return SystemLanguageModel(m_service); }

    std::shared_ptr<ScriptedModelService> m_service;
};

QTEST_GUILESS_MAIN(LanguageModelSessionTest)
#include "languagemodelsessiontest.moc"
