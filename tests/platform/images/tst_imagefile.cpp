// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/images/imagefile.h"
#include "platform/vision/pictures.h"

#include <QBuffer>
#include <QColorSpace>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <sys/stat.h>

using namespace lumora;

class ImageFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void turnsUpright_data()
    {
        QTest::addColumn<int>("orientation");
        for (int orientation = 1; orientation <= 8; ++orientation)
            QTest::addRow("%d", orientation) << orientation;
    }

    void turnsUpright()
    {
        QFETCH(int, orientation);
        QImage upright(64, 32, QImage::Format_RGB32);
        upright.fill(Qt::white);
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 16; ++x)
                upright.setPixelColor(x, y, Qt::red);
        }
        const QString path = stored(test::jpegOfCamera(upright, orientation));
        QCOMPARE(imageSize(path), upright.size());
        for (const QSize largest : {QSize(), QSize(32, 1000)}) {
            const QImage image = readImage(path, largest).value_or(QImage());
            QCOMPARE(image.size(), largest.isEmpty() ? upright.size() : QSize(32, 16));
            const QColor corner = image.pixelColor(2, 2);
            QVERIFY2(corner.red() > 200 && corner.green() < 60, qPrintable(corner.name()));
            for (const QPoint point : {image.rect().topRight(), image.rect().bottomLeft(), image.rect().bottomRight()})
                QVERIFY(image.pixelColor(point).green() > 200);
        }
    }

    void readsWhatIsThere_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("name");
        QTest::newRow("no extension") << encoded("PNG") << "image.";
        QTest::newRow("another's extension") << encoded("JPEG") << "image.png";
        QTest::newRow("any name") << encoded("BMP") << QString::fromUtf8("a\nb \u202E ü.bmp");
        QTest::newRow("one that is not compressed") << encoded("PPM") << "image.ppm";
    }

    void readsWhatIsThere()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, name);
        const QImage image = readImage(stored(bytes, name)).value_or(QImage());
        QCOMPARE(image.size(), QSize(40, 20));
        QVERIFY(image.pixelColor(20, 10).blue() > 250);
        QCOMPARE(readImage(stored(bytes, name), {10, 10}).value_or(QImage()).size(), QSize(10, 5));
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("path");
        const auto add = [this](const char *name, const QByteArray &bytes) {
            QTest::newRow(name) << stored(bytes, QLatin1String(name) + QLatin1String(".png"));
        };
        QTest::newRow("missing") << m_folder.filePath("missing.png");
        QTest::newRow("folder") << m_folder.path();
        const QString pipe = m_folder.filePath("pipe.png");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QTest::newRow("pipe") << pipe;
        add("no bytes", {});
        add("text", "This is only text, whatever its name says.\n");
        add("a drawing", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"><rect width=\"9\" "
                         "height=\"9\"/></svg>");
        add("cut off", encoded("PNG", {2000, 2000}).chopped(100));
        // What a picture of white or of nothing compresses to: a header is all that a bomb needs.
        QByteArray bomb = encoded("PNG");
        qToBigEndian<quint32>(60000, bomb.data() + 16);
        qToBigEndian<quint32>(60000, bomb.data() + 20);
        const auto checksum = [](QByteArrayView bytes) {
            quint32 sum = ~0U;
            for (const char byte : bytes) {
                sum ^= uchar(byte);
                for (int bit = 0; bit < 8; ++bit)
                    sum = (sum >> 1) ^ (sum & 1 ? 0xEDB88320U : 0U);
            }
            return ~sum;
        };
        qToBigEndian<quint32>(checksum(QByteArrayView(bomb).sliced(12, 17)), bomb.data() + 29);
        add("bomb", bomb);
        const QString large = stored(encoded("BMP"), "large.bmp");
        QVERIFY(QFile::resize(large, imageLimits.fileBytes + 1));
        QTest::newRow("large file") << large;
    }

    void refuses()
    {
        QFETCH(QString, path);
        QVERIFY(!path.isEmpty());
        QVERIFY(!readImage(path));
        QVERIFY(!readImage(path, {100, 100}));
    }

    void convertsToOneColorSpace()
    {
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(QColor(0, 255, 0));
        image.setColorSpace(QColorSpace(QColorSpace::AdobeRgb));
        image = image.convertedToColorSpace(QColorSpace(QColorSpace::DisplayP3));
        const QColor stored = image.pixelColor(0, 0);
        const QString path = m_folder.filePath("wide.png");
        QVERIFY(image.save(path));
        const QImage read = readImage(path).value_or(QImage());
        QCOMPARE(read.colorSpace(), QColorSpace(QColorSpace::SRgb));
        QVERIFY(read.pixelColor(0, 0) != stored);
    }

private:
    static QByteArray encoded(const char *format, QSize size = {40, 20})
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::blue);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        return image.save(&buffer, format) ? bytes : QByteArray();
    }

    QString stored(const QByteArray &bytes, const QString &name = "image") const
    {
        const QString path = m_folder.filePath(name);
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? path : QString();
    }

    const QTemporaryDir m_folder;
};

QTEST_APPLESS_MAIN(ImageFileTest)
#include "tst_imagefile.moc"
