// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/pictures.h"
#include "platform/vision/reader/contents.h"
#include "platform/vision/reader/textrecognizer.h"

#include <QFile>
#include <QLinearGradient>
#include <QPainter>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace lumora;

class WritingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void reads_data();
    void reads();
    void readsThePricesOfAReceipt_data();
    void readsThePricesOfAReceipt();
    void saysThatThereIsNothing_data();
    void saysThatThereIsNothing();
    void endsInTime();

private:
    Reading read(const QImage &image) const;

    static QStringList sampleLines();
    const QTemporaryDir m_folder;
};

/// A sheet of paper that lies aslant on a table, with a lamp on one side.
static QImage photographed(QImage page)
{
    QLinearGradient shade(0, 0, page.width(), page.height() / 4.0);
    shade.setColorAt(0, QColor(255, 255, 255));
    shade.setColorAt(1, QColor(60, 60, 60));
    QPainter painter(&page);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(page.rect(), shade);
    painter.end();

    QImage photo(page.size() * 1.4, QImage::Format_RGB32);
    photo.fill(QColor(120, 90, 60));
    painter.begin(&photo);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(80, 120);
    painter.rotate(-8);
    painter.drawImage(0, 0, page);
    return photo;
}

/// Specks in rows, more of them than a page has letters.
static QImage specks()
{
    QImage image(2000, 1500, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    for (int y = 0; y < image.height(); y += 6) {
        for (int x = y % 4; x < image.width(); x += 6)
            image.setPixel(x, y, 0);
    }
    return image;
}

QStringList WritingTest::sampleLines()
{
    return {"The lease begins on the first of March and", "ends after twelve months. The rent is 850 euros.", "",
            "Two cats may live in the flat, but no dogs.", "Bicycles are kept in the cellar, room 14."};
}

Reading WritingTest::read(const QImage &image) const
{
    QFile file(m_folder.filePath(QStringLiteral("picture.png")));
    if (!image.save(file.fileName()) || !file.open(QIODevice::ReadOnly))
        return {.content = QStringLiteral("(not saved)")};
    return readWriting(file.handle(), {QStringLiteral("en-GB")});
}

void WritingTest::initTestCase()
{
    QVERIFY2(installedRecognitionLanguages().contains(QStringLiteral("eng")), "needs the package tesseract-ocr-eng");
}

void WritingTest::reads_data()
{
    QTest::addColumn<QImage>("picture");
    const QStringList lines = sampleLines();
    const QImage page = test::written({.lines = lines});
    QTest::newRow("page") << page;
    QTest::newRow("dark screenshot") << test::written(
        {.lines = lines, .pixelSize = 16, .ink = QColor(220, 220, 220), .ground = QColor(30, 30, 34)});
    QTest::newRow("small") << test::written({.lines = lines, .pixelSize = 9});
    QTest::newRow("white on nothing") << test::written({.lines = lines, .ink = Qt::white, .ground = Qt::transparent});
    QTest::newRow("black on nothing") << test::written({.lines = lines, .ground = Qt::transparent});
    QTest::newRow("photo in uneven light") << photographed(page);
    QTest::newRow("upside down") << page.mirrored(true, true);
}

/// The words of a text, without their punctuation.
static QSet<QString> wordsOf(const QString &text)
{
    static const QRegularExpression gaps(QStringLiteral("[^\\w]+"));
    const QStringList words = text.split(gaps, Qt::SkipEmptyParts);
    return {words.begin(), words.end()};
}

void WritingTest::reads()
{
    QFETCH(QImage, picture);
    const QString text = read(picture).content;
    const QSet<QString> missing = wordsOf(sampleLines().join(u' ')) - wordsOf(text);
    QVERIFY2(missing.size() <= 1, qPrintable(text));
    QVERIFY2(text.contains(u'\n'), "lines are kept apart");
}

void WritingTest::readsThePricesOfAReceipt_data()
{
    QTest::addColumn<QColor>("light"); // on one side, and on the other one
    QTest::addColumn<QColor>("shade");
    QTest::newRow("on a table") << QColor(Qt::white) << QColor(Qt::white);
    QTest::newRow("in dim light") << QColor(110, 80, 60) << QColor(55, 45, 35);
}

void WritingTest::readsThePricesOfAReceipt()
{
    QFETCH(QColor, light);
    QFETCH(QColor, shade);
    const QStringList lines{"Espresso 4.80",   "Croissant 3.20", "Apple juice 3.50",
                            "TOTAL EUR 11.50", "CASH 20.00",     "CHANGE 8.50"};
    QImage photo(700, 600, QImage::Format_RGB32);
    photo.fill(QColor(107, 74, 47));
    QPainter painter(&photo);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.rotate(-3);
    painter.fillRect(100, 100, 500, 400, Qt::white);
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setPixelSize(30);
    painter.setFont(font);
    for (int i = 0; i < lines.size(); ++i) {
        const qsizetype price = lines[i].lastIndexOf(u' ');
        painter.drawText(140, 180 + 40 * i, lines[i].left(price));
        painter.drawText(QRect(440, 150 + 40 * i, 120, 40), Qt::AlignRight, lines[i].mid(price + 1));
    }
    painter.resetTransform();
    QLinearGradient gradient(0, 0, photo.width(), photo.height());
    gradient.setColorAt(0, light);
    gradient.setColorAt(1, shade);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(photo.rect(), gradient);
    painter.end();
    QCOMPARE(read(photo).content.split(u'\n'), lines);
}

void WritingTest::saysThatThereIsNothing_data()
{
    QTest::addColumn<QImage>("picture");
    QImage blank(800, 600, QImage::Format_RGB32);
    blank.fill(Qt::white);
    QTest::newRow("blank") << blank;
    QTest::newRow("one pixel") << blank.copy(0, 0, 1, 1);
    QTest::newRow("a line") << blank.copy(0, 0, 800, 1);
    QTest::newRow("noise") << test::noise({2500, 2000});
    QTest::newRow("specks") << specks();
}

void WritingTest::saysThatThereIsNothing()
{
    QFETCH(QImage, picture);
    QCOMPARE(read(picture), Reading());
}

void WritingTest::endsInTime()
{
    TextRecognizer recognizer;
    QVERIFY(!recognizer.load({}));
    QVERIFY(recognizer.load({QStringLiteral("eng")}));
    const PagePicture page =
        pagePicture(test::written({.lines = sampleLines()}).convertToFormat(QImage::Format_Grayscale8));
    const auto cutShort = recognizer.recognize(page, TextRecognizer::Layout::page, QDeadlineTimer(0));
    QVERIFY(!cutShort.isComplete);
    QCOMPARE(readableText(cutShort.lines, 40), QString());
    QVERIFY(recognizer.recognize(page, TextRecognizer::Layout::page, QDeadlineTimer::Forever).isComplete);
}

QTEST_MAIN(WritingTest)
#include "tst_writing.moc"
