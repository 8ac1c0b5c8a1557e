// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/reply.h"

#include "core/failure.h"
#include "fakeengine.h"

#include <QTest>

#include <algorithm>

using namespace lumora;
using namespace lumora::service;

namespace {

const std::string schema = R"({"type":"object","properties":{"title":{"type":"string"}}})";

const std::vector<std::string> clockCall = {"{\"tool\":", "\"clock\", \"arguments\": {\"zone\": \"\"}}"};

wire::Respond greeting(const std::string &prompt = "Hi")
{
    wire::Respond request;
    request.id = 5;
    request.instructions = "Be kind.";
    request.prompt = prompt;
    return request;
}

wire::Respond withTools(wire::Respond request)
{
    request.tools = {{"clock", "Tells the time.", R"({"type":"object","properties":{"zone":{"type":"string"}}})"}};
    return request;
}

wire::Image image(std::int64_t width, std::int64_t height, char byte)
{
    return {width, height, std::string(static_cast<std::size_t>(3 * width * height), byte)};
}

wire::Respond withImages(wire::Respond request, const std::vector<wire::Image> &images)
{
    request.images = images;
    return request;
}

std::vector<std::string> characters(const std::string &text)
{
    std::vector<std::string> pieces;
    for (const char character : text)
        pieces.emplace_back(1, character);
    return pieces;
}

/// Runs replies and keeps what they send.
struct Runner
{
    FakeEngine engine;
    TokenContext context{engine};
    std::string text;
    std::vector<wire::ToolCall> calls;
    std::vector<std::string> textsBeforeCalls;
    std::optional<std::string> output = "noon"; // nothing: the reply is cancelled while the tool runs

    wire::Finished run(const wire::Respond &request)
    {
        text.clear();
        calls.clear();
        ReplyPort port;
        port.send = [this](const wire::Answer &answer) {
            if (const auto *const piece = std::get_if<wire::Text>(&answer))
                text += piece->piece;
            if (const auto *const call = std::get_if<wire::ToolCall>(&answer)) {
                calls.push_back(*call);
                textsBeforeCalls.push_back(text);
            }
        };
        port.toolOutput = [this](const std::string &) { return output; };
        return Reply(engine, context, request, std::move(port)).run();
    }

    wire::ErrorCode failureOf(const wire::Respond &request)
    {
        try {
            run(request);
        } catch (const Failure &failure) {
            return failure.code();
        }
        throw std::logic_error("the reply did not fail");
    }
};

} // namespace

class ReplyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void streamsTextAndCounts()
    {
        Runner runner;
        runner.engine.say({"Hel", "lo ", "\xC3", "\xA9", "!"});
        const wire::Finished finished = runner.run(greeting());
        QCOMPARE(runner.text, std::string("Hello é!"));
        QCOMPARE(finished.outputTokens, 5);
        QCOMPARE(finished.inputTokens, qint64(runner.engine.held.size()) - 5);
        QCOMPARE(finished.evaluatedTokens, finished.inputTokens + 5);
        QVERIFY(!finished.content);
        QCOMPARE(runner.engine.grammars, std::vector<std::string>{""});

        runner.engine.say({"{\"tool\": \"clock\"}"}); // which nobody offered
        runner.run(greeting());
        QCOMPARE(runner.text, std::string("{\"tool\": \"clock\"}"));
    }

    void laysOutWhatTheModelReads()
    {
        Runner runner;
        runner.engine.opening = FakeEngine::firstSpecial + 3;
        runner.run(greeting());
        QCOMPARE(runner.engine.heldText(),
                 std::string("<|end|><|system|>Be kind.<|end|><|user|>Hi<|end|><|assistant|>"));

        // A template that writes the opening token itself does not get a second one.
        runner.engine.opening = FakeEngine::firstSpecial;
        runner.run(greeting());
        QVERIFY(runner.engine.heldText().starts_with("<|system|>Be kind."));

        runner.run(withTools(greeting()));
        const std::string text = runner.engine.heldText();
        QVERIFY(text.find("clock") != std::string::npos && text.find("Tells the time.") != std::string::npos);
        QVERIFY(text.find("\"zone\"") != std::string::npos);
    }

    void wordsAreReadToTheirEnd()
    {
        Runner runner;
        runner.run(greeting(std::string("a\0b", 3) + "<|end|><|e\xEF\xB7\x90nd|>\xEF\xB7\x91 c"));
        QVERIFY(runner.engine.heldText().ends_with("<|user|>a\uFFFDb<|end|><|end|> c<|end|><|assistant|>"));
        QCOMPARE(std::ranges::count(runner.engine.held, FakeEngine::firstSpecial + 3), 2); // none of them in the words
    }

    void plainLayoutEndsAtTheUsersTurn()
    {
        Runner runner;
        runner.engine.knowsTemplate = false;
        runner.engine.write({" Yes.\n", "Us", "er: more"});
        runner.run(greeting());
        QCOMPARE(runner.text, std::string(" Yes.\n"));
        QVERIFY(runner.engine.heldText().starts_with("Be kind.\n\nUser: Hi\n\nAssistant: Yes."));

        runner.engine.knowsTemplate = true;
        runner.engine.say({"User: x"});
        runner.run(greeting());
        QCOMPARE(runner.text, std::string("User: x"));
    }

    void aTurnThatEndsInAThoughtFails()
    {
        Runner runner;
        runner.engine.say({"<think>", "Hm."});
        QCOMPARE(int(runner.failureOf(greeting())), int(wire::ErrorCode::cutShort));
        runner.engine.turnOpening = "<think>\n";
        wire::Respond request = greeting();
        request.options.maximumTokens = 2;
        runner.engine.say({"Hm.", "</think>"});
        QVERIFY(runner.run(request).outputTokens == 2 && runner.text.empty()); // it has said what it wanted
        runner.engine.script.clear();
        runner.engine.say({"Hm.", "And.", "</think>"});
        QCOMPARE(int(runner.failureOf(request)), int(wire::ErrorCode::cutShort));
    }

    void callsAToolAndGoesOn()
    {
        Runner runner;
        runner.engine.write({"Let me see.\n", "{\"tool\"", ":", " \"clock\"", ", \"arguments\": {\"zone\": \"U}\"}}"});
        runner.engine.say({"It is noon."});
        runner.output = "noon <|end|>";
        const wire::Finished finished = runner.run(withTools(greeting()));
        QCOMPARE(runner.calls.size(), 1);
        QCOMPARE(runner.calls[0].name, std::string("clock"));
        QCOMPARE(runner.calls[0].arguments, std::string("{\"zone\":\"U}\"}"));
        QCOMPARE(runner.textsBeforeCalls, std::vector<std::string>{"Let me see.\n"});
        QCOMPARE(runner.text, std::string("Let me see.\nIt is noon."));
        QCOMPARE(finished.outputTokens, 6);
        QVERIFY(runner.engine.heldText().ends_with(
            "\"U}\"}}<|end|><|user|>Output of clock:\nnoon <|end|><|end|><|assistant|>It is noon."));
        QCOMPARE(std::ranges::count(runner.engine.held, FakeEngine::firstSpecial + 3), 4); // not the one in the output
        QCOMPARE(finished.inputTokens + finished.outputTokens, qint64(runner.engine.held.size()));
    }

    void takesBackATokenThatOvershootsTheCall()
    {
        Runner runner;
        runner.engine.write({"{\"to", "ol\": \"wat", " \"clock\", \"arguments\": {\"zone\": \"\"}}"});
        runner.run(withTools(greeting()));
        QCOMPARE(runner.calls.size(), 1);
        QVERIFY(runner.engine.heldText().find("<|assistant|>{\"tool\": \"clock\"") != std::string::npos);
    }

    void structuredAnswers()
    {
        Runner runner;
        wire::Respond request = greeting();
        request.schema = schema;
        runner.engine.say(characters("{ \"title\": \"a}\xFF\" }"));
        const wire::Finished finished = runner.run(request);
        QCOMPARE(finished.content.value_or(""), std::string("{ \"title\": \"a}\uFFFD\" }"));
        QVERIFY(runner.text.empty());
        QVERIFY(runner.engine.heldText().starts_with("<|system|>Be kind.<|end|>")); // as for free text
        QVERIFY(runner.engine.grammars.front().find("title") != std::string::npos);

        runner.engine.script.clear();
        runner.engine.write(clockCall);
        runner.engine.write({"{\"title\"", ":\"tool\"}"});
        wire::Respond calling = withTools(greeting());
        calling.schema = schema;
        const wire::Finished called = runner.run(calling);
        QCOMPARE(runner.calls.size(), 1);
        QCOMPARE(called.content.value_or(""), std::string("{\"title\":\"tool\"}"));
        QCOMPARE(called.outputTokens, 4);

        runner.engine.say(characters("{ \"title\": \"a"));
        QCOMPARE(int(runner.failureOf(request)), int(wire::ErrorCode::cutShort));
    }

    void stopsAModelThatCallsForever()
    {
        for (const auto &asked : {std::optional<std::string>(), std::optional(schema)}) {
            Runner runner;
            runner.engine.endless = clockCall;
            wire::Respond request = withTools(greeting());
            request.schema = asked;
            QCOMPARE(int(runner.failureOf(request)), int(wire::ErrorCode::tooManyCalls));
            QCOMPARE(runner.calls.size(), 8);
            std::ranges::sort(runner.calls, {}, &wire::ToolCall::call);
            QVERIFY(std::ranges::adjacent_find(runner.calls, {}, &wire::ToolCall::call) == runner.calls.end());
        }
    }

    void cutsOutputsToTheContext_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::newRow("short") << QByteArray("noon");
        QTest::newRow("long") << QByteArray(100000, 'x');
        QTest::newRow("long, of three-byte characters") << QByteArray("\xE2\x82\xAC").repeated(50000);
        QTest::newRow("long, of special tokens' texts") << QByteArray("<|end|>").repeated(5000);
    }

    void cutsOutputsToTheContext()
    {
        QFETCH(QByteArray, output);
        Runner runner;
        runner.engine.size = 2000;
        runner.output = output.toStdString();
        runner.engine.write(clockCall);
        runner.run(withTools(greeting()));
        const std::size_t held = runner.engine.held.size();
        QVERIFY2(held <= 2000 - 250, "no room is left for the answer");
        QVERIFY2(held >= 1700 || output.size() < 1000, "more was cut off than the context asks for");
        const std::string text = runner.engine.heldText();
        const auto from = text.find("Output of clock:\n") + 17;
        const QByteArray part = QByteArray::fromStdString(text.substr(from, text.rfind("<|end|>") - from));
        QVERIFY(output.startsWith(part));
        QVERIFY(QString::fromUtf8(part).toUtf8() == part);
    }

    void limits()
    {
        Runner runner;
        wire::Respond request = greeting();
        request.options.maximumTokens = 3;
        runner.engine.endless = {"a", "b"};
        QCOMPARE(runner.run(request).outputTokens, 3);
        QCOMPARE(runner.text, std::string("aba"));
        request.options.maximumTokens = 0;
        QCOMPARE(runner.run(request).outputTokens, 0);

        request.options.maximumTokens.reset();
        QCOMPARE(int(runner.failureOf(request)), int(wire::ErrorCode::contextFull));
        QVERIFY(runner.text.size() > 3900); // what came until then stands
        request.schema = schema;
        QCOMPARE(int(runner.failureOf(request)), int(wire::ErrorCode::cutShort));
        QCOMPARE(int(runner.failureOf(greeting(std::string(4000, 'x')))), int(wire::ErrorCode::contextFull));
        QVERIFY(runner.text.size() < 90);
        QCOMPARE(int(runner.failureOf(greeting(std::string(5000, 'x')))), int(wire::ErrorCode::contextFull));
        QVERIFY(runner.text.empty());
    }

    void evaluatesOnlyWhatIsNew()
    {
        Runner runner;
        runner.engine.say({"Hello", "."});
        const wire::Finished first = runner.run(greeting("Question"));
        QCOMPARE(first.evaluatedTokens, first.inputTokens + first.outputTokens);
        const wire::Finished same = runner.run(greeting("Question"));
        QCOMPARE(same.evaluatedTokens, 1); // the last one, for what follows it
        const wire::Finished longer = runner.run(greeting("Question two"));
        QCOMPARE(longer.evaluatedTokens, qint64(std::string(" two<").size()) + 1);

        runner.engine.goesBack = false;
        const wire::Finished anew = runner.run(greeting("Question"));
        QCOMPARE(anew.evaluatedTokens, anew.inputTokens);
    }

    // Other tools stand near the beginning, so that hardly anything is in common.
    void goesBackToWhatOtherToolsTurnedAwayFrom()
    {
        Runner runner;
        const std::string chat(200, 'a');
        const auto evaluated = [&](const wire::Respond &request) { return runner.run(request).evaluatedTokens; };
        evaluated(greeting(chat));
        const qint64 whole = evaluated(withTools(greeting(chat)));
        QVERIFY(whole > 200);
        const qint64 added = 5 + 2; // the word, the end, the mark of the turn
        QCOMPARE(evaluated(greeting(chat + " more")), added);
        QCOMPARE(evaluated(withTools(greeting(chat + " more"))), added);
        QVERIFY(runner.engine.heldText().find(chat + " more<|end|>") != std::string::npos);

        runner.context.forget();
        const wire::Finished anew = runner.run(withTools(greeting(chat)));
        QCOMPARE(anew.evaluatedTokens, anew.inputTokens);

        // Two of these are more than is kept.
        runner.context.forget();
        runner.engine.bytesPerToken = KeptStates::mostBytes / 400;
        evaluated(greeting(chat));
        evaluated(withTools(greeting(chat)));
        QVERIFY(evaluated(greeting(chat)) == 1 && evaluated(withTools(greeting(chat))) >= whole);
    }

    void keepsWhatWasEvaluatedBeforeAStop()
    {
        Runner runner;
        runner.engine.stopAfter = 10;
        QCOMPARE(int(runner.failureOf(greeting("Question"))), int(wire::ErrorCode::cancelled));
        runner.engine.stopAfter.reset();
        const wire::Finished finished = runner.run(greeting("Question"));
        QCOMPARE(finished.evaluatedTokens, finished.inputTokens - 10);
    }

    void imagesFollowThePrompt()
    {
        Runner runner;
        runner.engine.sees = true;
        runner.engine.opening = FakeEngine::firstSpecial + 3;
        runner.engine.say({"A cat."});
        const std::string words = "a\xEF\xB7\x92<|end|>"; // with what stands for an image elsewhere
        const wire::Finished finished = runner.run(withImages(greeting(words), {image(3, 2, 'c'), image(1, 1, 'd')}));
        QCOMPARE(runner.engine.heldText(),
                 std::string("<|end|><|system|>Be kind.<|end|><|user|>a<|end|>\n\n<ccc|cc>\n\n<d|d>"
                             "<|end|><|assistant|>A cat."));
        QCOMPARE(finished.inputTokens + finished.outputTokens, qint64(runner.engine.held.size()));
        QCOMPARE(finished.evaluatedTokens, qint64(runner.engine.held.size()));
    }

    void imagesThatCannotBeRead()
    {
        Runner runner;
        QCOMPARE(int(runner.failureOf(withImages(greeting(), {image(1, 1, 'a')}))), int(wire::ErrorCode::internal));
        runner.engine.sees = true;
        QCOMPARE(int(runner.failureOf(withImages(greeting(), {image(5000, 1, 'a')}))),
                 int(wire::ErrorCode::contextFull));
        QVERIFY(runner.engine.held.empty());
    }

    void sameImageIsNotEvaluatedTwice_data()
    {
        using Images = std::vector<wire::Image>;
        QTest::addColumn<Images>("images"); // after a reply to "Look" with two: 4 by 2, then 3 by 1
        QTest::addColumn<QByteArray>("prompt");
        QTest::addColumn<QByteArray>("evaluated");
        const wire::Image first = image(4, 2, 'a');
        const wire::Image second = image(3, 1, 'b');
        wire::Image almost = first;
        almost.pixels.back() = 'x';
        const QByteArray end = "<|assistant|>";
        const QByteArray rest = "<|end|>" + end;
        QTest::newRow("same") << Images{first, second} << QByteArray("Look") << end;
        QTest::newRow("another second one") << Images{first, image(3, 1, 'c')} << QByteArray("Look") << "ccc|c>" + rest;
        QTest::newRow("another first one")
            << Images{image(4, 2, 'c'), second} << QByteArray("Look") << "cccc|cc>\n\n<bbb|b>" + rest;
        QTest::newRow("one pixel is another") << Images{almost} << QByteArray("Look") << "aaaa|aa>" + rest;
        QTest::newRow("other sides") << Images{image(2, 4, 'a')} << QByteArray("Look") << "aa|aaaa>" + rest;
        QTest::newRow("only the second") << Images{second} << QByteArray("Look") << "bbb|b>" + rest;
        QTest::newRow("one more") << Images{first, second, first} << QByteArray("Look") << "\n\n<aaaa|aa>" + rest;
        QTest::newRow("none") << Images{} << QByteArray("Look") << rest;
        QTest::newRow("other words before") << Images{first} << QByteArray("Loot") << "t\n\n<aaaa|aa>" + rest;
    }

    void sameImageIsNotEvaluatedTwice()
    {
        QFETCH(std::vector<wire::Image>, images);
        QFETCH(QByteArray, prompt);
        QFETCH(QByteArray, evaluated);
        Runner runner;
        runner.engine.sees = true;
        runner.run(withImages(greeting("Look"), {image(4, 2, 'a'), image(3, 1, 'b')}));
        const wire::Finished finished = runner.run(withImages(greeting(prompt.toStdString()), images));
        const std::string text = runner.engine.heldText();
        QVERIFY2(QByteArray::fromStdString(text).endsWith(evaluated), text.c_str());
        const auto special = runner.engine.tokenize(evaluated.toStdString(), SpecialTokens::recognised);
        QCOMPARE(finished.evaluatedTokens, qint64(special.size()));
    }

    void imageIsEvaluatedAsAWhole()
    {
        Runner runner;
        runner.engine.sees = true;
        const wire::Respond request = withImages(greeting(), {image(4, 2, 'a')});
        runner.engine.stopsAtImages = true;
        QCOMPARE(int(runner.failureOf(request)), int(wire::ErrorCode::cancelled));
        QVERIFY(runner.engine.heldText().ends_with("Hi\n\n<"));
        runner.engine.stopsAtImages = false;
        const std::string rest = "aaaa|aa>";
        QCOMPARE(runner.run(request).evaluatedTokens, qint64(rest.size()) + 2);

        runner.engine.goesBack = false;
        QCOMPARE(runner.run(request).evaluatedTokens, qint64(runner.engine.held.size()));
    }
};

QTEST_GUILESS_MAIN(ReplyTest)
#include "replytest.moc"
