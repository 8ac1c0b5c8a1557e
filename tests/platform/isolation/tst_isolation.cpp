// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/isolation/isolation.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;

class IsolationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void refuses_data();
    void refuses();
    void allows_data();
    void allows();
};

namespace {

/// A file of the user's, one that may be read, and one that stands for a device; each in a folder of its own.
struct Files
{
    Files()
    {
        for (const QString &path : {secret, given, device}) {
            QFile file(path);
            if (!file.open(QIODevice::WriteOnly) || file.write("text") != 4)
                qFatal("cannot write");
        }
    }

    const QTemporaryDir home;
    const QTemporaryDir reach;
    const QTemporaryDir devices;
    const QString secret = home.filePath("secret");
    const QString given = reach.filePath("given");
    const QString device = devices.filePath("device");

    QString path(const QString &name) const { return name == "given" ? given : name == "device" ? device : secret; }
};

/// Whether a process that is isolated so can do it. how: the age of its kernel, and what it stands for.
bool isPossible(const QString &how, const QString &attempt, const QString &file, const Files &files)
{
    QProcess prisoner;
    prisoner.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    prisoner.start(QStringLiteral(PRISONER),
                   how.split(' ') + QStringList{files.reach.path(), files.device, attempt, files.path(file)});
    const bool hasEnded = prisoner.waitForFinished();
    if (!hasEnded || prisoner.exitStatus() != QProcess::NormalExit || prisoner.exitCode() > 1)
        qFatal("the prisoner did not say what it could do");
    return prisoner.exitCode() == 0;
}

void addColumns()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<QString>("attempt");
    QTest::addColumn<QString>("file");
}

void addRows(const QStringList &ways, const QStringList &attempts, const QString &file)
{
    for (const QString &how : ways) {
        for (const QString &attempt : attempts)
            QTest::addRow("%s: %s, %s", qPrintable(how), qPrintable(attempt), qPrintable(file))
                << how << attempt << file;
    }
}

const QStringList newKernel{"new helper", "new service"};
const QStringList anyKernel = newKernel + QStringList{"old helper", "old service"};

} // namespace

void IsolationTest::initTestCase()
{
    if (const std::string missing = missingIsolation(); !missing.empty())
        QSKIP(missing.c_str());
}

void IsolationTest::refuses_data()
{
    addColumns();
    for (const char *file : {"given", "secret"})
        addRows(anyKernel,
                {"write", "control", "empty", "create", "create a folder", "remove", "rename", "link",
                 "change the rights", "watch"},
                file);
    addRows(anyKernel,
            {"internet", "internet, version 6", "network devices", "local socket", "ring", "run a program", "fork",
             "signal", "limits of another"},
            "given");
    addRows(newKernel, {"read", "variables of another"}, "secret");
    addRows({"old service", "new helper"}, {"control"}, "device");
}

void IsolationTest::refuses()
{
    QFETCH(QString, how);
    QFETCH(QString, attempt);
    QFETCH(QString, file);
    const Files files;
    QVERIFY(!isPossible(how, attempt, file, files));
    QCOMPARE(QFile(files.path(file)).size(), 4);
    QVERIFY2(isPossible("new free", attempt, file, files), "something else keeps every process from it");
}

void IsolationTest::allows_data()
{
    addColumns();
    addRows(anyKernel, {"read", "map", "threads", "own limits", "library"}, "given");
    addRows({"new service"}, {"control"}, "device");
    addRows({"old helper"}, {"read", "know of gaps"}, "secret");
}

void IsolationTest::allows()
{
    QFETCH(QString, how);
    QFETCH(QString, attempt);
    QFETCH(QString, file);
    QVERIFY(isPossible(how, attempt, file, Files()));
}

QTEST_GUILESS_MAIN(IsolationTest)
#include "tst_isolation.moc"
