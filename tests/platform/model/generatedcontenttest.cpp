// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/generatedcontent.h"

#include "platform/model/errors.h"
#include "platform/model/testrecords.h"

#include <QTest>

using namespace lumora;

class GeneratedContentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void schemaIsJsonSchemaInOrder();
    void recordsSurviveTheWayThroughJson();
    void contentKeepsItsIdentifier();
    void jsonIsReadStrictly_data();
    void jsonIsReadStrictly();
    void propertiesAreReadByType_data();
    void propertiesAreReadByType();
};

void GeneratedContentTest::schemaIsJsonSchemaInOrder()
{
    QCOMPARE(TestCard::generationSchema().toJson(),
             QByteArray(R"({"title":"TestCard","type":"object","properties":{)"
                        R"("title":{"type":"string","description":"A \"short\" title"},)"
                        R"("points":{"type":"array","items":{"type":"string"},"description":"What matters"}},)"
                        R"("required":["title","points"],"additionalProperties":false})"));
}

void GeneratedContentTest::recordsSurviveTheWayThroughJson()
{
    const TestCard card{"“Ünïcode” \\ \" \n \U0001F468\u200D\U0001F469", {QString(), "two"}};
    const GeneratedContent content = GeneratedContent::fromJson(card.generatedContent().toJson());
    QCOMPARE(content, card.generatedContent());
    QCOMPARE(TestCard::fromGeneratedContent(content), card);

    const TestCard empty{QString(), {}};
    QCOMPARE(TestCard::fromGeneratedContent(GeneratedContent::fromJson(empty.generatedContent().toJson())), empty);
}

void GeneratedContentTest::contentKeepsItsIdentifier()
{
    const QUuid id = QUuid::createUuid();
    const GeneratedContent::Properties properties{{QString("title"), QString("x")}};
    QCOMPARE(GeneratedContent(properties, id).id(), id);
    QVERIFY(!GeneratedContent(properties).id());
    QVERIFY(GeneratedContent(properties, id) != GeneratedContent(properties));
}

void GeneratedContentTest::jsonIsReadStrictly_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut") << QByteArray(R"({"title":"a)");
    QTest::newRow("more after the end") << QByteArray(R"({"title":"a"} {})");
    QTest::newRow("not UTF-8") << QByteArray("{\"title\":\"\xff\"}");
    QTest::newRow("trailing comma") << QByteArray(R"({"title":"a",})");
    QTest::newRow("deep") << QByteArray(100000, '[') + QByteArray(100000, ']');
}

void GeneratedContentTest::jsonIsReadStrictly()
{
    QFETCH(QByteArray, json);
    QVERIFY_THROWS_EXCEPTION(ConversionError, GeneratedContent::fromJson(json));
}

void GeneratedContentTest::propertiesAreReadByType_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("readsAs"); // "text", "texts", "absent" or "wrong"

    const QString title = "title";
    QTest::newRow("text") << QByteArray(R"({"title":"a"})") << title << QStringLiteral("text");
    QTest::newRow("empty text") << QByteArray(R"({"title":""})") << title << QStringLiteral("text");
    QTest::newRow("list") << QByteArray(R"({"title":["a"]})") << title << QStringLiteral("texts");
    QTest::newRow("empty list") << QByteArray(R"({"title":[]})") << title << QStringLiteral("texts");
    QTest::newRow("absent") << QByteArray(R"({"Title":"a"})") << title << QStringLiteral("absent");
    for (const char *value : {"1", "1.5", "true", "null", "{}", "[1]", R"(["a",null])", R"([["a"]])"}) {
        const QByteArray json = QByteArray(R"({"title":)") + value + '}';
        QTest::newRow(value) << json << title << QStringLiteral("wrong");
    }
    QTest::newRow("no object") << QByteArray(R"(["title"])") << title << QStringLiteral("wrong");
}

void GeneratedContentTest::propertiesAreReadByType()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, property);
    QFETCH(QString, readsAs);
    const GeneratedContent content = GeneratedContent::fromJson(json);

    if (readsAs == QLatin1String("absent")) {
        QVERIFY(!content.optionalText(property));
        QVERIFY(!content.optionalTexts(property));
        QVERIFY_THROWS_EXCEPTION(ConversionError, content.text(property));
        QVERIFY_THROWS_EXCEPTION(ConversionError, content.texts(property));
        return;
    }
    if (readsAs == QLatin1String("text"))
        QCOMPARE(content.optionalText(property), content.text(property));
    else
        QVERIFY_THROWS_EXCEPTION(ConversionError, content.optionalText(property));
    if (readsAs == QLatin1String("texts"))
        QCOMPARE(content.optionalTexts(property), content.texts(property));
    else
        QVERIFY_THROWS_EXCEPTION(ConversionError, content.optionalTexts(property));
}

QTEST_GUILESS_MAIN(GeneratedContentTest)
#include "generatedcontenttest.moc"
