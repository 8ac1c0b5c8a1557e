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
    void findsTheServiceAndTheModels_data();
    void findsTheServiceAndTheModels();
    void userWithoutAFolderHasNoModelsOfTheirOwn();
};

void InstallationTest::findsTheServiceAndTheModels_data()
{
    QTest::addColumn<QStringList>("executables");
    QTest::addColumn<QString>("service");

    const QString beside = QStringLiteral("bin/lumora-model");
    const QString installed = QStringLiteral("libexec/lumora/lumora-model");
    QTest::newRow("built") << QStringList({beside}) << beside;
    QTest::newRow("installed") << QStringList({installed}) << installed;
    QTest::newRow("both") << QStringList({beside, installed}) << installed;
    QTest::newRow("neither") << QStringList() << beside;
}

void InstallationTest::findsTheServiceAndTheModels()
{
    QFETCH(QStringList, executables);
    QFETCH(QString, service);
    const QTemporaryDir root;
    QDir().mkpath(root.filePath(QStringLiteral("bin")));
    for (const QString &executable : executables) {
        QFile file(root.filePath(executable));
        QVERIFY(QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly));
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    }

    const LocalModelSettings settings =
        installedModel(root.filePath(QStringLiteral("bin")), QStringLiteral("/data/Lumora"));

    QCOMPARE(settings.command.program, root.filePath(service));
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
