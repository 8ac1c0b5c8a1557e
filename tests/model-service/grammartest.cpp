// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grammar.h"

#include "core/failure.h"
#include "gbnf.h"
#include "wire/json.h"

#include <QTest>

using namespace lumora;
using namespace lumora::service;

namespace {

const std::string answerSchema =
    R"({"type":"object","properties":{"title":{"type":"string","description":"\"}"},)"
    R"("keyPoints":{"type":"array","items":{"type":"string"}}},"required":["title","keyPoints"]})";

const std::vector<wire::Tool> tools = {
    {"clock", "", R"({"type":"object","properties":{"zone":{"type":"string"}}})"},
    {"odd \"name\" \\ é", "", R"({"type":"object","properties":{}})"},
};

} // namespace

class GrammarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bindsAnswers_data();
    void bindsAnswers();
    void bindsCalls_data();
    void bindsCalls();
    void takesACallOrAnAnswer();
    void knowsEveryType_data();
    void knowsEveryType();
    void refusesWhatItDoesNotUnderstand_data();
    void refusesWhatItDoesNotUnderstand();
};

void GrammarTest::bindsAnswers_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("taken");
    const auto row = [](const char *name, const char *text, bool taken) {
        QTest::newRow(name) << QByteArray(text) << taken;
    };
    row("compact", R"({"title":"a","keyPoints":["b","c"]})", true);
    row("spaced", R"({ "title": "a", "keyPoints": [ "b" , "c" ] })", true);
    row("on lines", "{\n  \"title\": \"a\",\n  \"keyPoints\": [\n    \"b\",\n    \"c\"\n  ]\n}", true);
    row("empty texts and list", R"({"title":"","keyPoints":[]})", true);
    row("escapes", R"({"title":"\"\\\/\b\f\n\r\t\u00e9\uFFFD","keyPoints":[]})", true);
    row("other languages", R"({"title":"Grüße 你好 👋","keyPoints":[]})", true);
    row("surrogates in a pair", R"({"title":"\ud83d\uDC4b","keyPoints":[]})", true);
    row("lone high surrogate", R"({"title":"\ud83d","keyPoints":[]})", false);
    row("lone low surrogate", R"({"title":"\udc4b","keyPoints":[]})", false);
    row("line break in a text", "{\"title\":\"a\nb\",\"keyPoints\":[]}", false);
    row("unknown escape", R"({"title":"\x","keyPoints":[]})", false);
    row("other order", R"({"keyPoints":[],"title":"a"})", false);
    row("property missing", R"({"title":"a"})", false);
    row("property added", R"({"title":"a","keyPoints":[],"x":1})", false);
    row("other type", R"({"title":1,"keyPoints":[]})", false);
    row("number in the list", R"({"title":"a","keyPoints":[1]})", false);
    row("comma at the end", R"({"title":"a","keyPoints":["b",]})", false);
    row("text behind", R"({"title":"a","keyPoints":[]} and)", false);
    row("padding", "{ \n   \n \"title\":\"a\",\"keyPoints\":[]}", false);
    row("long padding", "{\n                       \"title\":\"a\",\"keyPoints\":[]}", false);
}

void GrammarTest::bindsAnswers()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, taken);
    QCOMPARE(grammarTakes(objectGrammar(answerSchema), text.toStdString()), taken);
    if (taken)
        QVERIFY2(wire::parseObject(text.toStdString()), "a text that the grammar takes does not parse");
}

void GrammarTest::bindsCalls_data()
{
    QTest::addColumn<QByteArray>("rest");
    QTest::addColumn<bool>("taken");
    QTest::newRow("call") << QByteArray(R"( "clock", "arguments": {"zone": "UTC"}})") << true;
    QTest::newRow("other tool") << QByteArray(R"("odd \"name\" \\ é","arguments":{}})") << true;
    QTest::newRow("unknown tool") << QByteArray(R"("watch","arguments":{"zone":"UTC"}})") << false;
    QTest::newRow("arguments of the other") << QByteArray(R"("clock","arguments":{}})") << false;
    QTest::newRow("no arguments") << QByteArray(R"("clock"})") << false;
    QTest::newRow("text behind") << QByteArray(R"("clock","arguments":{"zone":""}}.)") << false;
}

void GrammarTest::bindsCalls()
{
    QFETCH(QByteArray, rest);
    QFETCH(bool, taken);
    QCOMPARE(grammarTakes(callGrammar(tools), rest.toStdString()), taken);
    QCOMPARE(grammarTakes(objectOrCallGrammar(answerSchema, tools), "{\"tool\":" + rest.toStdString()), taken);
}

void GrammarTest::takesACallOrAnAnswer()
{
    const std::string grammar = objectOrCallGrammar(answerSchema, tools);
    QVERIFY(grammarTakes(grammar, R"({"title":"a","keyPoints":[]})"));
    QVERIFY(!grammarTakes(grammar, R"({"tool":"a","keyPoints":[]})"));
    QVERIFY(!grammarTakes(grammar, R"({"title":"clock","arguments":{"zone":""}})"));
}

void GrammarTest::knowsEveryType_data()
{
    QTest::addColumn<QByteArray>("schema");
    QTest::addColumn<QByteArrayList>("taken");
    QTest::addColumn<QByteArrayList>("refused");
    QTest::newRow("integer") << QByteArray(R"({"type":"integer"})") << QByteArrayList{"0", "-7", "120"}
                             << QByteArrayList{"01", "1.5", "-", "1e2", "99999999999999999999"};
    QTest::newRow("number") << QByteArray(R"({"type":"number"})") << QByteArrayList{"0", "-1.50", "2e9", "1.5E-3"}
                            << QByteArrayList{".5", "1.", "1e999", "NaN"};
    QTest::newRow("boolean") << QByteArray(R"({"type":"boolean"})") << QByteArrayList{"true", "false"}
                             << QByteArrayList{"True", "1"};
    QTest::newRow("null") << QByteArray(R"({"type":"null"})") << QByteArrayList{"null"} << QByteArrayList{"nil"};
    QTest::newRow("choice") << QByteArray(R"({"type":"string","enum":["a b","\"c\""]})")
                            << QByteArrayList{"\"a b\"", "\"\\\"c\\\"\""} << QByteArrayList{"\"a\"", "a b"};
    QTest::newRow("nested") << QByteArray(
                                   R"({"type":"array","items":{"type":"object","properties":{"x":{"type":"null"}}}})")
                            << QByteArrayList{"[]", R"([{"x":null},{"x": null}])"} << QByteArrayList{"[{}]", "{}"};
}

void GrammarTest::knowsEveryType()
{
    QFETCH(QByteArray, schema);
    QFETCH(QByteArrayList, taken);
    QFETCH(QByteArrayList, refused);
    const std::string grammar = objectGrammar("{\"properties\":{\"v\":" + schema.toStdString() + "}}");
    for (const QByteArray &value : taken)
        QVERIFY2(grammarTakes(grammar, "{\"v\":" + value.toStdString() + "}"), value);
    for (const QByteArray &value : refused)
        QVERIFY2(!grammarTakes(grammar, "{\"v\":" + value.toStdString() + "}"), value);
}

void GrammarTest::refusesWhatItDoesNotUnderstand_data()
{
    QTest::addColumn<QByteArray>("schema");
    QTest::newRow("not JSON") << QByteArray("{");
    QTest::newRow("unknown type") << QByteArray(R"({"properties":{"v":{"type":"date"}}})");
    QTest::newRow("no type") << QByteArray(R"({"properties":{"v":{}}})");
    QTest::newRow("property is no schema") << QByteArray(R"({"properties":{"v":1}})");
    QTest::newRow("list of nothing") << QByteArray(R"({"properties":{"v":{"type":"array"}}})");
    QTest::newRow("choice of nothing") << QByteArray(R"({"properties":{"v":{"enum":[]}}})");
    QTest::newRow("choice of numbers") << QByteArray(R"({"properties":{"v":{"enum":[1]}}})");
}

void GrammarTest::refusesWhatItDoesNotUnderstand()
{
    QFETCH(QByteArray, schema);
    QVERIFY_THROWS_EXCEPTION(Failure, objectGrammar(schema.toStdString()));
}

QTEST_GUILESS_MAIN(GrammarTest)
#include "grammartest.moc"
