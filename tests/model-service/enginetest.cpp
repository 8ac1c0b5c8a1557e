// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "enginequestions.h"
#include "wire/json.h"

#include <QTemporaryDir>
#include <QTest>

using namespace lumora;
using namespace lumora::wire;
using namespace Qt::StringLiterals;

namespace {

const std::string answerSchema =
    R"({"type":"object","properties":{"title":{"type":"string"},"summary":{"type":"string"},)"
    R"("keyPoints":{"type":"array","items":{"type":"string"}},"nextSteps":{"type":"array","items":{"type":"string"}}},)"
    R"("required":["title","summary","keyPoints","nextSteps"]})";

const std::vector<Tool> tools = {
    {"currentDate", "Tells the date.", R"({"type":"object","properties":{"question":{"type":"string"}}})"},
    {"searchDocuments", "Finds words.", R"({"type":"object","properties":{"query":{"type":"string"}}})"},
};

/// A pattern of its own for each number.
Image picture(int number)
{
    Image image{32, 24, {}};
    for (int pixel = 0; pixel < 32 * 24; ++pixel)
        for (const int weight : {1, 3, 7})
            image.pixels += static_cast<char>(pixel * weight * (number + 1) / 8);
    return image;
}

Respond questionAbout(const std::vector<int> &pictures)
{
    Respond request = question("What is it?");
    for (const int number : pictures)
        request.images.push_back(picture(number));
    return request;
}

} // namespace

class EngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsAndCounts()
    {
        ServiceProcess service(program);
        QCOMPARE(failure(service.ask(Count{1, "Hello"})), ErrorCode::notLoaded);
        QCOMPARE(as<Loaded>(service.load(tiny())).contextSize, 4096);
        QCOMPARE(as<Counted>(service.ask(Count{1, ""})).tokens, 0);
        const auto words = as<Counted>(service.ask(Count{1, "the river the river"})).tokens;
        QVERIFY(words > 3 && words < 12);
        // Marks of the template are counted as what they are in a text: characters.
        QVERIFY(as<Counted>(service.ask(Count{1, "<|im_end|>"})).tokens > 5);
        QCOMPARE(as<Loaded>(service.load(tiny(), 700)).contextSize, 700);
    }

    void streamsWholeCharacters()
    {
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny()));
        std::string all;
        for (int i = 0; i < 30; ++i) {
            const auto finished = as<Finished>(service.ask(question("Question " + std::to_string(i), {})));
            QVERIFY(finished.inputTokens > 20);
            QVERIFY(finished.outputTokens > 0);
            QVERIFY(!finished.content);
            QVERIFY(!service.text.empty());
            all += service.text;
        }
        // A piece with half a character would not have been a message. The model has words whose last one takes two
        // tokens.
        QVERIFY(all.find("caf\u00E9") != std::string::npos);
        QVERIFY(all.find("\uFFFD") == std::string::npos);
        QVERIFY(all.find("<|im_") == std::string::npos);
    }

    void structuredAnswersAlwaysParse()
    {
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny()));
        for (int i = 0; i < 10; ++i) {
            Respond request = question("Question " + std::to_string(i), {});
            request.schema = answerSchema;
            const auto finished = as<Finished>(service.ask(request));
            QVERIFY(service.text.empty());
            const auto object = parseObject(finished.content.value_or(""));
            QVERIFY(object);
            std::vector<std::string_view> names;
            for (const auto &property : object->GetObject()) {
                names.push_back(view(property.name));
                QVERIFY(names.size() <= 2 ? property.value.IsString() : property.value.IsArray());
            }
            QVERIFY(names == (std::vector<std::string_view>{"title", "summary", "keyPoints", "nextSteps"}));
        }
    }

    void callsAToolAndAnswers()
    {
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny("tiny-calls-once")));
        for (const bool structured : {false, true}) {
            Respond request = question("What day is it?");
            request.tools = tools;
            if (structured)
                request.schema = answerSchema;
            const auto finished = as<Finished>(service.ask(request));
            QCOMPARE(service.calls.size(), 1);
            const auto arguments = parseObject(service.calls[0].arguments);
            QVERIFY(arguments && arguments->MemberCount() == 1);
            QCOMPARE(view(arguments->MemberBegin()->name),
                     std::string_view(service.calls[0].name == "currentDate" ? "question" : "query"));
            QCOMPARE(finished.content.has_value(), structured);
            QCOMPARE(service.text.empty(), structured);
            QVERIFY(service.text.find('{') == std::string::npos);
            const auto shorter = finished.inputTokens;
            service.output += " The day before was Sunday.";
            QVERIFY(as<Finished>(service.ask(request)).inputTokens > shorter + 10); // the output was read
        }
    }

    void stopsAModelThatCallsForever()
    {
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny("tiny-calls-always")));
        Respond request = question("What day is it?", {});
        request.tools = tools;
        QCOMPARE(failure(service.ask(request)), ErrorCode::tooManyCalls);
        QCOMPARE(service.calls.size(), 8);
    }

    void evaluatesOnlyWhatIsNew()
    {
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny()));
        const auto first = as<Finished>(service.ask(question("What is the river?")));
        const std::string text = service.text;
        QCOMPARE(first.evaluatedTokens, first.inputTokens + first.outputTokens);
        const auto again = as<Finished>(service.ask(question("What is the river?")));
        QCOMPARE(service.text, text); // computed on what was kept
        QCOMPARE(again.evaluatedTokens, 1 + again.outputTokens);
        as<Finished>(service.ask(question("Where?")));
        as<Finished>(service.ask(question("What is the river?")));
        QCOMPARE(service.text, text);
    }

    void preparesAndGoesBack()
    {
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny()));
        const Respond plain = question("What is the river? " + std::string(300, '.'));
        Respond other = plain;
        other.tools = tools;
        const auto prepared = as<Finished>(service.ask(Prepare{7, plain.instructions}));
        QVERIFY(prepared.evaluatedTokens == prepared.inputTokens && prepared.outputTokens == 0);
        const auto first = as<Finished>(service.ask(plain));
        const std::string text = service.text;
        QVERIFY(first.evaluatedTokens < first.inputTokens + first.outputTokens);
        const auto second = as<Finished>(service.ask(other));
        const std::string otherText = service.text;
        QVERIFY(second.evaluatedTokens > second.outputTokens + 100);
        const auto again = as<Finished>(service.ask(plain));
        QCOMPARE(service.text, text);
        QCOMPARE(again.evaluatedTokens, 1 + again.outputTokens);
        as<Finished>(service.ask(other));
        QCOMPARE(service.text, otherText);
    }

    void stopsInMidReply()
    {
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny("tiny-endless")));
        Respond limited = question("Tell me more.");
        limited.options.maximumTokens = 100;
        const auto whole = as<Finished>(service.ask(limited));
        const std::string text = service.text;

        int pieces = 0;
        service.onText = [&] {
            if (++pieces == 3)
                service.send(Cancel{2});
        };
        QCOMPARE(failure(service.ask(question("Tell me more."))), ErrorCode::cancelled);
        // Without a stop there would be hundreds; how many are on their way depends on how busy the machine is.
        QVERIFY2(pieces >= 3 && pieces < 40, qPrintable(QString::number(pieces)));
        service.onText = nullptr;
        const auto after = as<Finished>(service.ask(limited));
        QCOMPARE(service.text, text);
        QCOMPARE(after.evaluatedTokens, whole.evaluatedTokens - whole.inputTokens + 1);
    }

    void stopsInMidPrompt_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("words");
        QTest::addColumn<int>("pictures");
        QTest::newRow("text") << u"tiny"_s << 450 << 0;
#ifdef READS_IMAGES
        QTest::newRow("images") << u"tiny"_s << 1 << 9;
        QTest::newRow("images in rows and columns") << u"tiny-grid"_s << 1 << 30;
#endif
    }

    void stopsInMidPrompt()
    {
        QFETCH(QString, name);
        QFETCH(int, words);
        QFETCH(int, pictures);
        std::string text;
        for (int i = 0; i < words; ++i)
            text += "the river " + std::to_string(i);
        ServiceProcess service(program);
        as<Loaded>(service.load(tiny(name), {}, pictures > 0 ? tiny("projector/mmproj-" + name) : QString()));

        // The stop is sent later each time, until one comes while the prompt is being evaluated.
        bool wasInside = false;
        for (int delay = 10; delay < 2000 && !wasInside; delay += delay / 2) {
            Respond request = question(std::to_string(delay) + text);
            for (int number = 0; number < pictures; ++number)
                request.images.push_back(picture(100 * delay + number)); // such as were not computed before
            service.send(request);
            QTest::qWait(delay);
            service.send(Cancel{2});
            auto answer = service.receive();
            while (answer && std::holds_alternative<Text>(*answer))
                answer = service.receive();
            if (!answer || !std::holds_alternative<Failed>(*answer))
                continue;
            QCOMPARE(failure(*answer), ErrorCode::cancelled);
            const auto onWhatWasKept = as<Finished>(service.ask(request));
            const std::string reply = service.text;
            as<Finished>(service.ask(question("Something else.")));
            const auto anew = as<Finished>(service.ask(request));
            QCOMPARE(reply, service.text);
            wasInside = onWhatWasKept.evaluatedTokens < anew.evaluatedTokens && onWhatWasKept.evaluatedTokens > 500;
        }
        QVERIFY(wasInside);
    }

    void readsImages_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("tokens"); // that the pictures take, without what marks their parts
        QTest::newRow("the whole and its quarters") << u"tiny"_s << 5 * 4;
        QTest::newRow("rows and columns") << u"tiny-grid"_s << 8;
    }

    void readsImages()
    {
#ifndef READS_IMAGES
        QSKIP("the engine was built without libmtmd");
#endif
        QFETCH(QString, name);
        QFETCH(int, tokens);
        ServiceProcess service(program);
        QVERIFY(!as<Loaded>(service.load(tiny(name))).readsImages);
        QCOMPARE(failure(service.ask(questionAbout({1}))), ErrorCode::internal);
        QVERIFY(as<Loaded>(service.load(tiny(name), {}, tiny("projector/mmproj-" + name))).readsImages);
        const auto none = as<Finished>(service.ask(questionAbout({})));
        const auto first = as<Finished>(service.ask(questionAbout({1})));
        const std::string text = service.text;
        QVERIFY(first.inputTokens >= none.inputTokens + tokens);
        QVERIFY(first.evaluatedTokens > first.outputTokens + tokens);
        const auto again = as<Finished>(service.ask(questionAbout({1})));
        QCOMPARE(again.evaluatedTokens, 1 + again.outputTokens);
        QCOMPARE(service.text, text);

        const auto other = as<Finished>(service.ask(questionAbout({2})));
        QVERIFY(service.text != text);
        QVERIFY(other.evaluatedTokens > other.outputTokens + tokens);
        as<Finished>(service.ask(questionAbout({1, 2})));
        const auto shorter = as<Finished>(service.ask(questionAbout({1}))); // which goes back to behind the first image
        QVERIFY(shorter.evaluatedTokens < shorter.outputTokens + tokens);
        QCOMPARE(service.text, text);
    }

    void endsWithoutABackend()
    {
        const QTemporaryDir empty;
        ServiceProcess service(program, {"--backends", empty.path()});
        service.send(Load{1, tiny().toStdString(), {}});
        QVERIFY(!service.receive());
        QCOMPARE(service.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(service.process.exitCode(), 127);
    }

    void endsWithItsInput_data()
    {
        QTest::addColumn<QString>("when");
        for (const QString &when : {u"idle"_s, u"loading"_s, u"replying"_s, u"malformed"_s})
            QTest::newRow(qPrintable(when)) << when;
    }

    void endsWithItsInput()
    {
        QFETCH(QString, when);
        ServiceProcess service(program);
        if (when == "loading")
            service.send(Load{1, tiny().toStdString(), {}});
        if (when == "replying") {
            as<Loaded>(service.load(tiny("tiny-endless")));
            service.send(question("Hello"));
            QVERIFY(std::holds_alternative<Text>(service.receive().value()));
        }
        if (when == "malformed")
            service.sendBytes("\xFF\xFF\xFF\xFF and so on");
        else
            service.process.closeWriteChannel();
        QVERIFY(service.waitForEnd());
        QCOMPARE(service.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(service.process.exitCode(), when == "malformed" ? 1 : 0);
    }
};

QTEST_GUILESS_MAIN(EngineTest)
#include "enginetest.moc"
