// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/installation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;

class InstallationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheHelpersAndTheModels_data()
    {
        QTest::addColumn<QStringList>("folders");
        QTest::addColumn<QString>("folder");

        QTest::newRow("built") << QStringList({"bin"}) << "bin";
        QTest::newRow("installed") << QStringList({"libexec/lumora"}) << "libexec/lumora";
        QTest::newRow("both") << QStringList({"bin", "libexec/lumora"}) << "libexec/lumora";
        QTest::newRow("neither") << QStringList() << "bin";
    }

    void findsTheHelpersAndTheModels()
    {
        QFETCH(QStringList, folders);
        QFETCH(QString, folder);
        const QTemporaryDir root;
        QDir().mkpath(root.filePath("bin"));
        for (const QString &executables : folders) {
            for (const char *name : {"/lumora-model", "/lumora-pdf-text", "/lumora-image-reader"}) {
                QFile file(root.filePath(executables + name));
                QVERIFY(QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly));
                QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
            }
        }

        const LocalModelSettings settings = installedModel(root.filePath("bin"), "/data/Lumora");

        QCOMPARE(settings.command.program, root.filePath(folder + "/lumora-model"));
        QCOMPARE(installedPdfHelper(root.filePath("bin")), root.filePath(folder + "/lumora-pdf-text"));
        QCOMPARE(installedImageReader(root.filePath("bin")), root.filePath(folder + "/lumora-image-reader"));
        QCOMPARE(settings.modelFolder, "/data/Lumora/Models");
        QCOMPARE(settings.builtInModel, root.filePath("share/lumora/builtin.gguf"));
    }

    void userWithoutAFolderHasNoModelsOfTheirOwn() { QVERIFY(!installedModel("/bin", std::nullopt).modelFolder); }
};

QTEST_GUILESS_MAIN(InstallationTest)
#include "tst_installation.moc"
