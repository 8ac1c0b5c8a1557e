// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/localservicetest.h"

#include <QFile>
#include <QSignalSpy>

using namespace lumora;
using namespace std::chrono_literals;

class LocalAvailabilityTest : public LocalServiceTest
{
    Q_OBJECT

private Q_SLOTS:
    void fileDecidesTheAvailability_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: no file
        QTest::addColumn<Reason>("reason");
        QTest::addColumn<QString>("problem");
        const auto row = [](const char *name, const QByteArray &content, Reason reason, const QString &problem) {
            QTest::newRow(name) << content << reason << problem;
        };
        row("no file", {}, Reason::appleIntelligenceNotEnabled, "Put a model file");
        row("empty", "", Reason::other, "model.gguf is not a model file");
        row("no model", "PK\x03\x04 a zip", Reason::other, "is not a model file");
        row("cut", "GGU", Reason::other, "is not a model file");
        row("does not load", "GGUF bad", Reason::other, "This file is broken.");
        row("too little memory", "GGUF memory", Reason::deviceNotEligible, "There is not enough memory.");
        row("fails for no fault of its own", "GGUF internal", Reason::other, "Something went wrong.");
        row("killed while loading", "GGUF kill", Reason::deviceNotEligible, "killed while it was loading");
        row("crashes while loading", "GGUF crash", Reason::other, "keeps crashing");
        row("processor too old", "GGUF illegal", Reason::deviceNotEligible, "processor does not have");
    }

    void fileDecidesTheAvailability()
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
        const TestReply reply(*m_service, "pid");
        const auto count = outcomeOf(m_service->tokenCount("four"));
        QVERIFY(!reply.hasEnded());
        QTRY_VERIFY(reply.hasEnded() && count->isDone());
        QVERIFY2(reply.failure->contains(problem), qPrintable(*reply.failure));
        QCOMPARE(count->failure, reply.failure);
    }

    void requestNamesWhatCannotBeUsed_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("target"); // of the link that has the name
        QTest::addColumn<QString>("failure");
        QTest::newRow("cannot be read") << "a.gguf"
                                        << "nowhere"
                                        << "a.gguf cannot be read";
        QTest::newRow("part missing") << "a-00001-of-00002.gguf"
                                      << "model"
                                      << "not all of them are there";
    }

    void requestNamesWhatCannotBeUsed()
    {
        QFETCH(QString, name);
        QFETCH(QString, target);
        QFETCH(QString, failure);
        write("model", {});
        QVERIFY(QFile::link(path(target), path(name)));
        createService();
        const TestReply reply(*m_service, "pid");
        QTRY_VERIFY(reply.failure);
        QVERIFY2(reply.failure->contains(failure), qPrintable(*reply.failure));
    }

    void modelLargerThanMemoryIsNotEligible()
    {
        writeModel("GGUF fine");
        const QString model = path("model.gguf");
        if (!QFile::resize(model, memorySize() + 1))
            QSKIP("this file system has no sparse file of that size");
        createService();
        QTRY_COMPARE(m_service->availability(), Availability::unavailable(Reason::deviceNotEligible));
        QVERIFY(QFile::resize(model, 1000));
        QTRY_COMPARE(m_service->availability(), Availability::available());
    }

    void serviceThatCannotRunIsNotEligible_data()
    {
        QTest::addColumn<ServiceCommand>("command");
        QTest::newRow("no such program") << ServiceCommand{"/nowhere/lumora-model", {}};
        QTest::newRow("no program") << ServiceCommand{"/etc/passwd", {}};
        QTest::newRow("no command") << ServiceCommand{};
        QTest::newRow("no library") << ServiceCommand{"/bin/sh", {"-c", "exit 127"}};
    }

    void serviceThatCannotRunIsNotEligible()
    {
        QFETCH(ServiceCommand, command);
        m_settings.command = command;
        writeModel("GGUF fine");
        createService();
        const TestReply reply(*m_service, "pid");
        QTRY_COMPARE(m_service->availability(), Availability::unavailable(Reason::deviceNotEligible));
        QTRY_VERIFY(reply.hasEnded());
        QVERIFY(reply.failure->contains("cannot be started"));
    }

    void fileDroppedInLaterIsPickedUpWhenComplete()
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

    void newFileIsLoaded_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<Reason>("reason");
        QTest::newRow("after one that does not load") << QByteArray("GGUF bad") << Reason::other;
        QTest::newRow("while another loads") << QByteArray("GGUF slow") << Reason::modelNotReady;
    }

    void newFileIsLoaded()
    {
        QFETCH(QByteArray, before);
        QFETCH(Reason, reason);
        writeModel(before);
        createService();
        QTRY_COMPARE(m_service->availability(), Availability::unavailable(reason));
        QTRY_COMPARE(loads().size(), 1);
        writeModel("GGUF other");
        QCOMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
        QTRY_COMPARE(m_service->availability(), Availability::available());
    }

    void failureThatMayPassIsTriedAgain_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<Reason>("reason");
        QTest::addColumn<qsizetype>("loads"); // before it gives up for a while
        QTest::newRow("too little memory") << QByteArray("GGUF memory") << Reason::deviceNotEligible << qsizetype(1);
        QTest::newRow("killed") << QByteArray("GGUF kill") << Reason::deviceNotEligible << qsizetype(1);
        QTest::newRow("internal") << QByteArray("GGUF internal") << Reason::other << qsizetype(1);
        QTest::newRow("crash") << QByteArray("GGUF crash") << Reason::other << qsizetype(3);
    }

    void failureThatMayPassIsTriedAgain()
    {
        QFETCH(QByteArray, content);
        QFETCH(Reason, reason);
        QFETCH(qsizetype, loads);
        m_settings.patience.untilRetry = 1s;
        writeModel(content);
        createService();
        QTRY_COMPARE(m_service->availability(), Availability::unavailable(reason));
        QCOMPARE(this->loads().size(), loads);
        QTRY_COMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
        QTRY_COMPARE(m_service->availability(), Availability::unavailable(reason));
        QCOMPARE(this->loads().size(), loads + 1);
    }

    void loadThatTakesTooLongIsGivenUp()
    {
        m_settings.patience.untilLoaded = 1s;
        writeModel("GGUF slow");
        createService();
        const TestReply reply(*m_service, "pid");
        QTRY_VERIFY(reply.failure);
        QVERIFY(reply.failure->contains("took too long to load"));
        QCOMPARE(m_service->availability(), Availability::unavailable(Reason::other));
        QVERIFY(loads().size() <= 1);
    }

    void growingFileLeavesTheLoadedModelInUse()
    {
        m_settings.patience.untilSettled = 1s;
        becomeAvailable();
        write("newer.gguf", "GGUF slow");
        QCOMPARE(m_service->availability(), Availability::available());
        const auto count = outcomeOf(m_service->tokenCount("four"));
        QTRY_COMPARE(count->value, 4);

        // Once it is complete it is loaded, and until it has been, the old one's context is what there is to go by.
        QSignalSpy changes(m_service.get(), &ModelService::availabilityChanged);
        QVERIFY(changes.wait(30000));
        QCOMPARE(m_service->availability(), Availability::unavailable(Reason::modelNotReady));
        QCOMPARE(m_service->contextSize(), 1000);
    }

    void growingProjectorLeavesTheLoadedModelInUse()
    {
        m_settings.patience.untilSettled = 1s;
        becomeAvailable();
        write("mmproj-any.gguf", "GGUF good");
        QCOMPARE(m_service->availability(), Availability::available());
        QVERIFY(echo({}).images.empty());
        QTRY_COMPARE_WITH_TIMEOUT(loads(), QByteArray(".p"), 30000);
        QTRY_COMPARE(m_service->availability(), Availability::available());
        QVERIFY(QFile::remove(path("mmproj-any.gguf")));
        QTRY_COMPARE((m_service->availability(), loads()), QByteArray(".p."));
    }
};

QTEST_GUILESS_MAIN(LocalAvailabilityTest)
#include "tst_localavailability.moc"
