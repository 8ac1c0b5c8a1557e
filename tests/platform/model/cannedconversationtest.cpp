// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/scripted/cannedconversation.h"

#include "platform/model/outcome.h"
#include "platform/model/scripted/scriptedmodelservice.h"
#include "platform/model/streamlog.h"
#include "platform/model/testrecords.h"

#include <QTest>

using namespace lumora;
using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<ScriptedModelService> makeService()
{
    return std::make_shared<ScriptedModelService>([](const ReplyRequest &request) { return cannedReply(request, {}); });
}

} // namespace

class CannedConversationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainQuestionsHaveSeveralAnswers()
    {
        const auto service = makeService();
        LanguageModelSession session(SystemLanguageModel(service), {}, {});
        QSet<QString> texts;
        for (int question = 0; question < 50; ++question) {
            const auto log = streamOf(session, {QString::number(question), {}});
            QTRY_VERIFY(log->isComplete);
            QVERIFY(!log->snapshots.last().isEmpty());
            texts.insert(log->snapshots.last());
        }
        QVERIFY(texts.size() > 1);
    }

    void offeredToolIsCalledAndQuoted_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("date") << u"currentDate"_s;
        QTest::newRow("any other") << u"searchDocuments"_s;
    }

    void offeredToolIsCalledAndQuoted()
    {
        QFETCH(QString, name);
        TestTool tool;
        tool.name = name;
        tool.action = [](const QString &) { return "the tool's output"; };
        const auto service = makeService();
        LanguageModelSession session(SystemLanguageModel(service), {makeTool(tool)}, {});
        const auto log = streamOf(session, {});
        QTRY_VERIFY(log->isComplete);
        QVERIFY(log->snapshots.last().contains("the tool's output"));
    }

    void schemaIsAnsweredWithItsRecord()
    {
        const auto service = makeService();
        LanguageModelSession session(SystemLanguageModel(service), {makeTool(TestTool{})}, {});
        const auto card = outcomeOf(session.respond<TestCard>({}, IncludeSchemaInPrompt::yes, {}));
        QTRY_VERIFY(card->isDone());
        QVERIFY(card->value && !card->value->title.isEmpty() && !card->value->points.isEmpty());
    }
};

QTEST_GUILESS_MAIN(CannedConversationTest)
#include "cannedconversationtest.moc"
