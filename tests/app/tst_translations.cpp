// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/translations.h"
#include "store/chatstore.h"

#include <QTest>
#include <QTranslator>

using namespace lumora;

class TestTranslations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { qDeleteAll(qApp->findChildren<QTranslator *>()); }

    void speaksTheFirstLanguageThatItKnows_data()
    {
        const QString english = "Could not save chats: ";
        const QString german = "Die Chats konnten nicht gespeichert werden: ";
        const QString chinese = "无法保存对话：";
        QTest::addColumn<QStringList>("languages");
        QTest::addColumn<QString>("text");

        QTest::newRow("German") << QStringList{"de"} << german;
        QTest::newRow("of a country") << QStringList{"de-AT"} << german;
        QTest::newRow("Spanish") << QStringList{"es-MX"} << "No se pudieron guardar los chats: ";
        QTest::newRow("French") << QStringList{"fr-CA"} << "Impossible d’enregistrer les discussions\u00a0: ";
        QTest::newRow("Japanese") << QStringList{"ja-JP"} << "チャットを保存できませんでした: ";
        QTest::newRow("Chinese") << QStringList{"zh-Hans-CN"} << chinese;
        QTest::newRow("Chinese, as the environment writes it") << QStringList{"zh_CN"} << chinese;
        QTest::newRow("Chinese of elsewhere, in the same script") << QStringList{"zh-SG"} << chinese;
        QTest::newRow("Chinese in the other script") << QStringList{"zh-TW", "de"} << german;
        QTest::newRow("an unknown one first") << QStringList{"cy", "de"} << german;
        QTest::newRow("English first") << QStringList{"en-GB", "de"} << english;
        QTest::newRow("none that is known") << QStringList{"cy"} << english;
    }

    void speaksTheFirstLanguageThatItKnows()
    {
        QFETCH(const QStringList, languages);
        installTranslations(LUMORA_PROGRAM_FOLDER, languages);
        QTEST(ChatStore::tr("Could not save chats: "), "text");
    }
};

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
