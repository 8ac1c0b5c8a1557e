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
    void findsTheHelpersAndTheModels_data();
    void findsTheHelpersAndTheModels();
    void userWithoutAFolderHasNoModelsOfTheirOwn();
};

void InstallationTest::findsTheHelpersAndTheModels_data()
{
    QTest::addColumn<QStringList>("folders");
    QTest::addColumn<QString>("folder");

    QTest::newRow("built") << QStringList({"bin"}) << "bin";
    QTest::newRow("installed") << QStringList({"libexec/lumora"}) << "libexec/lumora";
    QTest::newRow("both") << QStringList({"bin", "libexec/lumora"}) << "libexec/lumora";
    QTest::newRow("neither") << QStringList() << "bin";
}

void InstallationTest::findsTheHelpersAndTheModels()
{
    QFETCH(QStringList, folders);
    QFETCH(QString, folder);
    const QTemporaryDir root;
    QDir().mkpath(root.filePath(QStringLiteral("bin")));
    for (const QString &executables : folders) {
        for (const QString &name : {QStringLiteral("/lumora-model"), QStringLiteral("/lumora-pdf-text"),
                                    QStringLiteral("/lumora-image-reader")}) {
            QFile file(root.filePath(executables + name));
            QVERIFY(QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly));
            QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        }
    }

    const LocalModelSettings settings =
        installedModel(root.filePath(QStringLiteral("bin")), QStringLiteral("/data/Lumora"));

    QCOMPARE(settings.command.program, root.filePath(folder + QStringLiteral("/lumora-model")));
    QCOMPARE(installedPdfHelper(root.filePath(QStringLiteral("bin"))),
             root.filePath(folder + QStringLiteral("/lumora-pdf-text")));
    QCOMPARE(installedImageReader(root.filePath(QStringLiteral("bin"))),
             root.filePath(folder + QStringLiteral("/lumora-image-reader")));
    QCOMPARE(settings.modelFolder, QStringLiteral("/data/Lumora/Models"));
    QCOMPARE(settings.builtInModels, QStringList({root.filePath(QStringLiteral("share/lumora/builtin.gguf")),
                                                  root.filePath(QStringLiteral("share/lumora/tiny.gguf"))}));
}

void InstallationTest::userWithoutAFolderHasNoModelsOfTheirOwn()
{
    QVERIFY(!installedModel(QStringLiteral("/bin"), std::nullopt).modelFolder);
}

QTEST_GUILESS_MAIN(InstallationTest)
#include "tst_installation.moc"
