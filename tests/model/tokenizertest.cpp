// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tokenizer/tokenizer.h"

#include "tokenizer/learning.h"
#include "tokenizer/pieces.h"

#include <QTest>

#include <fstream>
#include <sstream>

using namespace lumora::training;

class TokenizerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        std::ifstream file(MERGES);
        m_tokenizer = std::make_unique<Tokenizer>(Tokenizer::read(file));
    }

    void textIsCutIntoPieces_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("words") << "Hello new world" << QStringList({"Hello", " new", " world"});
        QTest::newRow("contractions") << "I'm sure it's John's, we'll see"
                                      << QStringList({"I", "'m", " sure", " it", "'s", " John", "'s", ",", " we", "'ll",
                                                      " see"});
        QTest::newRow("numbers and signs")
            << "A-17 is (3.5 €)!" << QStringList({"A", "-", "17", " is", " (", "3", ".", "5", " €)!"});
        QTest::newRow("white space") << "a  b\n\n c \n" << QStringList({"a", " ", " b", "\n\n", " c", " \n"});
        QTest::newRow("scripts") << "Größe 日本語 ١٢ naïve" << QStringList({"Größe", " 日本語", " ١٢", " naïve"});
        QTest::newRow("a mark on a letter") << "e\u0301a" << QStringList({"e", "\u0301", "a"});
    }

    void textIsCutIntoPieces()
    {
        QFETCH(QString, text);
        const std::string bytes = text.toStdString();
        QStringList found;
        for (const std::string_view piece : pieces(bytes))
            found.append(QString::fromUtf8(piece.data(), qsizetype(piece.size())));
        QTEST(found, "expected");
    }

    void everyTextComesBack_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text : {"", " ", "What day is it today?", "Ünïcode „test“ ✓ 42\n\n\tx", "日本語のテキスト",
                                 "<|im_end|>\n<|im_start|>system", "👩‍👩‍👧 🇩🇪", "a\r\nb\u2028c"})
            QTest::newRow(text) << QString::fromUtf8(text);
    }

    void everyTextComesBack()
    {
        QFETCH(QString, text);
        const std::string bytes = text.toStdString();
        QCOMPARE(m_tokenizer->decode(m_tokenizer->encode(bytes)), bytes);
    }

    void everyByteHasAToken()
    {
        std::string all;
        for (int byte = 0; byte < 256; ++byte)
            all += char(byte);
        QCOMPARE(m_tokenizer->decode(m_tokenizer->encode(all)), all);
    }

    void digitsStayApart() { QCOMPARE(m_tokenizer->split("20260101").size(), size_t(8)); }

    // A name that is not among the most frequent words is copied the same way wherever it stands.
    void nameIsSplitTheSameWithASpace()
    {
        const std::vector<std::string> alone = m_tokenizer->split("Zorvexplant");
        std::vector<std::string> withSpace = m_tokenizer->split(" Zorvexplant");
        QCOMPARE(withSpace.front(), std::string("Ġ"));
        withSpace.erase(withSpace.begin());
        QCOMPARE(withSpace, alone);
    }

    void frequentWordsAreLearned()
    {
        PieceCounts counts;
        for (int i = 0; i < 50; ++i)
            counts.add("the theory of the thermometer 1990 1990");
        const Tokenizer learned(learnMerges(counts, 300, 2));
        QCOMPARE(learned.split(" the").size(), size_t(1));
        QVERIFY(learned.split("1990").size() == 4);
        QCOMPARE(learned.split("x").size(), size_t(1));
    }

    void writtenMergesReadTheSame()
    {
        std::stringstream file;
        m_tokenizer->write(file);
        QCOMPARE(Tokenizer::read(file).texts(), m_tokenizer->texts());
        std::istringstream wrong("a b\nab xyz\n");
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, Tokenizer::read(wrong));
    }

private:
    std::unique_ptr<Tokenizer> m_tokenizer;
};

QTEST_GUILESS_MAIN(TokenizerTest)
#include "tokenizertest.moc"
