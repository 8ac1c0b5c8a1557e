// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/localmodelservice.h"

#include "platform/model/childprocesses.h"
#include "platform/model/languagemodelsession.h"
#include "platform/model/outcome.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLoggingCategory>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace lumora;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Reason = Availability::UnavailableReason;

// A reply and what has come of it.
struct TestReply
{
    TestReply(ModelService &service, const QString &prompt, ReplyRequest request = {})
    {
        request.prompt.text = prompt;
        reply = service.respond(std::move(request));
        QObject::connect(reply.get(), &ModelReply::textArrived, [this](const QString &piece) { text += piece; });
        QObject::connect(reply.get(), &ModelReply::toolCalled,
                         [this](const QString &callID, const QString &name, const QByteArray &arguments) {
                             calls.append({callID, name, QString::fromUtf8(arguments)});
                         });
        QObject::connect(reply.get(), &ModelReply::finished, [this](const Usage &counted, const QByteArray &content) {
            usage = counted;
            json = content;
        });
        QObject::connect(reply.get(), &ModelReply::failed,
                         [this](const QString &description) { failure = description; });
    }

    bool hasEnded() const { return usage || failure; }
    ModelReply *operator->() const { return reply.get(); }

    QString text;
    QList<QStringList> calls;
    std::optional<Usage> usage;
    QByteArray json;
    std::optional<QString> failure;

    std::unique_ptr<ModelReply> reply;
};

bool isRunning(qint64 pid)
{
    QFile status(u"/proc/%1/stat"_s.arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    // One that has ended, but whose end nobody has noticed yet, is a zombie.
    const QByteArray text = status.readAll();
    return text.mid(text.lastIndexOf(')') + 2, 1) != "Z";
}

} // namespace

class LocalModelServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void answersCountsAndReplies();
    void requestReachesTheService();
    void imagesReachAModelThatReadsThem_data();
    void imagesReachAModelThatReadsThem();
    void imagesAreMadeFit();
    void requestsWaitForImagesBeforeThem();
    void toolCallGoesThereAndBack();
    void longToolOutputIsCutBetweenCharacters();
    void serviceGetsHarmlessSurroundings();
    void errorOutputDoesNotHoldUpTheService();

    void fileDecidesTheAvailability_data();
    void fileDecidesTheAvailability();
    void requestNamesWhatCannotBeUsed_data();
    void requestNamesWhatCannotBeUsed();
    void modelLargerThanMemoryIsNotEligible();
    void serviceThatCannotRunIsNotEligible_data();
    void serviceThatCannotRunIsNotEligible();
    void loadingModelIsNotReady();
    void fileDroppedInLaterIsPickedUpWhenComplete();
    void badFileCountsUntilItChanges();
    void failureThatMayPassIsTriedAgain_data();
    void failureThatMayPassIsTriedAgain();
    void loadThatTakesTooLongIsGivenUp();
    void newFileSupersedesTheLoad();
    void growingFileLeavesTheLoadedModelInUse();
    void growingProjectorLeavesTheLoadedModelInUse();
    void missingPartDoesNotHideAnOlderModel();
    void countKeepsTheModelForTheReply();
    void changedFileWaitsForTheReply_data();
    void changedFileWaitsForTheReply();

    void deathInMidReplyIsTold_data();
    void deathInMidReplyIsTold();
    void memoryKillIsTold();
    void deathBetweenRequestsGoesUnnoticed();
    void countThatKillsTheServiceFails();
    void crashesInARowMakeItUnavailable_data();
    void crashesInARowMakeItUnavailable();
    void onlyFinishedRepliesForgiveCrashes_data();
    void onlyFinishedRepliesForgiveCrashes();

    void cancelStopsTheReply();
    void cancelledReplyThatWaitsIsNeverSent();
    void hungServiceIsReplaced_data();
    void hungServiceIsReplaced();

    void destructionEndsEverything_data();
    void destructionEndsEverything();
    void destructionEndsASession();
    void hungServiceEndsWithItsProgram();
    void refusedReplyOutlivesTheService();

private:
    QByteArray loads() const;
    qsizetype loadCount() const { return loads().size(); }
    QString write(const QString &name, const QByteArray &content);
    void writeModel(const QByteArray &content) { write(u"model.gguf"_s, content); }
    QString writeImage(const QString &name, const QImage &image) const;
    wire::Respond echo(const QStringList &images);
    void createService();
    void becomeAvailable();
    qint64 servicePid();

    std::unique_ptr<QTemporaryDir> m_folder;
    LocalModelSettings m_settings;
    std::shared_ptr<LocalModelService> m_service;
};

void LocalModelServiceTest::init()
{
    // Deaths are expected here.
    QLoggingCategory::setFilterRules(u"lumora.model.warning=false"_s);
    m_folder = std::make_unique<QTemporaryDir>();
    m_settings = {};
    m_settings.modelFolder = m_folder->path();
    m_settings.command.program = QStringLiteral(FAKE_SERVICE);
    m_settings.patience.untilSettled = 0ms;
    m_settings.patience.untilNextLook = 10ms;
}

void LocalModelServiceTest::cleanup()
{
    m_service.reset();
    m_folder.reset();
}

QString LocalModelServiceTest::write(const QString &name, const QByteArray &content)
{
    QFile file(m_folder->filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write");
    return file.fileName();
}

QString LocalModelServiceTest::writeImage(const QString &name, const QImage &image) const
{
    if (!image.save(m_folder->filePath(name)))
        qFatal("cannot write");
    return m_folder->filePath(name);
}

// How the service was told to load the file: for each time a dot, or a p where it was told of a projector.
QByteArray LocalModelServiceTest::loads() const
{
    QFile file(m_folder->filePath(u"model.gguf.loads"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// What reaches the service of a prompt with images.
wire::Respond LocalModelServiceTest::echo(const QStringList &images)
{
    ReplyRequest request;
    for (const QString &path : images)
        request.prompt.attachments.append(Attachment(path).label(u"attached image"_s));
    const TestReply reply(*m_service, u"echo"_s, request);
    [&reply] { QTRY_VERIFY(reply.hasEnded()); }();
    const auto message = wire::decodeRequest(reply.text.toStdString());
    return message ? std::get<wire::Respond>(*message) : wire::Respond();
}

void LocalModelServiceTest::createService()
{
    m_service = std::make_shared<LocalModelService>(m_settings);
}

void LocalModelServiceTest::becomeAvailable()
{
    if (!QFile::exists(m_folder->filePath(u"model.gguf"_s)))
        writeModel("GGUF fine");
    createService();
    QTRY_COMPARE(m_service->availability(), Availability::available());
}

qint64 LocalModelServiceTest::servicePid()
{
    const TestReply reply(*m_service, u"pid"_s);
    [&reply] { QTRY_VERIFY(reply.hasEnded()); }();
    return reply.text.toLongLong();
}

void LocalModelServiceTest::answersCountsAndReplies()
{
    writeModel("GGUF fine 1234");
    createService();
    QCOMPARE(m_service->contextSize(), 0);
    const auto count = outcomeOf(m_service->tokenCount(u"four"_s));
    const auto failed = outcomeOf(m_service->tokenCount(u"fail"_s));
    const TestReply reply(*m_service, u"structured"_s);
    QTRY_VERIFY(reply.hasEnded());
    QTRY_COMPARE(count->value, 4);
    QTRY_COMPARE(failed->failure, u"Cannot count."_s);
    QCOMPARE(reply.text, u"So far "_s);
    QCOMPARE(reply.usage, (Usage{{1}, {2}}));
    QCOMPARE(reply.json, QByteArray(R"({"title":"A"})"));
    QCOMPARE(m_service->contextSize(), 1234);

    const TestReply failing(*m_service, u"fail"_s);
    QTRY_VERIFY(failing.hasEnded());
    QCOMPARE(failing.failure, u"Too much."_s);
}

void LocalModelServiceTest::requestReachesTheService()
{
    becomeAvailable();
    const GenerationSchema schema{u"Card"_s, {{u"title"_s, u"A title"_s, GenerationSchema::Type::text}}};
    ReplyRequest request;
    request.instructions = u"Be brief."_s;
    request.tools = {{u"ask"_s, u"Asks."_s, schema}};
    request.prompt.attachments = {Attachment(u"/tmp/secret.png"_s).label(u"attached image"_s)};
    request.schema = schema;
    request.options = {GenerationOptions::SamplingMode::greedy, 0.5, 100};
    const TestReply reply(*m_service, u"echo “ü”"_s, request);
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

void LocalModelServiceTest::imagesReachAModelThatReadsThem_data()
{
    QTest::addColumn<QByteArray>("projector"); // empty: none
    QTest::addColumn<QByteArray>("loads");
    QTest::addColumn<QByteArray>("prompt");
    const QByteArray label = "\n\n[attached image]";
    QTest::newRow("no projector") << QByteArray() << QByteArray(".") << "echo" + label + label;
    QTest::newRow("good") << QByteArray("GGUF good") << QByteArray("p") << "echo" + label;
    QTest::newRow("does not load") << QByteArray("GGUF bad") << QByteArray("p") << "echo" + label + label;
    QTest::newRow("crashes") << QByteArray("GGUF crash") << QByteArray("p.") << "echo" + label + label;
    QTest::newRow("takes too much memory") << QByteArray("GGUF kill") << QByteArray("p.") << "echo" + label + label;
}

void LocalModelServiceTest::imagesReachAModelThatReadsThem()
{
    QFETCH(QByteArray, projector);
    QFETCH(QByteArray, loads);
    QFETCH(QByteArray, prompt);
    if (!projector.isEmpty())
        write(u"mmproj-any.gguf"_s, projector);
    becomeAvailable();
    QCOMPARE(this->loads(), loads);
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(QColor(1, 2, 3));
    image.setPixelColor(2, 1, QColor(250, 251, 252));
    const wire::Respond sent = echo({writeImage(u"a.png"_s, image), write(u"b.png"_s, "not an image")});
    QCOMPARE(QByteArray::fromStdString(sent.prompt), prompt);
    if (projector.endsWith("good")) {
        const QByteArray pixels = QByteArray("\1\2\3").repeated(5) + "\xFA\xFB\xFC";
        QVERIFY(sent.images == (std::vector<wire::Image>{{3, 2, pixels.toStdString()}}));
    } else {
        QVERIFY(sent.images.empty());
    }
}

void LocalModelServiceTest::imagesAreMadeFit()
{
    write(u"mmproj-any.gguf"_s, "GGUF good");
    becomeAvailable();
    QImage large(2688, 96, QImage::Format_RGB32);
    large.fill(Qt::red);
    QImage clear(10, 10, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    QImage line(500, 2, QImage::Format_RGB32);
    line.fill(Qt::black);
    const wire::Respond sent =
        echo({writeImage(u"large.png"_s, large), writeImage(u"clear.png"_s, clear), writeImage(u"line.png"_s, line)});
    QCOMPARE(sent.images.size(), 3);
    QVERIFY(sent.images[0].width == 1344 && sent.images[0].height == 84);
    QVERIFY(sent.images[1].pixels == std::string(300, '\xFF'));
    QVERIFY(sent.images[2].width == 500 && sent.images[2].height > 20);
}

void LocalModelServiceTest::requestsWaitForImagesBeforeThem()
{
    write(u"mmproj-any.gguf"_s, "GGUF good");
    becomeAvailable();
    ReplyRequest request;
    request.prompt.attachments.append(Attachment(writeImage(u"a.png"_s, QImage(300, 300, QImage::Format_RGB32))));
    const TestReply cancelled(*m_service, u"abort"_s, request);
    const TestReply first(*m_service, u"structured"_s, request);
    const auto count = outcomeOf(m_service->tokenCount(u"four"_s));
    bool wasCountedBefore = false;
    connect(first.reply.get(), &ModelReply::finished, this, [&] { wasCountedBefore = count->isDone(); });
    cancelled->cancel();
    QTRY_VERIFY(first.hasEnded());
    QTRY_COMPARE(count->value, 4);
    QVERIFY(first.usage && !wasCountedBefore && !cancelled.hasEnded());
}

void LocalModelServiceTest::toolCallGoesThereAndBack()
{
    becomeAvailable();
    ReplyRequest request;
    request.tools = {{u"ask"_s, u"Asks."_s, {}}};
    const TestReply reply(*m_service, u"tool"_s, request);
    QTRY_COMPARE(reply.calls, QList<QStringList>({{u"call 1"_s, u"ask"_s, uR"({"question":"why"})"_s}}));
    QCOMPARE(reply.text, u"So far Asking"_s);
    // A look does not disturb it.
    QCOMPARE(m_service->availability(), Availability::available());
    reply->answerToolCall(u"call 1"_s, u"that"_s);
    QTRY_VERIFY(reply.hasEnded());
    QCOMPARE(reply.text, u"So far Asking: call 1 gave that"_s);
    QCOMPARE(reply.usage, (Usage{{7}, {3}}));
}

void LocalModelServiceTest::longToolOutputIsCutBetweenCharacters()
{
    becomeAvailable();
    ReplyRequest request;
    request.tools = {{u"ask"_s, u"Asks."_s, {}}};
    const TestReply reply(*m_service, u"tool"_s, request);
    QTRY_COMPARE(reply.calls.size(), 1);
    // A mebibyte ends inside a character.
    reply->answerToolCall(u"call 1"_s, u"€"_s.repeated(qsizetype{1024} * 1024));
    QTRY_VERIFY(reply.hasEnded());
    QCOMPARE(reply.text, u"So far Asking: call 1 gave "_s + u"€"_s.repeated(qsizetype{1024} * 1024 / 3));
}

void LocalModelServiceTest::serviceGetsHarmlessSurroundings()
{
    qputenv("HOME", "/somewhere");
    qputenv("DISPLAY", ":99");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    qputenv("LANG", "C.UTF-8");
    becomeAvailable();
    const TestReply reply(*m_service, u"environment"_s);
    QTRY_VERIFY(reply.hasEnded());
    QVERIFY(reply.text.contains(u"PATH="_s));
    QVERIFY(reply.text.contains(u"LANG=C.UTF-8\n"_s));
    for (const QString &word : {u"HOME"_s, u"DISPLAY"_s, u"DBUS"_s})
        QVERIFY2(!reply.text.contains(word), qPrintable(reply.text));
    QVERIFY(reply.text.endsWith(u"\nin /"_s));
}

void LocalModelServiceTest::errorOutputDoesNotHoldUpTheService()
{
    becomeAvailable();
    const TestReply reply(*m_service, u"noise"_s);
    QTRY_VERIFY(reply.usage);
}

void LocalModelServiceTest::fileDecidesTheAvailability_data()
{
    QTest::addColumn<QByteArray>("content"); // null: no file
    QTest::addColumn<Reason>("reason");
    QTest::addColumn<QString>("problem");
    QTest::newRow("no file") << QByteArray() << Reason::appleIntelligenceNotEnabled << u"Put a model file"_s;
    QTest::newRow("empty") << QByteArray("") << Reason::other << u"model.gguf is not a model file"_s;
    QTest::newRow("no model") << QByteArray("PK\x03\x04 a zip") << Reason::other << u"is not a model file"_s;
    QTest::newRow("does not load") << QByteArray("GGUF bad") << Reason::other << u"This file is broken."_s;
    QTest::newRow("too little memory") << QByteArray("GGUF memory") << Reason::deviceNotEligible
                                       << u"There is not enough memory."_s;
    QTest::newRow("fails for no fault of its own")
        << QByteArray("GGUF internal") << Reason::other << u"Something went wrong."_s;
    QTest::newRow("killed while loading")
        << QByteArray("GGUF kill") << Reason::deviceNotEligible << u"killed while it was loading"_s;
    QTest::newRow("crashes while loading") << QByteArray("GGUF crash") << Reason::other << u"keeps crashing"_s;
    QTest::newRow("processor too old") << QByteArray("GGUF illegal") << Reason::deviceNotEligible
                                       << u"processor does not have"_s;
}

void LocalModelServiceTest::fileDecidesTheAvailability()
{
    QFETCH(QByteArray, content);
    QFETCH(Reason, reason);
    QFETCH(QString, problem);
    if (!content.isNull())
        writeModel(content);
    createService();
    QTRY_COMPARE(m_service->availability(), Availability::unavailable(reason));
    // And stays so.
    QTest::qWait(50);
    QCOMPARE(m_service->availability(), Availability::unavailable(reason));

    QCOMPARE(m_service->contextSize(), 0);
    const TestReply reply(*m_service, u"pid"_s);
    const auto count = outcomeOf(m_service->tokenCount(u"four"_s));
    QVERIFY(!reply.hasEnded());
    QTRY_VERIFY(reply.hasEnded() && count->isDone());
    QVERIFY2(reply.failure->contains(problem), qPrintable(*reply.failure));
    QCOMPARE(count->failure, reply.failure);
}

void LocalModelServiceTest::requestNamesWhatCannotBeUsed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("target"); // of the link that has the name
    QTest::addColumn<QString>("failure");
    QTest::newRow("cannot be read") << u"a.gguf"_s << u"nowhere"_s << u"a.gguf cannot be read"_s;
    QTest::newRow("part missing") << u"a-00001-of-00002.gguf"_s << u"model"_s << u"not all of them are there"_s;
}

void LocalModelServiceTest::requestNamesWhatCannotBeUsed()
{
    QFETCH(QString, name);
    QFETCH(QString, target);
    QFETCH(QString, failure);
    QFile model(m_folder->filePath(u"model"_s));
    QVERIFY(model.open(QIODevice::WriteOnly));
    QVERIFY(QFile::link(m_folder->filePath(target), m_folder->filePath(name)));
    createService();
    const TestReply reply(*m_service, u"pid"_s);
    QTRY_VERIFY(reply.failure);
    QVERIFY2(reply.failure->contains(failure), qPrintable(*reply.failure));
}

void LocalModelServiceTest::modelLargerThanMemoryIsNotEligible()
{
    writeModel("GGUF fine");
    const QString path = m_folder->filePath(u"model.gguf"_s);
    if (!QFile::resize(path, memorySize() + 1))
        QSKIP("this file system has no sparse file of that size");
    createService();
    QTRY_COMPARE(m_service->availability(), Availability::unavailable(Reason::deviceNotEligible));
    QVERIFY(QFile::resize(path, 1000));
    QTRY_COMPARE(m_service->availability(), Availability::available());
}

void LocalModelServiceTest::serviceThatCannotRunIsNotEligible_data()
{
    QTest::addColumn<ServiceCommand>("command");
    QTest::newRow("no such program") << ServiceCommand{u"/nowhere/lumora-model"_s, {}};
    QTest::newRow("no program") << ServiceCommand{u"/etc/passwd"_s, {}};
    QTest::newRow("no command") << ServiceCommand{};
    QTest::newRow("no library") << ServiceCommand{u"/bin/sh"_s, {u"-c"_s, u"exit 127"_s}};
}

void LocalModelServiceTest::serviceThatCannotRunIsNotEligible()
{
    QFETCH(ServiceCommand, command);
    m_settings.command = command;
    writeModel("GGUF fine");
    createService();
    QSignalSpy changes(m_service.get(), &ModelService::availabilityChanged);
    const TestReply reply(*m_service, u"pid"_s);
    QTRY_COMPARE(m_service->availability(), Availability::unavailable(Reason::deviceNotEligible));
    QTRY_VERIFY(reply.hasEnded());
    QVERIFY(reply.failure->contains(u"cannot be started"_s));
}

void LocalModelServiceTest::loadingModelIsNotReady()
{
    writeModel("GGUF slow");
    createService();
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
    const auto count = outcomeOf(m_service->tokenCount(u"four"_s));
    QTest::qWait(50);
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
    QVERIFY(!count->isDone());
}

void LocalModelServiceTest::fileDroppedInLaterIsPickedUpWhenComplete()
{
    m_settings.patience.untilSettled = 200ms;
    createService();
    QSignalSpy changes(m_service.get(), &ModelService::availabilityChanged);
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::appleIntelligenceNotEnabled));

    writeModel("GG");
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
    writeModel("GGUF fine");
    // Nobody asks any more; the change is told.
    QVERIFY(changes.wait(30000));
    QCOMPARE(m_service->availability(), Availability::available());
    QCOMPARE(changes.size(), 1);
}

void LocalModelServiceTest::badFileCountsUntilItChanges()
{
    writeModel("GGUF bad");
    createService();
    QTRY_COMPARE(m_service->availability(), Availability::unavailable(Reason::other));
    writeModel("GGUF better");
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
    QTRY_COMPARE(m_service->availability(), Availability::available());
}

void LocalModelServiceTest::failureThatMayPassIsTriedAgain_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<Reason>("reason");
    QTest::addColumn<qsizetype>("loads"); // before it gives up for a while
    QTest::newRow("too little memory") << QByteArray("GGUF memory") << Reason::deviceNotEligible << qsizetype(1);
    QTest::newRow("killed") << QByteArray("GGUF kill") << Reason::deviceNotEligible << qsizetype(1);
    QTest::newRow("internal") << QByteArray("GGUF internal") << Reason::other << qsizetype(1);
    QTest::newRow("crash") << QByteArray("GGUF crash") << Reason::other << qsizetype(3);
}

void LocalModelServiceTest::failureThatMayPassIsTriedAgain()
{
    QFETCH(QByteArray, content);
    QFETCH(Reason, reason);
    QFETCH(qsizetype, loads);
    m_settings.patience.untilRetry = 1s;
    writeModel(content);
    createService();
    QTRY_COMPARE(m_service->availability(), Availability::unavailable(reason));
    QCOMPARE(loadCount(), loads);
    QTRY_COMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
    QTRY_COMPARE(m_service->availability(), Availability::unavailable(reason));
    QCOMPARE(loadCount(), loads + 1);
}

void LocalModelServiceTest::loadThatTakesTooLongIsGivenUp()
{
    m_settings.patience.untilLoaded = 1s;
    writeModel("GGUF slow");
    createService();
    const TestReply reply(*m_service, u"pid"_s);
    QTRY_VERIFY(reply.failure);
    QVERIFY(reply.failure->contains(u"took too long to load"_s));
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::other));
    QVERIFY(loadCount() <= 1);
}

void LocalModelServiceTest::newFileSupersedesTheLoad()
{
    writeModel("GGUF slow");
    createService();
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
    QTRY_COMPARE(loadCount(), 1);
    writeModel("GGUF other");
    QTRY_COMPARE(m_service->availability(), Availability::available());
}

void LocalModelServiceTest::growingFileLeavesTheLoadedModelInUse()
{
    m_settings.patience.untilSettled = 1s;
    becomeAvailable();
    QFile newer(m_folder->filePath(u"newer.gguf"_s));
    QVERIFY(newer.open(QIODevice::WriteOnly));
    newer.write("GGUF slow");
    newer.close();
    QCOMPARE(m_service->availability(), Availability::available());
    const auto count = outcomeOf(m_service->tokenCount(u"four"_s));
    QTRY_COMPARE(count->value, 4);

    // Once it is complete it is loaded, and until it has been, the old one's context is what there is to go by.
    QSignalSpy changes(m_service.get(), &ModelService::availabilityChanged);
    QVERIFY(changes.wait(30000));
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
    QCOMPARE(m_service->contextSize(), 1000);
}

void LocalModelServiceTest::growingProjectorLeavesTheLoadedModelInUse()
{
    m_settings.patience.untilSettled = 1s;
    becomeAvailable();
    write(u"mmproj-any.gguf"_s, "GGUF good");
    QCOMPARE(m_service->availability(), Availability::available());
    QVERIFY(echo({}).images.empty());
    QTRY_COMPARE_WITH_TIMEOUT(loads(), QByteArray(".p"), 30000);
    QTRY_COMPARE(m_service->availability(), Availability::available());
    QVERIFY(QFile::remove(m_folder->filePath(u"mmproj-any.gguf"_s)));
    QTRY_COMPARE((m_service->availability(), loads()), QByteArray(".p."));
}

void LocalModelServiceTest::missingPartDoesNotHideAnOlderModel()
{
    m_settings.patience.untilSettled = 500ms;
    writeModel("GGUF fine");
    QTest::qWait(600);
    write(u"new-00001-of-00002.gguf"_s, "GGUF slow");
    createService();
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
    QSignalSpy changes(m_service.get(), &ModelService::availabilityChanged);
    QVERIFY(changes.wait(30000));
    QCOMPARE(m_service->availability(), Availability::available());
}

void LocalModelServiceTest::countKeepsTheModelForTheReply()
{
    m_settings.patience.untilNextLook = 1s;
    becomeAvailable();
    const auto count = outcomeOf(m_service->tokenCount(u"four"_s));
    writeModel("GGUF other 99");
    QCOMPARE(m_service->availability(), Availability::available());
    QTRY_COMPARE(count->value, 4);
    QCOMPARE(m_service->contextSize(), 1000);
    QTRY_COMPARE(m_service->contextSize(), 99);
}

void LocalModelServiceTest::changedFileWaitsForTheReply_data()
{
    QTest::addColumn<bool>("isRemoved");
    QTest::newRow("another file") << false;
    QTest::newRow("removed") << true;
}

void LocalModelServiceTest::changedFileWaitsForTheReply()
{
    QFETCH(bool, isRemoved);
    becomeAvailable();
    ReplyRequest request;
    request.tools = {{u"ask"_s, u"Asks."_s, {}}};
    const TestReply reply(*m_service, u"tool"_s, request);
    QTRY_COMPARE(reply.calls.size(), 1);

    QVERIFY(QFile::remove(m_folder->filePath(u"model.gguf"_s)));
    if (!isRemoved)
        writeModel("GGUF other 99");
    for (int check = 0; check < 3; ++check) {
        QCOMPARE(m_service->availability(), Availability::available());
        QTest::qWait(20);
    }
    QCOMPARE(m_service->contextSize(), 1000);

    QSignalSpy changes(m_service.get(), &ModelService::availabilityChanged);
    reply->answerToolCall(u"call 1"_s, u"that"_s);
    QTRY_VERIFY(reply.usage);
    QTRY_VERIFY(!changes.isEmpty());
    if (isRemoved) {
        QCOMPARE(m_service->availability(), Availability::unavailable(Reason::appleIntelligenceNotEnabled));
    } else {
        QTRY_COMPARE(m_service->availability(), Availability::available());
        QCOMPARE(m_service->contextSize(), 99);
    }
}

void LocalModelServiceTest::deathInMidReplyIsTold_data()
{
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QString>("failure"); // a part of it
    QTest::newRow("crash") << u"abort"_s << u"crashed (signal 6)"_s;
    QTest::newRow("killed") << u"kill"_s << u"memory"_s;
    QTest::newRow("stopped") << u"terminate"_s << u"stopped from outside"_s;
    QTest::newRow("exit") << u"exit"_s << u"ended by itself (exit code 3)"_s;
    QTest::newRow("frame without an end") << u"huge"_s << u"makes no sense"_s;
    QTest::newRow("frame without a message") << u"nonsense"_s << u"makes no sense"_s;
    QTest::newRow("answer to another question") << u"senseless"_s << u"makes no sense"_s;
}

void LocalModelServiceTest::deathInMidReplyIsTold()
{
    QFETCH(QString, prompt);
    QFETCH(QString, failure);
    becomeAvailable();
    const qint64 pid = servicePid();
    const TestReply reply(*m_service, prompt);
    QTRY_VERIFY(reply.hasEnded());
    QVERIFY2(reply.failure && reply.failure->contains(failure), qPrintable(reply.failure.value_or(u"none"_s)));
    QCOMPARE(reply.text, u"So far "_s);

    // Asked at once, before the new one can have loaded.
    const auto count = outcomeOf(m_service->tokenCount(u"four"_s));
    QVERIFY(servicePid() != pid);
    QTRY_COMPARE(count->value, 4);
    QVERIFY(!isRunning(pid));
    QCOMPARE(m_service->availability(), Availability::available());
}

void LocalModelServiceTest::memoryKillIsTold()
{
    const QString counters = m_folder->filePath(u"vmstat"_s);
    const auto countKills = [&counters](const QByteArray &kills) {
        QFile file(counters);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("pgalloc 5\noom_kill " + kills + "\noom_kill_other 7\n");
    };
    countKills("9");
    m_settings.command.memoryCounters = counters;
    becomeAvailable();
    const TestReply reply(*m_service, u"stream"_s);
    QTRY_VERIFY(!reply.text.isEmpty());

    countKills("10");
    for (const int pid : childProcesses())
        QVERIFY(::kill(pid, SIGKILL) == 0);
    QTRY_VERIFY(reply.hasEnded());
    QVERIFY2(reply.failure && reply.failure->contains(u"ran out of memory"_s),
             qPrintable(reply.failure.value_or(u"none"_s)));
}

void LocalModelServiceTest::deathBetweenRequestsGoesUnnoticed()
{
    becomeAvailable();
    const qint64 pid = servicePid();
    QVERIFY(::kill(static_cast<pid_t>(pid), SIGKILL) == 0);
    // Nothing here knows of it yet.
    const auto count = outcomeOf(m_service->tokenCount(u"four"_s));
    const TestReply reply(*m_service, u"structured"_s);
    QTRY_VERIFY(reply.hasEnded());
    QTRY_COMPARE(count->value, 4);
    QVERIFY(reply.usage);
}

void LocalModelServiceTest::countThatKillsTheServiceFails()
{
    becomeAvailable();
    const auto count = outcomeOf(m_service->tokenCount(u"abort"_s));
    QTRY_VERIFY(count->isDone());
    QVERIFY(count->failure && count->failure->contains(u"crashed"_s));
    const auto next = outcomeOf(m_service->tokenCount(u"four"_s));
    QTRY_COMPARE(next->value, 4);
}

void LocalModelServiceTest::crashesInARowMakeItUnavailable_data()
{
    QTest::addColumn<bool>("hasPaused");
    QTest::newRow("until the file changes") << false;
    QTest::newRow("until a pause has passed") << true;
}

void LocalModelServiceTest::crashesInARowMakeItUnavailable()
{
    QFETCH(bool, hasPaused);
    m_settings.patience.untilRetry = hasPaused ? 500ms : 1h;
    becomeAvailable();
    for (int crash = 0; crash < 3; ++crash) {
        const TestReply reply(*m_service, u"abort"_s);
        QTRY_VERIFY(reply.failure);
    }
    QCOMPARE(m_service->availability(), Availability::unavailable(Reason::other));
    if (!hasPaused) {
        QTest::qWait(50);
        QCOMPARE(m_service->availability(), Availability::unavailable(Reason::other));
        writeModel("GGUF better");
    }
    QTRY_COMPARE(m_service->availability(), Availability::available());
}

void LocalModelServiceTest::onlyFinishedRepliesForgiveCrashes_data()
{
    QTest::addColumn<QString>("prompt"); // between two crashes
    QTest::addColumn<bool>("forgives");
    QTest::newRow("finished") << u"structured"_s << true;
    QTest::newRow("failed") << u"fail"_s << false;
}

void LocalModelServiceTest::onlyFinishedRepliesForgiveCrashes()
{
    QFETCH(QString, prompt);
    QFETCH(bool, forgives);
    becomeAvailable();
    for (int crash = 0; crash < 3; ++crash) {
        const TestReply between(*m_service, prompt);
        QTRY_VERIFY(between.hasEnded());
        const TestReply crashing(*m_service, u"abort"_s);
        QTRY_VERIFY(crashing.failure);
        QCOMPARE(crashing.failure->contains(u"model keeps crashing"_s), !forgives && crash == 2);
    }
}

void LocalModelServiceTest::cancelStopsTheReply()
{
    becomeAvailable();
    const qint64 pid = servicePid();
    const TestReply reply(*m_service, u"stream"_s);
    QTRY_VERIFY(reply.text.count(u"la"_s) > 3);
    reply->cancel();
    const QString text = reply.text;
    QCOMPARE(servicePid(), pid);
    QCOMPARE(reply.text, text);
    QVERIFY(!reply.hasEnded());
}

void LocalModelServiceTest::cancelledReplyThatWaitsIsNeverSent()
{
    writeModel("GGUF fine");
    createService();
    const TestReply cancelled(*m_service, u"abort"_s);
    cancelled->cancel();
    {
        const TestReply dropped(*m_service, u"abort"_s);
    }
    const TestReply next(*m_service, u"structured"_s);
    QTRY_VERIFY(next.hasEnded());
    QVERIFY(next.usage);
    QVERIFY(!cancelled.hasEnded());
}

void LocalModelServiceTest::hungServiceIsReplaced_data()
{
    QTest::addColumn<bool>("isCount");
    QTest::newRow("cancelled reply") << false;
    QTest::newRow("count") << true;
}

void LocalModelServiceTest::hungServiceIsReplaced()
{
    QFETCH(bool, isCount);
    m_settings.patience.untilCancelled = 100ms;
    m_settings.patience.untilCounted = 100ms;
    becomeAvailable();
    const qint64 pid = servicePid();
    std::shared_ptr<Outcome<qint64>> count;
    if (isCount) {
        count = outcomeOf(m_service->tokenCount(u"hang"_s));
    } else {
        const TestReply reply(*m_service, u"hang"_s);
        QTRY_VERIFY(!reply.text.isEmpty());
        reply->cancel();
    }
    QVERIFY(servicePid() != pid);
    QVERIFY(!isRunning(pid));
    if (isCount)
        QTRY_VERIFY(count->failure && count->failure->contains(u"no longer answered"_s));
}

void LocalModelServiceTest::destructionEndsEverything_data()
{
    QTest::addColumn<QString>("prompt");
    QTest::newRow("idle") << QString();
    QTest::newRow("in mid-reply") << u"stream"_s;
    QTest::newRow("hung") << u"hang"_s;
}

void LocalModelServiceTest::destructionEndsEverything()
{
    QFETCH(QString, prompt);
    becomeAvailable();
    const qint64 pid = servicePid();
    std::optional<TestReply> reply;
    if (!prompt.isEmpty()) {
        reply.emplace(*m_service, prompt);
        QTRY_VERIFY(!reply->text.isEmpty());
    }
    const auto count = outcomeOf(m_service->tokenCount(u"four"_s));
    QVERIFY(isRunning(pid));
    m_service.reset();
    QVERIFY(count->isCancelled);
    QVERIFY(!isRunning(pid));
    if (reply)
        (*reply)->cancel();
}

void LocalModelServiceTest::destructionEndsASession()
{
    becomeAvailable();
    LanguageModelSession session(SystemLanguageModel(m_service), {}, {});
    ResponseStream stream = session.streamResponse({u"stream"_s, {}}, {});
    const auto first = outcomeOf(stream.next());
    QTRY_VERIFY(first->value && first->value->has_value());
    const auto next = outcomeOf(stream.next());
    m_service.reset();
    // It may have had a snapshot waiting.
    QVERIFY(next->isDone());
    QVERIFY(outcomeOf(stream.next())->isCancelled);
}

void LocalModelServiceTest::hungServiceEndsWithItsProgram()
{
    writeModel("GGUF fine");
    QProcess host;
    host.start(QStringLiteral(SERVICE_HOST), {QStringLiteral(FAKE_SERVICE), m_folder->filePath(u"model.gguf"_s)});
    QVERIFY(host.waitForReadyRead(30000));
    const qint64 pid = host.readAllStandardOutput().trimmed().toLongLong();
    QVERIFY(isRunning(pid));
    host.kill();
    QVERIFY(host.waitForFinished(30000));
    QTRY_VERIFY(!isRunning(pid));
}

void LocalModelServiceTest::refusedReplyOutlivesTheService()
{
    createService();
    const TestReply reply(*m_service, u"pid"_s);
    // It has been refused, but nobody was told so far. Who waits for it gives up when the service goes.
    connect(m_service.get(), &QObject::destroyed, this, [&reply] { reply->cancel(); });
    m_service.reset();
    QTest::qWait(20);
    QVERIFY(!reply.hasEnded());
}

QTEST_GUILESS_MAIN(LocalModelServiceTest)
#include "localmodelservicetest.moc"
