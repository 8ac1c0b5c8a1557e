// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/scripted/scriptedmodelservice.h"
#include "store/chatstore.h"
#include "store/historyfile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

namespace lumora {

/// A data directory and a scripted model, on which any number of stores may start one after another.
class StoreFixture
{
public:
    std::unique_ptr<ChatStore> start() const
    {
        return std::make_unique<ChatStore>(SystemLanguageModel(model), data.path());
    }

    QString path(const QString &name) const { return data.filePath("Lumora/" + name); }
    QString historyPath() const { return path("conversations.json"); }

    void write(const QString &name, const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(name));
    }
    void write(const std::vector<Conversation> &conversations) const
    {
        write("conversations.json", encodeConversations(conversations));
    }
    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    std::vector<Conversation> saved() const { return decodeConversations(read("conversations.json")).value(); }
    /// Makes every save fail until it is made writable again: a folder stands in the way of the file.
    void blockHistory() const
    {
        QFile::remove(historyPath());
        QDir().mkpath(historyPath() + "/in the way");
    }
    void unblockHistory() const { QDir(historyPath()).removeRecursively(); }

    QTemporaryDir data;
    std::shared_ptr<ScriptedModelService> model = std::make_shared<ScriptedModelService>();
};

inline ChatMessage userMessage(const QString &text)
{
    return {.role = ChatMessage::Role::user, .text = text};
}

inline ChatMessage assistantMessage(const QString &text)
{
    return {.role = ChatMessage::Role::assistant, .text = text};
}

inline Conversation conversation(const QString &title, double updatedAt, std::vector<ChatMessage> messages = {})
{
    return {.title = title, .messages = std::move(messages), .updatedAt = {updatedAt}};
}

inline QStringList titles(const std::vector<Conversation> &conversations)
{
    QStringList result;
    for (const Conversation &each : conversations)
        result.append(each.title);
    return result;
}

} // namespace lumora
