// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reliability/failingdisk.h"
#include "reliability/person.h"
#include "reliability/rounds.h"

#include <QDir>
#include <QDirIterator>
#include <QTest>

#include <functional>
#include <optional>

using namespace lumora;

namespace {

using Kind = Step::Kind;

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(path));
}

/// Of each file of this kind: its content.
QList<QByteArray> contents(const QString &folder, const QString &pattern)
{
    QList<QByteArray> found;
    QDirIterator files(folder, {pattern}, QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            found.append(file.readAll());
    }
    return found;
}

} // namespace

/// Every call about files fails once in turn, or from then on. The user is told in the words that belong to it, nothing
/// that the program holds is lost, and the next save writes all of it.
class FileFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aStepThatFailsLosesNothing_data();
    void aStepThatFailsLosesNothing();
    void aStartThatFailsLosesNothing_data();
    void aStartThatFailsLosesNothing();
    void cleanupTestCase() const { qInfo("%d faults", m_faults); }

private:
    /// Tries faults until there is no call left to fail. trial: makes one, and returns whether its moment came.
    void tryFaults(const std::function<bool(const Fault &)> &trial);
    static std::vector<Fault> faultsAt(int call);
    bool failStep(const std::vector<Step> &before, const Step &step, const QString &message, const Fault &fault);
    bool failStart(bool isUnreadable, const Fault &fault);
    static void check(Person &person, const Step &step, const Holdings &before, const QString &message,
                      const QString &dataDirectory);
    void checkStart(Person &person, const QString &dataDirectory) const;
    /// A data directory in which somebody has chatted.
    void copyUsedDirectory(const QString &path) const;

    QTemporaryDir m_used;
    Holdings m_holdings; ///< what is in it
    int m_faults = 0;
    std::mt19937 m_random{seed()};
};

void FileFaultsTest::initTestCase()
{
    Person person(m_used.path());
    m_holdings = person.holdings();
    const std::vector<Step> steps{{.kind = Kind::attach, .number = 1},
                                  {.kind = Kind::send, .number = 1, .hasImage = true, .chat = "New Chat"},
                                  {.kind = Kind::finish, .number = 1, .chat = question(1)},
                                  {.kind = Kind::import, .number = 2}};
    for (const Step &step : steps) {
        person.perform(step);
        m_holdings = after(m_holdings, step);
    }
    QCOMPARE(text(person.holdings()), text(m_holdings));
}

void FileFaultsTest::copyUsedDirectory(const QString &path) const
{
    QDirIterator files(m_used.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString copy = path + files.next().mid(m_used.path().size());
        if (!QDir().mkpath(QFileInfo(copy).path()) || !QFile::copy(files.filePath(), copy))
            qFatal("cannot write %s", qUtf8Printable(copy));
    }
}

std::vector<Fault> FileFaultsTest::faultsAt(int call)
{
    std::vector<Fault> faults;
    for (const int error : fileErrors) {
        faults.push_back({call, error, false});
        if (error != EINTR) // who is interrupted may try again for ever
            faults.push_back({call, error, true});
    }
    return faults;
}

void FileFaultsTest::tryFaults(const std::function<bool(const Fault &)> &trial)
{
    const bool isLong = rounds(0) > 0;
    bool isOver = false;
    for (int call = 1; !isOver; call += isLong ? 1 : 1 + int(m_random() % 6)) {
        std::vector<Fault> faults = faultsAt(call);
        if (!isLong)
            faults = {faults[m_random() % faults.size()]};
        for (const Fault &fault : faults) {
            isOver = !trial(fault);
            if (QTest::currentTestFailed()) {
                qInfo("%s", qUtf8Printable(text(fault)));
                return;
            }
            m_faults += isOver ? 0 : 1;
        }
    }
}

void FileFaultsTest::aStepThatFailsLosesNothing_data()
{
    const QString notSaved = "Could not save chats: ";
    const QString chat = question(1);
    const Step attach{.kind = Kind::attach, .number = 3};
    const Step send{.kind = Kind::send, .number = 3, .hasImage = true, .chat = chat};
    const Step newChat{.kind = Kind::newChat};
    QTest::addColumn<std::vector<Step>>("before");
    QTest::addColumn<Step>("step");
    QTest::addColumn<QString>("message");
    const auto row = [](const Step &step, const std::vector<Step> &before, const QString &message) {
        QTest::newRow(qUtf8Printable(text(step))) << before << step << message;
    };
    row(newChat, {}, notSaved);
    row({.kind = Kind::select, .chat = chat}, {newChat}, QString());
    row(send, {attach}, notSaved);
    row({.kind = Kind::finish, .number = 3, .chat = chat}, {attach, send}, notSaved);
    row({.kind = Kind::stop, .number = 3, .chat = chat}, {attach, send}, notSaved);
    row({.kind = Kind::deleteChat, .chat = chat}, {newChat}, notSaved);
    row(attach, {}, "Could not attach image: ");
    row({.kind = Kind::import, .number = 3}, {}, "Could not import document: ");
    row({.kind = Kind::removeDocument, .document = documentName(2)}, {}, QString());
}

void FileFaultsTest::aStepThatFailsLosesNothing()
{
    QFETCH(std::vector<Step>, before);
    QFETCH(Step, step);
    QFETCH(QString, message);
    tryFaults([&](const Fault &fault) { return failStep(before, step, message, fault); });
}

bool FileFaultsTest::failStep(const std::vector<Step> &before, const Step &step, const QString &message,
                              const Fault &fault)
{
    const QTemporaryDir data;
    copyUsedDirectory(data.path());
    Person person(data.path(), data.path()); // what is picked lies on the same disk
    Holdings holdings = m_holdings;
    for (const Step &each : before) {
        person.perform(each);
        holdings = after(holdings, each);
    }
    person.prepare(step);
    bool hasFailed = false;
    {
        const FailingDisk disk(data.path(), fault);
        person.perform(step);
        hasFailed = disk.hasFailed();
    }
    check(person, step, holdings, message, data.path());
    return hasFailed;
}

/// before: what was there before the step. message: how the words begin in which it may say that it has failed.
void FileFaultsTest::check(Person &person, const Step &step, const Holdings &before, const QString &message,
                           const QString &dataDirectory)
{
    const bool isAttach = step.kind == Kind::attach;
    const bool isPick = isAttach || step.kind == Kind::import;
    const Holdings wanted = after(before, step);
    const QString told = person.store().errorMessage() + person.store().library()->errorMessage();
    QVERIFY2(told.isEmpty() || (!message.isEmpty() && told.startsWith(message) && told.endsWith('.')),
             qPrintable(told));
    QCOMPARE(text(person.holdings()), text(isPick && !told.isEmpty() ? before : wanted));
    QCOMPARE(person.store().pendingImageURL().has_value(), isAttach && told.isEmpty());
    if (told.isEmpty() && !message.isEmpty() && !isPick) // who says nothing has saved it
        QCOMPARE(text(Person(dataDirectory).holdings()), text(wanted));

    if (person.store().isGenerating())
        person.perform({.kind = Kind::finish});
    person.saveAll();
    QCOMPARE(text(Person(dataDirectory).holdings()), text(person.holdings()));
}

void FileFaultsTest::aStartThatFailsLosesNothing_data()
{
    QTest::addColumn<bool>("isUnreadable");
    QTest::newRow("history") << false;
    QTest::newRow("history that cannot be understood") << true;
}

void FileFaultsTest::aStartThatFailsLosesNothing()
{
    QFETCH(bool, isUnreadable);
    tryFaults([&](const Fault &fault) { return failStart(isUnreadable, fault); });
}

bool FileFaultsTest::failStart(bool isUnreadable, const Fault &fault)
{
    const QTemporaryDir data;
    copyUsedDirectory(data.path());
    const QString folder = data.filePath("Lumora");
    if (isUnreadable) {
        write(folder + "/conversations.json", "{broken");
        write(folder + "/conversations.unreadable-1.json", "{older");
    }
    std::optional<Person> person;
    bool hasFailed = false;
    {
        const FailingDisk disk(data.path(), fault);
        person.emplace(data.path());
        hasFailed = disk.hasFailed();
    }
    checkStart(*person, data.path());
    if (isUnreadable) {
        const QList<QByteArray> histories = contents(folder, "conversations*.json");
        if (!histories.contains("{broken") || !histories.contains("{older"))
            QTest::qFail("a history that was set aside is gone", __FILE__, __LINE__);
    }
    return hasFailed;
}

/// What was not read is not shown, and lies beside what is written then.
void FileFaultsTest::checkStart(Person &person, const QString &dataDirectory) const
{
    const QString told = person.store().errorMessage();
    QVERIFY2(told.isEmpty() || told.startsWith("Could not save chats: "), qPrintable(told));
    person.saveAll();
    const Holdings found = person.holdings();
    QCOMPARE(text(Person(dataDirectory).holdings()), text(found));
    const Holdings fresh = after(Holdings(), {.kind = Kind::newChat});
    QVERIFY2(found.chats == m_holdings.chats || found.chats == fresh.chats, qPrintable(text(found)));
    QVERIFY2(found.documents == m_holdings.documents || found.documents.isEmpty(), qPrintable(text(found)));
    const auto isKept = [&](const QString &folder, const QString &file) {
        return contents(dataDirectory + folder, file + "*.json")
            .contains(contents(m_used.path() + folder, file + ".json").first());
    };
    QVERIFY(isKept("/Lumora/Documents", "documents"));
    QVERIFY(isKept("/Lumora", "conversations") ||
            contents(dataDirectory + "/Lumora", "conversations*").contains("{broken"));
}

QTEST_GUILESS_MAIN(FileFaultsTest)
#include "tst_filefaults.moc"
