// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/replyreader.h"

#include "core/utf8.h"

#include <QTest>

using namespace lumora::service;

namespace {

using Found = LineWatcher::Found;

struct Outcome
{
    std::string text;
    Found found = Found::nothing;
};

/// Feeds the bytes in pieces of one size.
Outcome readIn(std::size_t pieceSize, std::string_view bytes, ThoughtFilter::Start start)
{
    TextReader reader({.calls = true, .userTurn = true}, start);
    Outcome outcome;
    for (std::size_t at = 0; at < bytes.size(); at += pieceSize) {
        outcome.found = reader.read(bytes.substr(at, pieceSize), outcome.text).found;
        if (outcome.found != Found::nothing)
            return outcome;
    }
    reader.finish(outcome.text);
    return outcome;
}

} // namespace

class ReplyReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("found");
        const auto row = [](const char *name, const char *bytes, const char *text, Found found = Found::nothing) {
            QTest::newRow(name) << QByteArray(bytes) << QByteArray(text) << int(found);
        };
        row("plain", "Hello.\nSecond line", "Hello.\nSecond line");
        row("empty", "", "");
        row("characters of every length", "aé€👋", "aé€👋");
        row("cut character at the end", "a\xE2\x82", "a\uFFFD");
        row("lone continuation", "a\x80z", "a\uFFFDz");
        row("lead without its rest", "\xF0\x9F z", "\uFFFD z");
        row("overlong form", "\xC0\xAF", "\uFFFD\uFFFD");
        row("overlong three bytes", "\xE0\x80\x80", "\uFFFD\uFFFD\uFFFD");
        row("surrogate", "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD");
        row("above the last code point", "\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD");
        row("new lead inside a character", "\xE2\xC3\xA9", "\uFFFDé");

        row("thought", "<think>No, wait.</think>\n\nYes.", "Yes.");
        row("thought after white space", " \n<think>a</think> b", " \nb");
        row("two thoughts", "<think>a</think> <think>b</think>\nc", "c");
        row("marks in the middle", "A<think>b</think> c", "A<think>b</think> c");
        row("marks behind a thought and words", "<think>a</think>b<think>c", "b<think>c");
        row("thought without end", "<think>no", "");
        row("empty thought", "<think></think>x", "x");
        row("closing mark alone", "a</think>b", "a</think>b");
        row("nearly a mark", "<thin>a<think>x</think>b", "<thin>a<think>x</think>b");
        row("mark behind its beginning", "<<think>x</think>b", "<<think>x</think>b");
        row("mark cut at the end", "<thi", "<thi");
        row("nearly a closing mark", "<think>a</thin</think>b", "b");
        row("call inside a thought", "<think>{\"tool\":</think>a", "a");

        row("call", "{\"tool\": \"x\"}", "", Found::call);
        row("call on a later line", "Let me see.\n{\"tool\":", "Let me see.\n", Found::call);
        row("call with blanks and lines inside", " \t{\n  \"tool\" \r\n :", "", Found::call);
        row("call after a thought", "<think>hm</think>\n{\"tool\":", "", Found::call);
        row("call inside a line", "As {\"tool\":1}", "As {\"tool\":1}");
        row("another object", "{\"tools\":1}", "{\"tools\":1}");
        row("object of other names", "{\n\"a\":1}", "{\n\"a\":1}");
        row("brace, then a call on the next line", "{\n{\"tool\":", "{\n", Found::call);
        row("brace at the end", "a\n{\"to", "a\n{\"to");
        row("blanks only", "   ", "   ");
        row("user's turn", "Fine.\nUser: and", "Fine.\n", Found::userTurn);
        row("user inside a line", "The User: x", "The User: x");
        row("nearly the user's turn", "Users: x", "Users: x");
    }

    void readsText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, text);
        QFETCH(int, found);
        for (std::size_t pieceSize = 1; pieceSize <= std::size_t(bytes.size()) + 1; ++pieceSize) {
            const Outcome outcome = readIn(pieceSize, bytes.toStdString(), ThoughtFilter::Start::outside);
            QCOMPARE(outcome.text, text.toStdString());
            QCOMPARE(int(outcome.found), found);
        }
        const Outcome inside = readIn(1, "half a thought</think>" + bytes.toStdString(), ThoughtFilter::Start::inside);
        if (!bytes.startsWith(' '))
            QCOMPARE(inside.text, text.toStdString());
    }

    void nothingIsHeldThatIsSafe()
    {
        TextReader reader({.calls = true, .userTurn = false}, ThoughtFilter::Start::outside);
        std::string text;
        reader.read("Use", text);
        QCOMPARE(text, std::string("Use"));
        text.clear();
        reader.read(" {\"tool\":<é", text);
        QCOMPARE(text, std::string(" {\"tool\":<é"));
        text.clear();
        reader.read("\n{" + std::string(200, ' '), text);
        QVERIFY2(text.size() > 100, "a line that is no call is held back without end");
    }

    void stopsRightBehindACallsColon()
    {
        TextReader reader({.calls = true, .userTurn = false}, ThoughtFilter::Start::outside);
        std::string text;
        const auto result = reader.read("a:\n{\"tool\": \"x:y", text);
        QVERIFY(result.found == Found::call);
        QCOMPARE(result.consumed, std::string("a:\n{\"tool\":").size());
        QCOMPARE(text, std::string("a:\n"));
    }

    void objectsEndAtTheirOwnBrace_data()
    {
        QTest::addColumn<QByteArray>("object");
        QTest::newRow("empty") << QByteArray("{}");
        QTest::newRow("nested") << QByteArray("{\"a\":{\"b\":[{},[]]},\"c\":1}");
        QTest::newRow("braces in texts") << QByteArray("{\"a\":\"}{][\"}");
        QTest::newRow("quotes in texts") << QByteArray("{\"a\":\"\\\"}\",\"b\":\"\\\\\"}");
        QTest::newRow("not UTF-8") << QByteArray("{\"a\":\"\xED\xA0\x80\"}");
    }

    void objectsEndAtTheirOwnBrace()
    {
        QFETCH(QByteArray, object);
        for (qsizetype cut = 0; cut < object.size(); ++cut) {
            ObjectReader reader(object.left(cut).toStdString());
            QVERIFY(!reader.isComplete());
            reader.read((object.mid(cut) + "} more").toStdString());
            QVERIFY(reader.isComplete());
            QCOMPARE(reader.text(), validUtf8(object.toStdString()));
        }
    }

    void prefixesEndBetweenCharacters()
    {
        const std::string_view text = "aé👋z";
        const std::vector<std::size_t> sizes = {0, 1, 1, 3, 3, 3, 3, 7, 8, 8};
        for (std::size_t bytes = 0; bytes < sizes.size(); ++bytes)
            QCOMPARE(prefixOfCharacters(text, bytes).size(), sizes[bytes]);
        QCOMPARE(firstCharacters(text, 3), std::string("aé👋"));
        QCOMPARE(firstCharacters("a\xFF\xFFz", 2), std::string("a\uFFFD"));
        QCOMPARE(firstCharacters(text, 9), std::string(text));
        QCOMPARE(firstCharacters(text, 0), std::string());
    }
};

QTEST_GUILESS_MAIN(ReplyReaderTest)
#include "replyreadertest.moc"
