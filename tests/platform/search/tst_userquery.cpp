// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/searchhelpers.h"

#include <QTemporaryDir>
#include <QTest>

using namespace lumora;

namespace {

struct Document
{
    QString identifier;
    QString title;
    QString text;
};

} // namespace

class UserQueryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void findsWordsInEveryForm_data();
    void findsWordsInEveryForm();
    void putsTheBestFirst_data();
    void putsTheBestFirst();
    void ranksByRareWordsInALargeLibrary();
    void takesAnyTextForAQuestion_data();
    void takesAnyTextForAQuestion();
    void fetchesWhatIsAskedFor_data();
    void fetchesWhatIsAskedFor();
    void findsNothingWhereThereIsNothing();

private:
    void add(const QList<Document> &documents);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<SearchIndex> m_index;
};

void UserQueryTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_index = std::make_shared<SearchIndex>(m_folder->filePath("index"));
}

void UserQueryTest::add(const QList<Document> &documents)
{
    QList<SearchableItem> items;
    for (const Document &document : documents)
        items.append({document.identifier, "domain", document.title, document.text, "described as " + document.text});
    QCOMPARE(failureOf(m_index->indexSearchableItems(items)), QString());
}

void UserQueryTest::findsWordsInEveryForm_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("isFound");
    const auto add = [](const char *name, const QString &text, const QString &question, bool isFound) {
        QTest::newRow(name) << text << question << isFound;
    };

    const QString chinese = "租约规定租户可以养宠物，但须支付押金。北京市";
    add("Chinese", chinese, "宠物", true);
    add("Chinese, a question", chinese, "租户可以养什么宠物？", true);
    add("Chinese, a compound's beginning", chinese, "北京", true);
    add("Chinese, across words", chinese, "付押", false);
    const QString japanese = "ペットを飼う場合は、大家の許可が必要です。";
    add("Japanese", japanese, "許可", true);
    add("Japanese, narrow katakana", japanese, "ﾍﾟｯﾄ", true);
    add("Japanese, another sound mark", "バス停", "ハス", false);
    add("Thai", "สัญญาเช่าอนุญาตให้เลี้ยงสัตว์ได้", "สัตว์", true);
    add("Thai, another tone", "เขาเดินเข้าป่าใหญ่", "ปา", false);
    add("Korean, with a particle", "계약서에 고양이가 있습니다", "고양이", true);
    add("German, umlaut and case", "Überprüfung der Straße", "UBERPRUFUNG", true);
    add("German, sharp s", "Überprüfung der Straße", "strasse", true);
    add("accents typed apart", "cafe\u0301", "CAFÉ", true);
    add("Polish, a stroke", "Łódź", "lodz", true);
    add("French, an elision", "l’élève", "eleve", true);
    add("Turkish, a dotted capital", "İSTANBUL", "istanbul", true);
    add("Greek, final sigma", "Οδυσσέας", "ΟΔΥΣΣΕΑΣ", true);
    add("Russian", "Ёлка", "елка", true);
    add("Arabic, vowel signs", "كِتَابٌ", "كتاب", true);
    add("Hebrew, vowel points", "שָׁלוֹם", "שלום", true);
    add("Hebrew, an abbreviation", "צה״ל", "צה\"ל", true);
    add("wide letters", "ＬＥＡＳＥ", "lease", true);
    add("ligature, soft hyphen", "oﬃce agree\u00ADment", "office agreement", true);

    const QString english = "The landlord's policies: children pay, on 12.05.2024, at example.com, for running water.";
    add("plural", english, "policy", true);
    add("singular", "a policy", "policies", true);
    add("ending", english, "runs", true);
    add("irregular plural", english, "child", true);
    add("irregular verb", english, "who paid", true);
    add("possessive", english, "landlord", true);
    add("part of a date", english, "2024", true);
    add("part of an address", english, "example", true);
    add("part of a word", english, "lord", false);
}

void UserQueryTest::findsWordsInEveryForm()
{
    QFETCH(QString, text);
    QFETCH(QString, question);
    add({{"it", "Title", text}, {"other", "Title", "nothing of the kind"}});
    QTEST(found(m_index, question) == QStringList{"it"}, "isFound");
}

void UserQueryTest::putsTheBestFirst_data()
{
    QTest::addColumn<QList<Document>>("documents");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QStringList>("best"); // and nothing else

    const QString filler = QString(" and so on with many other things").repeated(100);
    const QString question = "What does the lease say about pets?";
    QTest::newRow("words of the title weigh more")
        << QList<Document>{{"text", "Rules", "pets, and again pets"}, {"title", "Pets", "Dogs and cats."}} << question
        << QStringList{"title", "text"};
    QTest::newRow("all words before the most frequent one, in a library of two")
        << QList<Document>{{"one", "Lease", QString("lease ").repeated(50)},
                           {"all", "Notes", "The lease allows pets." + filler}}
        << question << QStringList{"all", "one"};
    QTest::newRow("a rare word before a common one") << QList<Document>{{"c1", "A", "lease lease lease"},
                                                                        {"c2", "B", "lease"},
                                                                        {"c3", "C", "lease, a second lease"},
                                                                        {"rare", "D", "pets" + filler}}
                                                     << question << QStringList{"rare", "c1", "c3", "c2"};
    QTest::newRow("stop words bring in nothing")
        << QList<Document>{{"stop", "What", "what does the say about what does the"}, {"it", "D", "pets"}} << question
        << QStringList{"it"};
    QTest::newRow("stop words alone are words")
        << QList<Document>{{"it", "Play", "to be or not to be"}, {"no", "Play", "lease"}} << "to be or not to be"
        << QStringList{"it"};
}

void UserQueryTest::putsTheBestFirst()
{
    QFETCH(QList<Document>, documents);
    QFETCH(QString, question);
    add(documents);
    QTEST(found(m_index, question), "best");
}

// Where there are many documents, words that most of them hold are looked up in a way of their own.
void UserQueryTest::ranksByRareWordsInALargeLibrary()
{
    QList<Document> documents;
    for (int i = 0; i < 1100; ++i)
        documents.append({QString::number(i), "Agreement", "the lease"});
    documents[700].text = "lease and pets and a garden, and more that makes it longer";
    documents[800].text = "pets";
    add(documents);
    QCOMPARE(found(m_index, "lease pets", 2), (QStringList{"700", "800"}));
    QCOMPARE(found(m_index, "lease garden", 3).size(), 3);
    QCOMPARE(found(m_index, "lease garden", 3).first(), "700");
    QCOMPARE(found(m_index, "agreement lease").size(), 1000);
}

void UserQueryTest::takesAnyTextForAQuestion_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("isFound");
    for (const char *question :
         {"pets\"", "\"pets", "pets\" OR \"", "pets AND", "NOT pets", "title:pets", "title : pets", "pets*", "* pets",
          "NEAR(pets lease, 2)", "^pets", "{title} : pets", "-pets", "((((pets", "pets + +",
          "'; DROP TABLE items; -- pets", "?1 pets", "🐈‍⬛ pets 👍🏽"})
        QTest::newRow(question) << QString(question) << true;
    QTest::newRow("NUL") << QString::fromLatin1("lease\0pets", 10) << true;
    QTest::newRow("half of a surrogate pair") << QString(QChar(0xD83D)) + "pets" + QChar(0xDC08) << true;
    QTest::newRow("a megabyte of words") << QString("pets ").repeated(200'000) << true;
    QTest::newRow("a megabyte of a word") << QString("pets").repeated(250'000) << false;
    QString different = "pets";
    for (int i = 0; i < 10'000; ++i)
        different += " word" + QString::number(i);
    QTest::newRow("ten thousand words") << different << true;
    QTest::newRow("emoji") << "👍🏽" << false;
    QTest::newRow("punctuation") << "\"*():^-+{}'" << false;
    QTest::newRow("white space") << " \n\t" << false;
    QTest::newRow("empty") << "" << false;
}

void UserQueryTest::takesAnyTextForAQuestion()
{
    QFETCH(QString, question);
    add({{"it", "Rules", "pets"}});
    QTEST(found(m_index, question) == QStringList{"it"}, "isFound");
}

void UserQueryTest::fetchesWhatIsAskedFor_data()
{
    QTest::addColumn<QStringList>("attributes");
    QTest::addColumn<qsizetype>("most");
    QTest::newRow("none") << QStringList{} << qsizetype(3);
    QTest::newRow("title and text") << QStringList{"title", "textContent"} << qsizetype(2);
    QTest::newRow("description") << QStringList{"contentDescription", "unknown"} << qsizetype(1);
    QTest::newRow("no result") << QStringList{"title"} << qsizetype(0);
    QTest::newRow("more than there are") << QStringList{"title"} << qsizetype(100);
}

void UserQueryTest::fetchesWhatIsAskedFor()
{
    QFETCH(QStringList, attributes);
    QFETCH(qsizetype, most);
    const SearchableItem whole{"1", "domain", "Title", QString::fromUtf8("\uFEFFpets\0 and more", 17), QString("")};
    QList<SearchableItem> items(4, whole);
    for (int i = 1; i < items.size(); ++i)
        items[i].uniqueIdentifier = QString::number(i + 1);
    QCOMPARE(failureOf(m_index->indexSearchableItems(items)), QString());

    UserQuery query(m_index, "pets", {attributes, most});
    int count = 0;
    while (const std::optional<SearchableItem> item = query.next()) {
        SearchableItem expected = items[count++];
        for (const auto &[name, member] :
             {std::pair("title", &SearchableItem::title), std::pair("textContent", &SearchableItem::textContent),
              std::pair("contentDescription", &SearchableItem::contentDescription)}) {
            if (!attributes.contains(name))
                expected.*member = QString();
            QCOMPARE(((*item).*member).isNull(), (expected.*member).isNull());
        }
        QCOMPARE(*item, expected);
    }
    QCOMPARE(count, std::min<qsizetype>(most, items.size()));
    QVERIFY(!query.next());
}

void UserQueryTest::findsNothingWhereThereIsNothing()
{
    QCOMPARE(found(m_index, "pets"), QStringList());
    QVERIFY(!QFile::exists(m_folder->filePath("index")));
    m_index = std::make_shared<SearchIndex>(m_folder->filePath("no such folder/index"));
    QCOMPARE(found(m_index, "pets"), QStringList());
}

QTEST_GUILESS_MAIN(UserQueryTest)
#include "tst_userquery.moc"
