// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/identifier.h"
#include "platform/files/jsondocument.h"
#include "platform/files/jsonwriter.h"
#include "platform/text/textrules.h"

#include <QTest>

#include <limits>

using namespace lumora;

namespace {

/// An array with what is written into it.
QByteArray written(const std::function<void(JsonWriter &)> &write)
{
    QByteArray bytes;
    JsonWriter writer([&bytes](QByteArrayView piece) { bytes.append(piece); });
    writer.startArray();
    write(writer);
    writer.endArray();
    writer.finish();
    return bytes;
}

} // namespace

class JsonTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWhatIsNotOneJsonText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("cut") << QByteArray("[{\"id\":");
        QTest::newRow("two values") << QByteArray("[] []");
        QTest::newRow("trailing comma") << QByteArray("[1,]");
        QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF[]");
        QTest::newRow("garbage behind a zero byte") << QByteArray("[]\0{", 4);
        QTest::newRow("half a surrogate pair") << QByteArray("[\"\\ud83d\"]");
        QTest::newRow("number too large") << QByteArray("[1e999]");
        QTest::newRow("number below all others") << QByteArray("[-1e999]");
        QTest::newRow("line break in a text") << QByteArray("[\"a\nb\"]");
    }

    void refusesWhatIsNotOneJsonText()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY_THROWS_EXCEPTION(JsonError, JsonDocument{bytes});
    }

    void refusesValuesOfAnotherType()
    {
        const JsonDocument json("{\"text\":\"a\",\"number\":1.5,\"integer\":3,\"null\":null,\"big\":"
                                "9223372036854775808,\"list\":[\"a\",1]}");
        const JsonValue root = json.root();
        QCOMPARE(root.member("text").text(), "a");
        QCOMPARE(root.member("integer").integer(), 3);
        QCOMPARE(root.member("integer").number(), 3.0);
        QVERIFY(!root.optionalMember("null"));
        QVERIFY(!root.optionalMember("absent"));
        QVERIFY_THROWS_EXCEPTION(JsonError, root.member("absent"));
        QVERIFY_THROWS_EXCEPTION(JsonError, root.member("null").text());
        QVERIFY_THROWS_EXCEPTION(JsonError, root.member("number").integer());
        QVERIFY_THROWS_EXCEPTION(JsonError, root.member("big").integer());
        QVERIFY_THROWS_EXCEPTION(JsonError, root.member("text").number());
        QVERIFY_THROWS_EXCEPTION(JsonError, root.member("list").texts());
        QVERIFY_THROWS_EXCEPTION(JsonError, root.size());
        QVERIFY_THROWS_EXCEPTION(JsonError, root.member("list").member("a"));
        QVERIFY_THROWS_EXCEPTION(JsonError, root.member("text").identifier());
    }

    void refusesTextsThatAreNotUtf8_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("latin-1") << QByteArray("caf\xE9");
        QTest::newRow("overlong form") << QByteArray("\xC0\xAF");
        QTest::newRow("surrogate") << QByteArray("\xED\xA0\x80");
        QTest::newRow("cut in a character") << QByteArray("caf\xC3");
    }

    void refusesTextsThatAreNotUtf8()
    {
        QFETCH(QByteArray, bytes);
        const JsonDocument json("[\"" + bytes + "\"]");
        QVERIFY_THROWS_EXCEPTION(JsonError, json.root().texts());
    }

    void survivesDeepNesting()
    {
        constexpr int depth = 1000000;
        const JsonDocument json(QByteArray(depth, '[') + QByteArray(depth, ']'));
        QCOMPARE(json.root().size(), 1);
        QVERIFY_THROWS_EXCEPTION(JsonError, JsonDocument{QByteArray(depth, '{')});
    }

    void keepsDoublesExactly_data()
    {
        QTest::addColumn<double>("number");
        for (const double number : {0.0, -0.5, 1.0, 786135845.123456, 806198400.00000012, 0.1, 1.0 / 3, 5e-324,
                                    std::numeric_limits<double>::max(), -978307200.0})
            QTest::addRow("%.17g", number) << number;
    }

    void keepsDoublesExactly()
    {
        QFETCH(double, number);
        const JsonDocument json(written([number](JsonWriter &writer) { writer.number(number); }));
        QVERIFY(json.root().at(0).number() == number);
    }

    void readsZeroHoweverItIsWritten()
    {
        const JsonDocument json("[0e99,-0.0e-99,1e-999,0.00000000000000000000000000]");
        for (qsizetype i = 0; i < json.root().size(); ++i)
            QCOMPARE(json.root().at(i).number(), 0.0);
    }

    void writesAnyText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("quotes") << "a \"b\" \\ c/d" << QByteArray("\"a \\\"b\\\" \\\\ c/d\"");
        QTest::newRow("control characters")
            << QString::fromLatin1("\n\t\x01\0x", 5) << QByteArray("\"\\n\\t\\u0001\\u0000x\"");
        QTest::newRow("not escaped beyond ASCII") << "é日👍🏽" << QByteArray("\"é日👍🏽\"");
        QTest::newRow("half a surrogate pair") << "a" + QString(QChar(0xD83D)) << QByteArray("\"a\uFFFD\"");
        QTest::newRow("begins with a byte order mark")
            << QStringLiteral("\uFEFF\uFEFFa") << QByteArray("\"\uFEFF\uFEFFa\"");
        QTest::newRow("empty") << "" << QByteArray("\"\"");
    }

    void writesAnyText()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, json);
        const QByteArray bytes = written([&text](JsonWriter &writer) { writer.text(text); });
        QCOMPARE(bytes, '[' + json + ']');
        QCOMPARE(JsonDocument(bytes).root().at(0).text(), wellFormed(text));
    }

    void readsIdentifiersStrictly_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isValid");
        QTest::newRow("upper case") << QByteArray("0F8FAD5B-D9CB-469F-A165-70867728950E") << true;
        QTest::newRow("lower case") << QByteArray("0f8fad5b-d9cb-469f-a165-70867728950e") << true;
        QTest::newRow("braces") << QByteArray("{0F8FAD5B-D9CB-469F-A165-70867728950E}") << false;
        QTest::newRow("no hyphens") << QByteArray("0F8FAD5BD9CB469FA16570867728950E") << false;
        QTest::newRow("hyphen moved") << QByteArray("0F8FAD5BD-9CB-469F-A165-70867728950E") << false;
        QTest::newRow("not a digit") << QByteArray("0F8FAD5B-D9CB-469F-A165-70867728950G") << false;
        QTest::newRow("short") << QByteArray("0F8FAD5B-D9CB-469F-A165-70867728950") << false;
        QTest::newRow("empty") << QByteArray() << false;
    }

    void readsIdentifiersStrictly()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, isValid);
        const std::optional<QUuid> id = identifierFromText(QLatin1String(text));
        QCOMPARE(id.has_value(), isValid);
        if (id)
            QCOMPARE(identifierText(*id), QString::fromLatin1(text.toUpper()));
    }
};

QTEST_APPLESS_MAIN(JsonTest)
#include "tst_json.moc"
