// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What a frame of the message list costs on the main thread: opening a chat of 5,000 messages, scrolling it from end to
// end, streaming into it; each against a plain list of the same texts. And what a snapshot of a reply of 20,000
// characters costs, in a short and in a long chat, against laying out its text. Prints JSON, in milliseconds of
// processor time.

#include "app/mainwindow.h"
#include "framewindow.h"
#include "platform/model/scripted/scriptedmodelservice.h"
#include "store/chatstore.h"
#include "store/historyfile.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStringListModel>
#include <QTemporaryDir>
#include <QTextLayout>
#include <QTextStream>

#include <array>
#include <ctime>
#include <memory>

using namespace lumora;

namespace {

constexpr int manyMessages = 5000;
constexpr int fewMessages = 20;
constexpr QSize windowSize(1080, 800);
constexpr qreal textWidth = 704; // as wide as that window's messages are
constexpr int bodySize = 14;

QQuickItem *itemOfType(QQuickItem *item, const char *type)
{
    if (QByteArray(item->metaObject()->className()).startsWith(type))
        return item;
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = itemOfType(child, type))
            return found;
    }
    return nullptr;
}

/// The program's own window.
class LumoraWindow final : public FrameWindow
{
public:
    explicit LumoraWindow(int messages);

protected:
    QQuickWindow *window() const override { return m_window->window(); }
    QQuickItem *list() const override { return m_list; }
    void openChat(int index) override { m_store->selectConversation(m_chats.at(size_t(index))); }
    void startReply(int snapshots, int growth) override;
    void showSnapshot() override;

private:
    QTemporaryDir m_data;
    std::shared_ptr<ScriptedModelService> m_model = std::make_shared<ScriptedModelService>();
    std::unique_ptr<ChatStore> m_store;
    std::unique_ptr<MainWindow> m_window;
    QQuickItem *m_list = nullptr;
    std::vector<QUuid> m_chats;
};

LumoraWindow::LumoraWindow(int messages)
{
    QDir(m_data.path()).mkpath(QStringLiteral("Lumora"));
    QFile file(m_data.filePath(QStringLiteral("Lumora/conversations.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(encodeConversations(framedChats(messages))) < 0)
        qFatal("The history cannot be written.");
    file.close();
    m_store = std::make_unique<ChatStore>(SystemLanguageModel(m_model), m_data.path());
    for (const Conversation &chat : m_store->conversations())
        m_chats.push_back(chat.id);
    // The store saves the chat that is left, which is measured elsewhere.
    QObject::connect(m_store.get(), &ChatStore::selectedIDChanged, m_store.get(), [this] { beginFrame(); });
    m_window = std::make_unique<MainWindow>();
    m_window->setStore(m_store.get());
    window()->resize(windowSize);
    m_list = itemOfType(window()->contentItem(), "MessageList");
}

void LumoraWindow::startReply(int snapshots, int growth)
{
    Script script;
    for (int i = 0; i < snapshots; ++i) {
        script.steps.append(Script::Hold{});
        script.steps.append(Script::Text{framedReply((i + 1) * growth).sliced(i * growth)});
    }
    script.steps.append(Script::Hold{});
    m_model->enqueue(script);
    m_store->setDraft(QStringLiteral("Go on"));
    m_store->send();
    while (!m_model->isHolding())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void LumoraWindow::showSnapshot()
{
    bool isThere = false;
    const auto connection =
        QObject::connect(m_store.get(), &ChatStore::messageChanged, m_store.get(), [&] { isThere = true; });
    m_model->release();
    while (!isThere)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(connection);
}

/// A list of plain texts, as large as the program's and with texts as wide.
class BareWindow final : public FrameWindow
{
public:
    explicit BareWindow(int messages);

protected:
    QQuickWindow *window() const override { return m_window.get(); }
    QQuickItem *list() const override { return m_list; }
    void openChat(int index) override;
    void startReply(int snapshots, int growth) override;
    void showSnapshot() override;

private:
    void showEnd() const { QMetaObject::invokeMethod(m_list, "positionViewAtEnd"); }

    QQmlEngine m_engine;
    std::array<QStringListModel, 2> m_chats;
    std::unique_ptr<QQuickWindow> m_window;
    QQuickItem *m_list = nullptr;
    int m_shown = 0;
    int m_length = 0;
    int m_growth = 0;
};

BareWindow::BareWindow(int messages)
{
    const std::vector<Conversation> chats = framedChats(messages);
    for (size_t i = 0; i < m_chats.size(); ++i) {
        QStringList texts;
        for (const ChatMessage &message : chats[i].messages)
            texts.append(message.text);
        m_chats[i].setStringList(texts);
    }
    QQmlComponent component(&m_engine);
    component.setData("import QtQuick\n"
                      "Window {\n"
                      "    height: 800; visible: true; width: 1080\n"
                      "    ListView {\n"
                      "        clip: true; height: 630; spacing: 20; width: 829; x: 251\n"
                      "        delegate: Text {\n"
                      "            required property string display\n"
                      "            font.pixelSize: 14; text: display; textFormat: Text.PlainText; width: 704\n"
                      "            wrapMode: Text.Wrap; x: 62\n"
                      "        }\n"
                      "    }\n"
                      "}\n",
                      {});
    m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
    if (!m_window)
        qFatal("%s", qPrintable(component.errorString()));
    m_list = itemOfType(m_window->contentItem(), "QQuickListView");
}

void BareWindow::openChat(int index)
{
    m_shown = index;
    m_list->setProperty("model", QVariant::fromValue(&m_chats.at(size_t(index))));
    showEnd();
}

void BareWindow::startReply(int, int growth)
{
    QStringListModel &chat = m_chats.at(size_t(m_shown));
    chat.insertRow(chat.rowCount());
    m_length = 0;
    m_growth = growth;
    showEnd();
}

void BareWindow::showSnapshot()
{
    QStringListModel &chat = m_chats.at(size_t(m_shown));
    m_length += m_growth;
    chat.setData(chat.index(chat.rowCount() - 1), framedReply(m_length));
    showEnd();
}

/// What laying out a text costs at least, each of its paragraphs once.
double layOutOnce(const QString &text)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(bodySize);
    const std::clock_t begin = std::clock();
    for (const QString &paragraph : text.split(QStringLiteral("\n\n"))) {
        QTextLayout layout(paragraph, font);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine())
            line.setLineWidth(textWidth);
        layout.endLayout();
    }
    return double(std::clock() - begin) * 1000 / CLOCKS_PER_SEC;
}

/// The median of the last snapshots of a long reply.
double longSnapshot(FrameWindow &window)
{
    FrameTimes frames = window.stream(220, 100);
    frames.erase(frames.begin(), frames.begin() + 180);
    return quantile(frames, 0.5);
}

QJsonObject against(const FrameTimes &lumora, const FrameTimes &bare)
{
    return {{QStringLiteral("lumora"), quantile(lumora, 0.99)}, {QStringLiteral("bare"), quantile(bare, 0.99)}};
}

} // namespace

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    QJsonObject results;
    {
        LumoraWindow lumora(manyMessages);
        BareWindow bare(manyMessages);
        results[QStringLiteral("open")] = against(lumora.open(60), bare.open(60));
        results[QStringLiteral("scroll")] = against(lumora.scroll(240), bare.scroll(240));
        results[QStringLiteral("stream")] = against(lumora.stream(400, 50), bare.stream(400, 50));
    }
    {
        LumoraWindow lumora(manyMessages);
        results[QStringLiteral("snapshotOfLongChat")] = longSnapshot(lumora);
    }
    {
        LumoraWindow lumora(fewMessages);
        results[QStringLiteral("snapshotOfShortChat")] = longSnapshot(lumora);
    }
    FrameTimes layouts;
    for (int i = 0; i < 21; ++i)
        layouts.push_back(layOutOnce(framedReply(20000)));
    results[QStringLiteral("layout")] = quantile(layouts, 0.5);
    QTextStream(stdout) << QJsonDocument(results).toJson();
    return 0;
}
