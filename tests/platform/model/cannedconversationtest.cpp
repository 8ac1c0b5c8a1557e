// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/scripted/cannedconversation.h"

#include "platform/model/languagemodelsession.h"
#include "platform/model/outcome.h"
#include "platform/model/scripted/scriptedmodelservice.h"
#include "platform/model/testrecords.h"

#include <QTest>

using namespace lumora;
using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QString> lastSnapshot(ResponseStream stream)
{
    QString text;
    bool isComplete = false;
    while (!isComplete) {
        QCoro::Task<std::optional<Snapshot>> next = stream.next();
        const std::optional<Snapshot> snapshot = co_await next;
        isComplete = !snapshot;
        if (snapshot)
            text = snapshot->content;
    }
    co_return text;
}

std::shared_ptr<ScriptedModelService> makeService()
{
    return std::make_shared<ScriptedModelService>([](const ReplyRequest &request) { return cannedReply(request, {}); });
}

} // namespace

class CannedConversationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainQuestionsHaveSeveralAnswers();
    void offeredToolIsCalledAndQuoted_data();
    void offeredToolIsCalledAndQuoted();
    void schemaIsAnsweredWithItsRecord();
};

void CannedConversationTest::plainQuestionsHaveSeveralAnswers()
{
    const auto service = makeService();
    LanguageModelSession session(SystemLanguageModel(service), {}, {});
    QSet<QString> texts;
    for (int question = 0; question < 50; ++question) {
        const auto text = outcomeOf(lastSnapshot(session.streamResponse({QString::number(question), {}}, {})));
        QTRY_VERIFY(text->isDone());
        QVERIFY(text->value && !text->value->isEmpty());
        texts.insert(*text->value);
    }
    QVERIFY(texts.size() > 1);
}

void CannedConversationTest::offeredToolIsCalledAndQuoted_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("date") << u"currentDate"_s;
    QTest::newRow("any other") << u"searchDocuments"_s;
}

void CannedConversationTest::offeredToolIsCalledAndQuoted()
{
    QFETCH(QString, name);
    TestTool tool;
    tool.name = name;
    tool.action = [](const QString &) { return u"the tool's output"_s; };
    const auto service = makeService();
    LanguageModelSession session(SystemLanguageModel(service), {makeTool(tool)}, {});
    const auto text = outcomeOf(lastSnapshot(session.streamResponse({}, {})));
    QTRY_VERIFY(text->isDone());
    QVERIFY(text->value && text->value->contains(u"the tool's output"_s));
}

void CannedConversationTest::schemaIsAnsweredWithItsRecord()
{
    const auto service = makeService();
    LanguageModelSession session(SystemLanguageModel(service), {makeTool(TestTool{})}, {});
    const auto card = outcomeOf(session.respond<TestCard>({}, IncludeSchemaInPrompt::yes, {}));
    QTRY_VERIFY(card->isDone());
    QVERIFY(card->value && !card->value->title.isEmpty() && !card->value->points.isEmpty());
}

QTEST_GUILESS_MAIN(CannedConversationTest)
#include "cannedconversationtest.moc"
