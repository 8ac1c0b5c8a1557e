// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wire/frame.h"

#include <QTest>

#include <string>
#include <vector>

using namespace lumora::wire;

namespace {

const std::string threeFrames = frame("{}") + frame(std::string(70000, 'x')) + frame("\xE2\x82\xAC");

} // namespace

class FramesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void laysOutLengthThenBody()
    {
        const std::string bytes = frame(std::string(0x010203, 'a'));
        QCOMPARE(bytes.size(), std::size_t{4 + 0x010203});
        QCOMPARE(bytes.substr(0, 5), std::string("\x03\x02\x01\x00"
                                                 "a",
                                                 5));
    }

    void joinsPiecesOfAnySize()
    {
        for (const std::size_t pieceSize : {std::size_t(1), std::size_t(3), std::size_t(65536), threeFrames.size()}) {
            FrameReader reader;
            std::vector<std::string> all;
            for (std::size_t at = 0; at < threeFrames.size(); at += pieceSize) {
                reader.append(std::string_view(threeFrames).substr(at, pieceSize));
                while (auto body = reader.next())
                    all.push_back(std::move(*body));
            }
            QCOMPARE(all, (std::vector<std::string>{"{}", std::string(70000, 'x'), "\xE2\x82\xAC"}));
            QVERIFY(!reader.isBroken());
            QVERIFY(!reader.isInsideFrame());
        }
    }

    void waitsForACutFrame()
    {
        const std::string bytes = frame("{\"a\":1}");
        for (std::size_t length = 1; length < bytes.size(); ++length) {
            FrameReader reader;
            reader.append(std::string_view(bytes).substr(0, length));
            QVERIFY(!reader.next());
            QVERIFY(!reader.isBroken());
            QVERIFY(reader.isInsideFrame());
            reader.append(std::string_view(bytes).substr(length));
            QCOMPARE(reader.next().value_or(""), std::string("{\"a\":1}"));
        }
    }

    void breaksOnABadLength_data()
    {
        QTest::addColumn<QByteArray>("length");
        QTest::newRow("zero") << QByteArray("\0\0\0\0", 4);
        QTest::newRow("one above the limit") << QByteArray("\1\0\0\4", 4);
        QTest::newRow("text instead of a frame") << QByteArray("{\"ty", 4);
        QTest::newRow("all bits") << QByteArray("\xFF\xFF\xFF\xFF", 4);
    }

    void breaksOnABadLength()
    {
        QFETCH(QByteArray, length);
        FrameReader reader;
        reader.append(frame("{}") + length.toStdString() + frame("{}"));
        QCOMPARE(reader.next().value_or(""), std::string("{}"));
        QVERIFY(!reader.next());
        QVERIFY(reader.isBroken());
        reader.append(frame("{}"));
        QVERIFY(!reader.next());
    }

    void refusesToWriteWhatNobodyReads()
    {
        QVERIFY_THROWS_EXCEPTION(std::length_error, frame(""));
        QVERIFY_THROWS_EXCEPTION(std::length_error, frame(std::string(maximumBodySize + 1, 'x')));
        FrameReader reader;
        reader.append(frame(std::string(maximumBodySize, 'x')));
        QCOMPARE(reader.next().value_or("").size(), maximumBodySize);
    }
};

QTEST_GUILESS_MAIN(FramesTest)
#include "framestest.moc"
