// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/libraryfixture.h"

#include <sys/stat.h>

using namespace lumora;

class IndexRepairTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<LibraryFixture>(); }

    void survivesTheLossOfItsIndex_data();
    void survivesTheLossOfItsIndex();
    void removesWhileTheIndexIsMadeAgain();
    void closingStopsIt();

private:
    std::unique_ptr<LibraryFixture> m_fixture;
};

void IndexRepairTest::survivesTheLossOfItsIndex_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"damaged", "gone", "taken"})
        QTest::newRow(how) << QString(how);
}

void IndexRepairTest::survivesTheLossOfItsIndex()
{
    QFETCH(QString, how);
    auto library = m_fixture->open();
    m_fixture->import(*library, m_fixture->pick("a.txt", "lease"));
    m_fixture->import(*library, m_fixture->pick("b.txt", "lease"));
    library.reset(); // which waits for all that it does
    if (how == "damaged")
        QVERIFY(QFile::resize(m_fixture->indexPath(), 1000));
    else
        QVERIFY(QFile::remove(m_fixture->indexPath()));
    if (how == "taken")
        QVERIFY(QDir().mkpath(m_fixture->indexPath() + "/in the way"));
    library = m_fixture->open();
    if (how == "taken") {
        m_fixture->import(*library, m_fixture->pick("c.txt", "lease"));
        QVERIFY(library->errorMessage().startsWith(notImported));
        QCOMPARE(library->documents().size(), 2);
        QCOMPARE(m_fixture->copies().size(), 3);
        QVERIFY(QDir(m_fixture->indexPath()).removeRecursively());
    }
    m_fixture->import(*library, m_fixture->pick("c.txt", "lease"));
    QVERIFY(library->errorMessage().isNull());
    QTRY_COMPARE(m_fixture->indexed(*library, "lease").size(), 3);

    // A search notices it only, and the documents are stored again after it.
    QVERIFY(QFile::resize(m_fixture->indexPath(), 1000));
    QVERIFY(m_fixture->indexed(*library, "lease").isEmpty());
    QTRY_VERIFY(!QFile::exists(m_fixture->indexPath()));
    library->completeIndex();
    QTRY_COMPARE(m_fixture->indexed(*library, "lease").size(), 3);
}

void IndexRepairTest::removesWhileTheIndexIsMadeAgain()
{
    auto library = m_fixture->open();
    m_fixture->helperSays("echo lease");
    m_fixture->import(*library, m_fixture->pick("a.pdf", "a"));
    m_fixture->import(*library, m_fixture->pick("b.txt", "lease"));
    library.reset();
    QVERIFY(QFile::remove(m_fixture->indexPath()));
    library = m_fixture->open();
    QCOMPARE(::mkfifo(QFile::encodeName(m_fixture->path("go")).constData(), 0600), 0);
    m_fixture->helperSays("touch started; cat go; echo lease");
    library->completeIndex();
    QTRY_VERIFY(QFile::exists(m_fixture->path("started")));
    library->remove(library->documents().front());
    QFile go(m_fixture->path("go"));
    QVERIFY(go.open(QIODevice::WriteOnly));
    go.close();
    QTRY_COMPARE(m_fixture->indexed(*library, "lease").size(), 1);
    QCOMPARE(m_fixture->indexed(*library, "lease").front().title, "b.txt");
}

void IndexRepairTest::closingStopsIt()
{
    auto library = m_fixture->open();
    m_fixture->helperSays("echo lease");
    m_fixture->import(*library, m_fixture->pick("a.pdf", "a"));
    library.reset();
    QVERIFY(QFile::remove(m_fixture->indexPath()));
    library = m_fixture->open();
    m_fixture->helperSays("touch started; exec sleep 600");
    library->completeIndex();
    QTRY_VERIFY(QFile::exists(m_fixture->path("started")));
    library.reset();

    m_fixture->helperSays("echo lease");
    library = m_fixture->open();
    library->completeIndex();
    QTRY_COMPARE(m_fixture->indexed(*library, "lease").size(), 1);
}

QTEST_GUILESS_MAIN(IndexRepairTest)
#include "tst_indexrepair.moc"
