// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/documentlibrary.h"
#include "features/structuredanswer.h"
#include "generation/promptassembly.h"
#include "generation/sessionsetup.h"
#include "generation/toolselection.h"
#include "platform/model/languagemodelsession.h"
#include "platform/model/local/wirerequest.h"
#include "platform/model/scripted/scriptedmodelservice.h"
#include "platform/text/dates.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace lumora;

namespace {

/// Locales of the date tool's answers, as the generator knows them.
constexpr std::array locales = {"C",     "en_US", "en_GB", "en_AU", "en_CA", "en_IN", "en_IE", "en_ZA", "en_NZ",
                                "de_DE", "de_AT", "fr_FR", "es_ES", "es_MX", "it_IT", "pt_BR", "pt_PT", "nl_NL",
                                "sv_SE", "da_DK", "nb_NO", "fi_FI", "pl_PL", "cs_CZ", "tr_TR", "ru_RU", "uk_UA",
                                "el_GR", "ja_JP", "zh_CN", "ko_KR", "hu_HU", "ro_RO"};
constexpr std::array moments = {1782000000000.0, 1768000030000.0}; // in summer and in winter

template <typename Keywords>
QJsonArray listed(const Keywords &keywords)
{
    QJsonArray list;
    for (const QStringView keyword : keywords)
        list.append(keyword.toString());
    return list;
}

QJsonObject keywords()
{
    return {{"currentDate", listed(dateToolKeywords)},
            {"readBarcodes", listed(barcodeKeywords)},
            {"readText", listed(ocrKeywords)},
            {"searchDocuments", listed(documentKeywords)}};
}

/// Its messages are numbers, so that what stands around them can be found.
QString sampleChat()
{
    using Role = ChatMessage::Role;
    Conversation chat;
    chat.messages = {{.role = Role::user, .text = "%1"},
                     {.role = Role::assistant, .text = "%2"},
                     {.role = Role::user, .text = "%3", .imageFilename = "A.png"},
                     {.role = Role::user, .text = "%4"}};
    return assemblePrompt(chat, {}, initialPromptBudget);
}

QString textOf(const std::string &utf8)
{
    return QString::fromStdString(utf8);
}

} // namespace

/// What the program sends to its model, as model/requests.json tells the generator of the training data.
class RequestsFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void isInStepWithTheProgram();

private:
    wire::Respond sent(const ToolList &tools, const std::optional<QString> &image, ReplyStyle style) const;
    ToolList everyTool() const;
    QJsonArray describedTools() const;
    QJsonObject outputs() const;
    QJsonObject written() const;

    const QTemporaryDir m_data;
    const ImageReader m_reader{QStringLiteral(IMAGE_READER)};
    std::unique_ptr<DocumentLibrary> m_library;
};

void RequestsFileTest::initTestCase()
{
    QFile document(m_data.filePath("a.txt"));
    QVERIFY(document.open(QIODevice::WriteOnly) && document.write("pets") == 4);
    document.close();
    QImage blank(200, 100, QImage::Format_Grayscale8);
    blank.fill(Qt::white);
    QVERIFY(blank.save(m_data.filePath("blank.png")));
    m_library = std::make_unique<DocumentLibrary>(m_data.path());
    m_library->add(QUrl::fromLocalFile(document.fileName()));
    QTRY_COMPARE(m_library->documents().size(), 1);
}

wire::Respond RequestsFileTest::sent(const ToolList &tools, const std::optional<QString> &image, ReplyStyle style) const
{
    const auto service = std::make_shared<ScriptedModelService>();
    LanguageModelSession session(SystemLanguageModel(service), tools, sessionInstructions());
    const Prompt prompt = makePrompt(sampleChat(), image);
    if (style == ReplyStyle::structured) {
        const auto answer = session.respond<StructuredAnswer>(prompt, IncludeSchemaInPrompt::yes, GenerationOptions());
        return toWire(1, service->requests().front(), {});
    }
    const ResponseStream stream = session.streamResponse(prompt, GenerationOptions());
    return toWire(1, service->requests().front(), {});
}

/// In the order in which a request offers them.
ToolList RequestsFileTest::everyTool() const
{
    const QString image = m_data.filePath("blank.png");
    ToolList tools = selectTools("today, the qr code", image, *m_library, m_reader);
    tools += selectTools("read my notes", image, *m_library, m_reader);
    return tools;
}

QJsonArray RequestsFileTest::describedTools() const
{
    QJsonArray tools;
    for (const wire::Tool &tool : sent(everyTool(), {}, ReplyStyle::chat).tools) {
        tools.append(QJsonObject{{"name", textOf(tool.name)},
                                 {"description", textOf(tool.description)},
                                 {"schema", textOf(tool.schema)},
                                 {"keywords", keywords().value(textOf(tool.name))}});
    }
    return tools;
}

/// What the tools say where they find nothing.
QJsonObject RequestsFileTest::outputs() const
{
    QJsonObject texts;
    for (const auto &tool : everyTool()) {
        if (tool->name() != QLatin1String("currentDate"))
            texts[tool->name()] = tool->call(GeneratedContent::fromJson(R"({"query":"unheard"})"), std::stop_token());
    }
    const ToolList without = selectTools("read", m_data.filePath("missing.png"), *m_library, m_reader);
    texts["unreadable"] = without.front()->call(GeneratedContent::fromJson("{}"), std::stop_token());
    return texts;
}

QJsonObject RequestsFileTest::written() const
{
    const wire::Respond structured = sent({}, {}, ReplyStyle::structured);
    QJsonArray dates;
    for (const char *const locale : locales) {
        for (const double moment : moments) {
            const QString text = fullDateTime(moment, QLatin1String(locale), "Europe/Berlin");
            dates.append(QJsonObject{{"locale", locale}, {"milliseconds", moment}, {"text", text}});
        }
    }
    return {{"instructions", textOf(structured.instructions)},
            {"tools", describedTools()},
            {"schema", textOf(structured.schema.value_or(std::string()))},
            {"prompt", textOf(sent({}, {}, ReplyStyle::chat).prompt)},
            {"structuredPrompt", textOf(structured.prompt)},
            {"structuredImagePrompt", textOf(sent({}, m_data.filePath("blank.png"), ReplyStyle::structured).prompt)},
            {"outputs", outputs()},
            {"dates", dates}};
}

void RequestsFileTest::isInStepWithTheProgram()
{
    const QByteArray now = QJsonDocument(written()).toJson();
    QFile committed(QStringLiteral(REQUESTS_FILE));
    QVERIFY(committed.open(QIODevice::ReadOnly));
    if (committed.readAll() == now)
        return;
    QFile update("requests.json");
    QVERIFY(update.open(QIODevice::WriteOnly) && update.write(now) == now.size());
    QFAIL(qPrintable(QStringLiteral("The program sends something else than model/requests.json says. What it sends now "
                                    "is in %1: copy that, and train the built-in model again.")
                         .arg(QFileInfo(update).absoluteFilePath())));
}

QTEST_GUILESS_MAIN(RequestsFileTest)
#include "tst_requestsfile.moc"
