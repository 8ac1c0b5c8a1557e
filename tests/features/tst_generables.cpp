// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "features/currentdatetool.h"
#include "features/structuredanswer.h"
#include "platform/model/errors.h"
#include "platform/model/tool.h"

#include <QTest>

using namespace lumora;

class GenerablesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesTheAnswer();
    void convertsAnswers_data();
    void convertsAnswers();
    void refusesIncompleteAnswers_data();
    void refusesIncompleteAnswers();
    void convertsPartsAsTheyCome();
    void answersTheDateToAnyQuestion();
};

void GenerablesTest::describesTheAnswer()
{
    using Type = GenerationSchema::Type;
    const GenerationSchema expected{"StructuredAnswer",
                                    {{"title", "A short descriptive title", Type::text},
                                     {"summary", "A concise answer to the user's request", Type::text},
                                     {"keyPoints", "The most important facts or points", Type::listOfText},
                                     {"nextSteps", "Useful next actions, if any", Type::listOfText}}};
    QCOMPARE(StructuredAnswer::generationSchema(), expected);
}

void GenerablesTest::convertsAnswers_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("full") << QByteArray(R"({"title":"T","summary":"S","keyPoints":["a","b"],"nextSteps":["c"]})");
    QTest::newRow("empty lists") << QByteArray(R"({"title":"T","summary":"","keyPoints":[],"nextSteps":[]})");
}

void GenerablesTest::convertsAnswers()
{
    QFETCH(QByteArray, json);
    const StructuredAnswer answer = StructuredAnswer::fromGeneratedContent(GeneratedContent::fromJson(json));
    QCOMPARE(answer.title, QStringLiteral("T"));
    QCOMPARE(answer.generatedContent().toJson(), json);
    QVERIFY(!answer.generatedContent().id());
    QCOMPARE(StructuredAnswer::fromGeneratedContent(answer.generatedContent()), answer);
}

void GenerablesTest::refusesIncompleteAnswers_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("no title") << QByteArray(R"({"summary":"S","keyPoints":[],"nextSteps":[]})");
    QTest::newRow("no summary") << QByteArray(R"({"title":"T","keyPoints":[],"nextSteps":[]})");
    QTest::newRow("no key points") << QByteArray(R"({"title":"T","summary":"S","nextSteps":[]})");
    QTest::newRow("no next steps") << QByteArray(R"({"title":"T","summary":"S","keyPoints":[]})");
    QTest::newRow("text for a list") << QByteArray(R"({"title":"T","summary":"S","keyPoints":"a","nextSteps":[]})");
    QTest::newRow("number in a list") << QByteArray(R"({"title":"T","summary":"S","keyPoints":[1],"nextSteps":[]})");
    QTest::newRow("not an object") << QByteArray(R"(["T"])");
}

void GenerablesTest::refusesIncompleteAnswers()
{
    QFETCH(QByteArray, json);
    const GeneratedContent content = GeneratedContent::fromJson(json);
    QVERIFY_THROWS_EXCEPTION(ConversionError, StructuredAnswer::fromGeneratedContent(content));
}

void GenerablesTest::convertsPartsAsTheyCome()
{
    const auto content = GeneratedContent::fromJson(R"({"title":"T","keyPoints":["a"]})");
    const auto partial = StructuredAnswer::PartiallyGenerated::fromGeneratedContent(content);
    QCOMPARE(partial.title, QStringLiteral("T"));
    QCOMPARE(partial.summary, std::nullopt);
    QCOMPARE(partial.keyPoints, QStringList{"a"});
    QCOMPARE(partial.nextSteps, std::nullopt);
    QVERIFY(!partial.id.isNull());

    const QUuid id = QUuid::createUuid();
    const GeneratedContent identified(GeneratedContent::Properties{}, id);
    QCOMPARE(CurrentDateTool::Arguments::PartiallyGenerated::fromGeneratedContent(identified).id, id);
}

void GenerablesTest::answersTheDateToAnyQuestion()
{
    qputenv("LC_ALL", "en_US.UTF-8");
    qputenv("TZ", "UTC");
    const auto tool = makeTool(CurrentDateTool{"currentDate", "Get the date"});
    const QString weekday = QLocale(QLocale::English).dayName(QDate::currentDate().dayOfWeek());
    for (const char *json : {R"({"question":""})", R"({"question":"What is love?"})"}) {
        const QString output = tool->call(GeneratedContent::fromJson(json), {});
        QVERIFY2(output.startsWith(weekday) && output.contains(QString::number(QDate::currentDate().year())),
                 qPrintable(output));
    }
    QVERIFY_THROWS_EXCEPTION(ConversionError, tool->call(GeneratedContent::fromJson("{}"), {}));
}

QTEST_APPLESS_MAIN(GenerablesTest)
#include "tst_generables.moc"
