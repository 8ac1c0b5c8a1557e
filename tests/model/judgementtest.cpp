// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "evaluation/judgement.h"

#include <QJsonDocument>
#include <QTest>

using namespace lumora::evaluation;

class JudgementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replyIsJudged_data()
    {
        QTest::addColumn<QString>("expect");
        QTest::addColumn<QString>("tool"); // that was called with the query "red saw"; empty: none was
        QTest::addColumn<QString>("reply");
        QTest::addColumn<QString>("right"); // what of call, content and citation is

        const char *const search =
            R"({"tool":"find","argument_contains":["Saw"],"contains":["in May"],"cites":"A.txt"})";
        const char *const card =
            R"({"tool":null,"structured":{"title":"T","summary":["now"],"points":["a"],"steps":[]}})";
        QTest::newRow("all") << search << "find"
                             << "It was in  May.\n\nSource: A.txt"
                             << "call content citation";
        QTest::newRow("no call") << search << ""
                                 << "In May. A.txt"
                                 << "citation";
        QTest::newRow("another tool") << search << "look"
                                      << "in May"
                                      << "content";
        QTest::newRow("unwanted call") << R"({"tool":null,"exact":"Hi"})"
                                       << "find"
                                       << "Hi"
                                       << "content citation";
        QTest::newRow("exact") << R"({"tool":null,"exact":"- a\n- b"})"
                               << ""
                               << "- a - b"
                               << "call content citation";
        QTest::newRow("more than exact") << R"({"tool":null,"exact":"Hi"})"
                                         << ""
                                         << "Hi there"
                                         << "call citation";
        QTest::newRow("missing argument") << R"({"tool":"find","argument_contains":["blue"]})"
                                          << "find"
                                          << ""
                                          << "content citation";
        QTest::newRow("card") << card << ""
                              << R"({"title":"T","summary":"Do it now.","keyPoints":["a"],"nextSteps":[]})"
                              << "call content citation";
        QTest::newRow("card with another point") << card << ""
                                                 << R"({"title":"T","summary":"now","keyPoints":["b"],"nextSteps":[]})"
                                                 << "call citation";
        QTest::newRow("card that is text") << card << ""
                                           << "now"
                                           << "call citation";
    }

    void replyIsJudged()
    {
        QFETCH(QString, expect);
        QFETCH(QString, tool);
        QFETCH(QString, reply);
        Reply made;
        made.text = reply;
        if (!tool.isEmpty())
            made.calls = {{tool, QStringLiteral(R"({"query":"red saw"})")}};
        const Judgement judgement = judge(QJsonDocument::fromJson(expect.toUtf8()).object(), made);
        QStringList right;
        if (judgement.call)
            right << "call";
        if (judgement.content)
            right << "content";
        if (judgement.citation)
            right << "citation";
        QTEST(right.join(' '), "right");
    }

    void failureIsWrong()
    {
        Reply reply;
        reply.failure = "The model is gone.";
        QVERIFY(!judge({{"tool", QJsonValue()}}, reply).isRight());
    }
};

QTEST_GUILESS_MAIN(JudgementTest)
#include "judgementtest.moc"
