// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/service.h"

#include "core/channel.h"
#include "core/crashguard.h"
#include "fakeengine.h"
#include "wire/frame.h"

#include <QTest>

#include <csignal>
#include <semaphore>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace lumora;
using namespace lumora::service;

namespace {

wire::Respond question(std::int64_t id, bool withTool = false)
{
    wire::Respond request;
    request.id = id;
    request.prompt = "Hi";
    if (withTool)
        request.tools = {{"clock", "", R"({"type":"object","properties":{}})"}};
    return request;
}

std::string nameOf(const wire::Answer &answer)
{
    return std::visit(
        [](const auto &message) {
            using Message = std::decay_t<decltype(message)>;
            std::string name = std::to_string(message.id) + " ";
            if constexpr (std::is_same_v<Message, wire::Failed>)
                return name + std::string(wire::errorCodeName(message.code));
            else if constexpr (std::is_same_v<Message, wire::Text>)
                return name + "text " + message.piece;
            else if constexpr (std::is_same_v<Message, wire::ToolCall>)
                return name + "call " + message.call;
            else if constexpr (std::is_same_v<Message, wire::Counted>)
                return name + "counted " + std::to_string(message.tokens);
            else if constexpr (std::is_same_v<Message, wire::Loaded>)
                return name + "loaded " + std::to_string(message.contextSize) + (message.readsImages ? " sees" : "");
            else
                return name + "finished";
        },
        answer);
}

/// A service that runs on its own thread, as the process's does.
struct RunningService
{
    RunningService() = default;
    ~RunningService() { finish(); }
    Q_DISABLE_COPY_MOVE(RunningService)

    void start()
    {
        thread = std::thread([this] {
            Service(
                engine, inbox,
                [this](const wire::Answer &answer) {
                    answers.push_back(nameOf(answer));
                    if (onAnswer)
                        onAnswer(answer);
                },
                [this](const wire::Answer *answer) { guarded.push_back(answer ? nameOf(*answer) : "over"); })
                .run();
        });
    }

    void finish()
    {
        if (thread.joinable()) {
            inbox.close();
            thread.join();
        }
    }

    FakeEngine engine;
    Inbox inbox;
    std::vector<std::string> answers; // to be read once the service has finished
    std::vector<std::string> guarded;
    std::function<void(const wire::Answer &)> onAnswer; // on the service's thread
    std::thread thread;
};

/// Lets the service go through all that was posted, and ends it with the last answer.
std::vector<std::string> answersTo(RunningService &service, const std::vector<wire::Request> &requests)
{
    std::binary_semaphore done(0);
    const auto inner = service.onAnswer;
    service.onAnswer = [&, inner](const wire::Answer &answer) {
        if (inner)
            inner(answer);
        if (nameOf(answer).starts_with("99 "))
            done.release();
    };
    for (const wire::Request &request : requests)
        service.inbox.post(request);
    service.inbox.post(wire::Count{99, ""});
    service.start();
    done.acquire();
    service.finish();
    service.answers.pop_back();
    return service.answers;
}

} // namespace

class ServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersInOrder()
    {
        RunningService service;
        service.engine.say({"Hello."});
        QCOMPARE(
            answersTo(service, {wire::Count{1, "abc"}, question(2), wire::Load{3, "other", 700}, wire::Count{4, ""}}),
            (std::vector<std::string>{"1 counted 3", "2 text Hello.", "2 finished", "3 loaded 700", "4 counted 0"}));
    }

    void needsAModel()
    {
        RunningService service;
        service.engine.size = 0;
        QCOMPARE(
            answersTo(service, {wire::Count{1, "a"}, question(2), wire::Load{3, "m", std::nullopt}, question(4),
                                wire::Load{5, "m.bad", std::nullopt}, question(6), wire::Load{7, "m", std::nullopt}}),
            (std::vector<std::string>{"1 notLoaded", "2 notLoaded", "3 loaded 4096", "4 finished", "5 badFile",
                                      "6 notLoaded", "7 loaded 4096"}));
    }

    void readsImagesWhereItCan()
    {
        RunningService service;
        wire::Respond withImage = question(2);
        withImage.images = {{1, 1, "abc"}};
        QCOMPARE(
            answersTo(service, {wire::Load{1, "m", 700, "p"}, withImage, wire::Load{3, "m", 700, "p.bad"}, question(4),
                                wire::Load{5, "m.bad", 700, "p"}}),
            (std::vector<std::string>{"1 loaded 700 sees", "2 finished", "3 loaded 700", "4 finished", "5 badFile"}));
    }

    void goesOnAfterFailures()
    {
        RunningService service;
        wire::Respond broken = question(2);
        broken.schema = "{\"properties\":{\"a\":{}}}";
        service.engine.say({"Hello."});
        QCOMPARE(answersTo(service, {wire::Load{1, "m.throws", std::nullopt}, broken, question(3)}),
                 (std::vector<std::string>{"1 internal", "2 internal", "3 text Hello.", "3 finished"}));
    }

    void tellsWhatCannotBeSent()
    {
        RunningService service;
        service.onAnswer = [](const wire::Answer &answer) {
            if (std::holds_alternative<wire::Counted>(answer) && nameOf(answer).starts_with("1 "))
                throw std::runtime_error("it cannot be encoded");
        };
        QCOMPARE(answersTo(service, {wire::Count{1, "a"}, wire::Count{2, "a"}}),
                 (std::vector<std::string>{"1 counted 1", "1 internal", "2 counted 1"})); // the first was only tried
    }

    void tellsWhatACrashOfALoadMeans()
    {
        RunningService service;
        answersTo(service, {wire::Load{1, "m", std::nullopt}, wire::Load{2, "m.bad", std::nullopt}, question(3),
                            wire::Load{4, "m", std::nullopt, "p"}});
        QCOMPARE(service.guarded, (std::vector<std::string>{"1 badFile", "over", "2 badFile", "over", "4 badFile",
                                                            "over", "4 badProjector", "over"}));
    }

    void cancelsAQueuedRequest()
    {
        RunningService service;
        service.engine.say({"Hello."});
        QCOMPARE(answersTo(service, {question(1), question(2), wire::Cancel{1}, wire::Cancel{77}}),
                 (std::vector<std::string>{"1 cancelled", "2 text Hello.", "2 finished"}));
    }

    void cancelsWhileEvaluating()
    {
        RunningService service;
        service.engine.endless = {"on and "};
        int evaluations = 0;
        service.engine.beforeEvaluation = [&] {
            if (++evaluations == 5)
                service.inbox.post(wire::Cancel{1});
        };
        const auto answers = answersTo(service, {question(1)});
        QCOMPARE(answers.back(), std::string("1 cancelled"));
        QCOMPARE(evaluations, 5);
    }

    void cancelsWhileAToolRuns()
    {
        RunningService service;
        service.engine.write({"{\"tool\":", "\"clock\",\"arguments\":{}}"});
        std::binary_semaphore called(0);
        service.onAnswer = [&](const wire::Answer &answer) {
            if (std::holds_alternative<wire::ToolCall>(answer))
                called.release();
        };
        std::thread program([&] {
            called.acquire();
            service.inbox.post(wire::Cancel{1});
        });
        QCOMPARE(answersTo(service, {question(1, true)}), (std::vector<std::string>{"1 call 1-1", "1 cancelled"}));
        program.join();
    }

    void givesOutputsToTheCallThatAsked()
    {
        RunningService service;
        service.engine.write({"{\"tool\":", "\"clock\",\"arguments\":{}}"});
        service.engine.write({"{\"tool\":", "\"clock\",\"arguments\":{}}"});
        service.engine.say({"Done."});
        service.onAnswer = [&](const wire::Answer &answer) {
            if (const auto *const call = std::get_if<wire::ToolCall>(&answer)) {
                service.inbox.post(wire::ToolOutput{8, call->call, "of another reply"});
                service.inbox.post(wire::ToolOutput{1, "1-9", "of another call"});
                service.inbox.post(wire::ToolOutput{1, call->call, "output " + call->call});
            }
        };
        QCOMPARE(answersTo(service, {question(1, true)}),
                 (std::vector<std::string>{"1 call 1-1", "1 call 1-2", "1 text Done.", "1 finished"}));
        const std::string text = service.engine.heldText();
        QVERIFY(text.find("output 1-1") < text.find("output 1-2"));
        QVERIFY(text.find("of another") == std::string::npos);
    }

    void readsFramesUntilTheyEnd_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("malformed");
        const std::string good = wire::frame(wire::encode(wire::Request(wire::Count{1, "a"})));
        const auto row = [](const char *name, const std::string &bytes, bool malformed) {
            QTest::newRow(name) << QByteArray::fromStdString(bytes) << malformed;
        };
        row("end", good, false);
        row("end inside a frame", good + good.substr(0, 9), true);
        row("not a message", good + wire::frame("{}"), true);
        row("an answer", good + wire::frame(wire::encode(wire::Answer(wire::Counted{1, 1}))), true);
        row("not a frame", good + std::string(8, '\xFF'), true);
    }

    void readsFramesUntilTheyEnd()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, malformed);
        std::array<int, 2> ends{};
        QCOMPARE(pipe(ends.data()), 0);
        QVERIFY(writeAll(ends[1], bytes.toStdString()));
        close(ends[1]);
        Inbox inbox;
        const ChannelEnd end = readRequests(ends[0], inbox);
        close(ends[0]);
        QCOMPARE(end == ChannelEnd::malformed, malformed);
        const auto job = inbox.next();
        QVERIFY(job && job->request == wire::Request(wire::Count{1, "a"}));
    }

    void aCrashIsAnswered_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<bool>("answered");
        QTest::newRow("bad address") << SIGSEGV << true;
        QTest::newRow("the engine gives up") << SIGABRT << true;
        QTest::newRow("unknown instruction") << SIGILL << false;
    }

    void aCrashIsAnswered()
    {
        QFETCH(int, signal);
        QFETCH(bool, answered);
        std::array<int, 2> ends{};
        QCOMPARE(pipe(ends.data()), 0);
        const pid_t child = fork();
        if (child == 0) {
            std::signal(signal, SIG_DFL); // instead of the handler that tests have
            armCrashGuard(ends[1], "too early");
            armCrashGuard(ends[1], {});
            armCrashGuard(ends[1], "answer");
            std::raise(signal);
            _exit(0);
        }
        close(ends[1]);
        std::array<char, 64> buffer{};
        const ssize_t count = read(ends[0], buffer.data(), buffer.size());
        close(ends[0]);
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QCOMPARE(std::string(buffer.data(), std::size_t(std::max<ssize_t>(count, 0))),
                 std::string(answered ? "answer" : ""));
        if (answered)
            QVERIFY(WIFEXITED(status) && WEXITSTATUS(status) == 3);
        else
            QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == signal);
    }
};

QTEST_GUILESS_MAIN(ServiceTest)
#include "servicetest.moc"
