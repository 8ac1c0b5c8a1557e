// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "serviceprocess.h"
#include "wire/json.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <sys/stat.h>

using namespace lumora;
using namespace lumora::wire;
using namespace Qt::StringLiterals;

namespace {

const QString program = QStringLiteral(MODEL_SERVICE);
const QString models = QStringLiteral(TINY_MODELS);

const std::string answerSchema =
    R"({"type":"object","properties":{"title":{"type":"string"},"summary":{"type":"string"},)"
    R"("keyPoints":{"type":"array","items":{"type":"string"}},"nextSteps":{"type":"array","items":{"type":"string"}}},)"
    R"("required":["title","summary","keyPoints","nextSteps"]})";

const std::vector<Tool> tools = {
    {"currentDate", "Tells the date.", R"({"type":"object","properties":{"question":{"type":"string"}}})"},
    {"searchDocuments", "Finds words.", R"({"type":"object","properties":{"query":{"type":"string"}}})"},
};

Respond question(const std::string &prompt, std::optional<Sampling> sampling = Sampling::greedy)
{
    Respond request;
    request.id = 2;
    request.instructions = "You are a helpful desktop assistant.";
    request.prompt = prompt;
    request.options.sampling = sampling;
    return request;
}

template <typename Message>
Message as(const Answer &answer)
{
    if (!std::holds_alternative<Message>(answer))
        throw std::runtime_error("another answer came: " + encode(answer));
    return std::get<Message>(answer);
}

ErrorCode failure(const Answer &answer)
{
    return as<Failed>(answer).code;
}

QString tiny(const QString &name = u"tiny"_s)
{
    return models + u'/' + name + u".gguf"_s;
}

const QString projector = tiny(u"projector/mmproj-tiny"_s);

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray tinyBytes()
{
    return bytesOf(tiny());
}

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

QString write(const QTemporaryDir &folder, const QByteArray &bytes, const QString &name = u"model.gguf"_s)
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("the test's file cannot be written");
    return file.fileName();
}

/// The tiny model in two files, of which the first holds no tensors. The first one's path.
QString writeSplit(const QTemporaryDir &folder)
{
    const auto number = [](auto value) {
        return QByteArray(reinterpret_cast<const char *>(&value), qsizetype(sizeof value));
    };
    const auto text = [&](const QByteArray &characters) { return number(quint64(characters.size())) + characters; };
    const QByteArray whole = tinyBytes();
    const qsizetype tensors = whole.indexOf("blk.0.") - 8; // where their entries begin
    const auto tensorCount = qFromLittleEndian<quint64>(whole.constData() + 8);
    const auto entryCount = qFromLittleEndian<quint64>(whole.constData() + 16);
    const auto partEntries = [&](quint16 part) {
        return text("split.no") + number(quint32(2)) + number(part) + text("split.count") + number(quint32(2)) +
               number(quint16(2)) + text("split.tensors.count") + number(quint32(5)) + number(qint32(tensorCount));
    };
    QByteArray second = whole.left(8) + number(tensorCount) + number(quint64(4)) + partEntries(1);
    second += text("padding") + number(quint32(8));
    second += text(QByteArray((tensors - second.size() - 8) % 32, ' ')); // so that the rest is as well aligned
    write(folder, second + whole.mid(tensors), u"model-00002-of-00002.gguf"_s);
    return write(folder,
                 whole.left(8) + number(quint64(0)) + number(entryCount + 3) + whole.mid(24, tensors - 24) +
                     partEntries(0) + QByteArray(32, '\0'),
                 u"model-00001-of-00002.gguf"_s);
}

} // namespace

class EngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsAndCounts();
    void loadsASplitModel();
    void streamsWholeCharacters();
    void repliesStopAtTheirLimit();
    void structuredAnswersAlwaysParse();
    void callsAToolAndAnswers();
    void stopsAModelThatCallsForever();
    void cutsALongOutput();
    void evaluatesOnlyWhatIsNew();
    void stopsInMidReply();
    void stopsInMidPrompt_data();
    void stopsInMidPrompt();
    void readsImages_data();
    void readsImages();
    void imagesThatDoNotFit();
    void readsTextWithoutAProjector_data();
    void readsTextWithoutAProjector();
    void tellsWhichProjectorCrashes();
    void promptsThatDoNotFit();
    void refusesFiles_data();
    void refusesFiles();
    void namesAnUnknownKind_data();
    void namesAnUnknownKind();
    void survivesDamagedFiles_data();
    void survivesDamagedFiles();
    void endsWithoutABackend();
    void endsWithItsInput_data();
    void endsWithItsInput();
};

void EngineTest::loadsAndCounts()
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

void EngineTest::loadsASplitModel()
{
    const QTemporaryDir folder;
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny()));
    as<Finished>(service.ask(question("Hello")));
    const std::string text = service.text;
    as<Loaded>(service.load(writeSplit(folder)));
    as<Finished>(service.ask(question("Hello")));
    QCOMPARE(service.text, text);
}

void EngineTest::streamsWholeCharacters()
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
    // A piece with half a character would not have been a message. The model has words whose last one takes two tokens.
    QVERIFY(all.find("caf\u00E9") != std::string::npos);
    QVERIFY(all.find("\uFFFD") == std::string::npos);
    QVERIFY(all.find("<|im_") == std::string::npos);
}

void EngineTest::repliesStopAtTheirLimit()
{
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny()));
    Respond request = question("Hello");
    request.options.maximumTokens = 2;
    QCOMPARE(as<Finished>(service.ask(request)).outputTokens, 2);
    request.schema = answerSchema;
    QCOMPARE(failure(service.ask(request)), ErrorCode::cutShort);
}

void EngineTest::structuredAnswersAlwaysParse()
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

void EngineTest::callsAToolAndAnswers()
{
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny(u"tiny-calls-once"_s)));
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

void EngineTest::stopsAModelThatCallsForever()
{
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny(u"tiny-calls-always"_s)));
    Respond request = question("What day is it?", {});
    request.tools = tools;
    QCOMPARE(failure(service.ask(request)), ErrorCode::tooManyCalls);
    QCOMPARE(service.calls.size(), 8);
}

void EngineTest::cutsALongOutput()
{
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny(u"tiny-calls-once"_s)));
    service.output.clear();
    for (int i = 0; i < 20000; ++i)
        service.output += "Straße, ";
    Respond request = question("What day is it?");
    request.tools = tools;
    request.options.maximumTokens = 200;
    const auto finished = as<Finished>(service.ask(request));
    QVERIFY(finished.inputTokens > 3000 && finished.inputTokens <= 4096 - 512);
    QVERIFY(!service.text.empty());
}

void EngineTest::evaluatesOnlyWhatIsNew()
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

void EngineTest::stopsInMidReply()
{
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny(u"tiny-endless"_s)));
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

void EngineTest::stopsInMidPrompt_data()
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

void EngineTest::stopsInMidPrompt()
{
    QFETCH(QString, name);
    QFETCH(int, words);
    QFETCH(int, pictures);
    std::string text;
    for (int i = 0; i < words; ++i)
        text += "the river " + std::to_string(i);
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny(name), {}, pictures > 0 ? tiny(u"projector/mmproj-"_s + name) : QString()));

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

void EngineTest::readsImages_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("tokens"); // that the pictures take, without what marks their parts
    QTest::newRow("the whole and its quarters") << u"tiny"_s << 5 * 4;
    QTest::newRow("rows and columns") << u"tiny-grid"_s << 8;
}

void EngineTest::readsImages()
{
#ifndef READS_IMAGES
    QSKIP("the engine was built without libmtmd");
#endif
    QFETCH(QString, name);
    QFETCH(int, tokens);
    ServiceProcess service(program);
    QVERIFY(!as<Loaded>(service.load(tiny(name))).readsImages);
    QCOMPARE(failure(service.ask(questionAbout({1}))), ErrorCode::internal);
    QVERIFY(as<Loaded>(service.load(tiny(name), {}, tiny(u"projector/mmproj-"_s + name))).readsImages);
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

void EngineTest::imagesThatDoNotFit()
{
#ifndef READS_IMAGES
    QSKIP("the engine was built without libmtmd");
#endif
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny(), 600, projector));
    QCOMPARE(failure(service.ask(questionAbout({1, 2, 3, 4}))), ErrorCode::contextFull);
    as<Finished>(service.ask(questionAbout({1})));
}

void EngineTest::readsTextWithoutAProjector_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole = bytesOf(projector);
    QVERIFY(whole.size() > 10000);
    QByteArray narrow = whole;
    const QByteArray last = "mm.model.fc.weight";
    narrow[narrow.indexOf(last) + last.size() + 4 + 8] = 64; // after the number of its sides and the first one
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a language model") << tinyBytes();
    QTest::newRow("cut in the head") << whole.left(1000);
    QTest::newRow("last bytes missing") << whole.left(whole.size() - 100);
    QTest::newRow("missing tensor") << QByteArray(whole).replace("v.blk.0.ffn_up", "v.blk.0.ffn_xx");
    QTest::newRow("unknown kind") << QByteArray(whole).replace("idefics3", "idefics9");
    QTest::newRow("no eyes") << QByteArray(whole).replace("has_vision", "has_vixxon");
    QTest::newRow("of another model") << narrow;
}

void EngineTest::readsTextWithoutAProjector()
{
    QFETCH(QByteArray, bytes);
    const QTemporaryDir folder;
    ServiceProcess service(program);
    const auto loaded = as<Loaded>(service.load(tiny(), {}, write(folder, bytes, u"mmproj.gguf"_s)));
    QVERIFY(!loaded.readsImages);
    QVERIFY2(loaded.description.find("mmproj.gguf") != std::string::npos, loaded.description.c_str());
    as<Finished>(service.ask(question("Hello")));
}

void EngineTest::tellsWhichProjectorCrashes()
{
#ifndef READS_IMAGES
    QSKIP("the engine was built without libmtmd");
#endif
    const QTemporaryDir folder;
    ServiceProcess service(program);
    QByteArray crashing = bytesOf(projector);
    const QByteArray heads = "clip.vision.attention.head_count";
    crashing[crashing.indexOf(heads) + heads.size() + 4] = 5; // which do not divide what they share
    const auto failed = as<Failed>(service.load(tiny(), {}, write(folder, crashing, u"mmproj.gguf"_s)));
    QCOMPARE(failed.code, ErrorCode::badProjector);
    QVERIFY(failed.message.find("mmproj.gguf") != std::string::npos);
    QVERIFY(service.waitForEnd());
}

void EngineTest::promptsThatDoNotFit()
{
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny(u"tiny-endless"_s), 600));
    QCOMPARE(failure(service.ask(question(std::string(3000, 'x')))), ErrorCode::contextFull);
    QCOMPARE(failure(service.ask(question("Hello"))), ErrorCode::contextFull);
    QVERIFY(service.text.size() > 500);
}

void EngineTest::refusesFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole = tinyBytes();
    QVERIFY(whole.size() > 100000);
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("Not a model.\n").repeated(100);
    QTest::newRow("head only") << whole.left(20000);
    QTest::newRow("cut in half") << whole.left(whole.size() / 2);
    QTest::newRow("last bytes missing") << whole.left(whole.size() - 100);
    QTest::newRow("no vocabulary") << QByteArray(whole).replace("tokenizer.ggml.tokens", "tokenizer.ggml.tokxns");
    QTest::newRow("missing tensor") << QByteArray(whole).replace("blk.1.ffn_up", "blk.1.ffn_xx");
    QTest::newRow("no layers") << QByteArray(whole).replace("llama.block_count", "llama.block_xount");
}

void EngineTest::refusesFiles()
{
    QFETCH(QByteArray, bytes);
    const QTemporaryDir folder;
    ServiceProcess service(program);
    as<Loaded>(service.load(tiny()));
    const auto failed = as<Failed>(service.load(write(folder, bytes)));
    QCOMPARE(failed.code, ErrorCode::badFile);
    QVERIFY(failed.message.find("model.gguf") != std::string::npos);
    QCOMPARE(failure(service.ask(Count{1, "x"})), ErrorCode::notLoaded); // the earlier one is gone
    as<Loaded>(service.load(tiny()));
    as<Finished>(service.ask(question("Hello")));
}

void EngineTest::namesAnUnknownKind_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("named");
    QTest::newRow("unknown") << QByteArray("llxma") << QByteArray("“llxma”");
    QTest::newRow("not UTF-8") << QByteArray("ll\xFFma") << QByteArray("“ll\uFFFDma”");
}

void EngineTest::namesAnUnknownKind()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, named);
    const QTemporaryDir folder;
    ServiceProcess service(program);
    const auto failed = as<Failed>(service.load(write(folder, tinyBytes().replace("llama", kind))));
    QCOMPARE(failed.code, ErrorCode::badFile);
    QVERIFY2(failed.message.find(named.toStdString() + " are not known") != std::string::npos, failed.message.c_str());
}

void EngineTest::survivesDamagedFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("model") << tiny();
    QTest::newRow("projector") << projector;
}

void EngineTest::survivesDamagedFiles()
{
    QFETCH(QString, path);
    const QByteArray whole = bytesOf(path);
    const QTemporaryDir folder;
    auto service = std::make_unique<ServiceProcess>(program);
    quint32 random = 1;
    for (int i = 0; i < 60; ++i) {
        QByteArray damaged = whole;
        for (int k = 0; k < 3; ++k) {
            random = random * 1664525U + 1013904223U;
            damaged[qsizetype((random >> 8U) % 1500U)] = char(random >> 3U); // where the sizes stand
        }
        // Whatever it makes of the file, it says so, and is there for the next one at the latest after a new start.
        const QString written = write(folder, damaged);
        const Answer answer = path == projector ? service->load(tiny(), {}, written) : service->load(written);
        QVERIFY2(std::holds_alternative<Loaded>(answer) || failure(answer) != ErrorCode::internal,
                 encode(answer).c_str());
        if (std::holds_alternative<Failed>(answer) && as<Failed>(answer).message.find("crashed") != std::string::npos) {
            QVERIFY(service->waitForEnd());
            service = std::make_unique<ServiceProcess>(program);
        }
    }
}

void EngineTest::endsWithoutABackend()
{
    const QTemporaryDir empty;
    ServiceProcess service(program, {u"--backends"_s, empty.path()});
    service.send(Load{1, tiny().toStdString(), {}});
    QVERIFY(!service.receive());
    QCOMPARE(service.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(service.process.exitCode(), 127);
}

void EngineTest::endsWithItsInput_data()
{
    QTest::addColumn<QString>("when");
    for (const QString &when : {u"idle"_s, u"loading"_s, u"replying"_s, u"malformed"_s})
        QTest::newRow(qPrintable(when)) << when;
}

void EngineTest::endsWithItsInput()
{
    QFETCH(QString, when);
    ServiceProcess service(program);
    if (when == u"loading"_s)
        service.send(Load{1, tiny().toStdString(), {}});
    if (when == u"replying"_s) {
        as<Loaded>(service.load(tiny(u"tiny-endless"_s)));
        service.send(question("Hello"));
        QVERIFY(std::holds_alternative<Text>(service.receive().value()));
    }
    if (when == u"malformed"_s)
        service.sendBytes("\xFF\xFF\xFF\xFF and so on");
    else
        service.process.closeWriteChannel();
    QVERIFY(service.waitForEnd());
    QCOMPARE(service.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(service.process.exitCode(), when == u"malformed"_s ? 1 : 0);
}

QTEST_GUILESS_MAIN(EngineTest)
#include "enginetest.moc"
