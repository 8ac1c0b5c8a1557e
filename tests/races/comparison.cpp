// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "races/comparison.h"

#include "documents/listfile.h"
#include "store/historyfile.h"

#include <QDir>
#include <QFile>

namespace lumora::races {

namespace {

/// Takes what differs first.
class Differences
{
public:
    explicit Differences(const TimePoint &since = TimePoint())
        : m_since(since)
    {
    }

    const QString &first() const { return m_first; }

    template <typename Value>
    void same(const char *what, const Value &expected, const Value &found)
    {
        if (m_first.isEmpty() && !(expected == found))
            m_first = QString("%1 is %2 instead of %3").arg(what, said(found), said(expected));
    }

    void identifier(const char *what, QUuid &expected, const QUuid &found)
    {
        if (expected.isNull())
            expected = found;
        same(what, expected, found);
        same(what, false, found.isNull());
    }

    void time(const char *what, TimePoint &expected, const TimePoint &found)
    {
        if (std::isnan(expected.secondsSinceReference) && m_since <= found && found <= TimePoint::now())
            expected = found;
        same(what, expected, found);
    }

    void text(const char *what, QString &expected, const QString &found)
    {
        const qsizetype open = expected.indexOf('*');
        if (open >= 0 && found.size() > expected.size() && found.startsWith(expected.first(open)) &&
            found.endsWith(expected.sliced(open + 1)))
            expected = found;
        same(what, expected, found);
    }

private:
    static QString said(const QString &text) { return "“" + text + "”"; }
    static QString said(const QUuid &id) { return id.toString(); }
    static QString said(const TimePoint &time) { return QString::number(time.secondsSinceReference, 'f', 6); }
    static QString said(const std::optional<QString> &text) { return text ? said(*text) : "none"; }
    static QString said(const QStringList &texts) { return texts.join(' '); }
    template <typename Number>
        requires std::is_integral_v<Number>
    static QString said(Number number)
    {
        return QString::number(number);
    }
    template <typename Other>
        requires(!std::is_integral_v<Other>)
    static QString said(const Other &)
    {
        return "another";
    }

    TimePoint m_since;
    QString m_first;
};

void compare(ChatMessage &expected, const ChatMessage &found, Differences &differences)
{
    differences.identifier("a message's identifier", expected.id, found.id);
    differences.time("a message's date", expected.date, found.date);
    differences.same("a message's text", expected.text, found.text);
    if (expected.toolEvents && found.toolEvents && expected.toolEvents->size() == found.toolEvents->size()) {
        for (qsizetype i = 0; i < found.toolEvents->size(); ++i) {
            ToolEvent &event = (*expected.toolEvents)[i];
            event.id = found.toolEvents->at(i).id;
            differences.same("a call's name", event.name, found.toolEvents->at(i).name);
            differences.same("a call's status", event.status, found.toolEvents->at(i).status);
            differences.same("a call without identifier", false, event.id.isEmpty());
        }
    }
    differences.same("the number of a reply's calls", expected.toolEvents.value_or(QList<ToolEvent>()).size(),
                     found.toolEvents.value_or(QList<ToolEvent>()).size());
    differences.same("a message", expected, found);
}

void compare(Conversation &expected, const Conversation &found, Differences &differences)
{
    differences.identifier("a chat's identifier", expected.id, found.id);
    differences.same("a chat's title", expected.title, found.title);
    differences.time("the time of a chat", expected.updatedAt, found.updatedAt);
    std::vector<ChatMessage> &messages = expected.messages.all();
    const std::vector<ChatMessage> others = messagesOf(found);
    differences.same("the number of messages", messages.size(), others.size());
    for (size_t i = 0; i < std::min(messages.size(), others.size()); ++i)
        compare(messages[i], others[i], differences);
}

void comparePending(StoreRules &expected, const ChatStore &store, Differences &differences)
{
    differences.same("an image pending", expected.pendingImage.has_value(), store.pendingImageURL().has_value());
    if (!expected.pendingImage || !store.pendingImageURL())
        return;
    expected.images.remove(*expected.pendingImage);
    differences.text("the pending image", *expected.pendingImage, QFileInfo(*store.pendingImageURL()).fileName());
    expected.images.insert(*expected.pendingImage);
}

QSet<QString> filesIn(const QString &folder)
{
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    return {names.begin(), names.end()};
}

} // namespace

std::vector<ChatMessage> messagesOf(const Conversation &conversation)
{
    const QByteArray packed = conversation.messages.packedJson();
    return packed.isNull() ? conversation.messages.all() : decodeMessages(packed);
}

QString compare(StoreRules &expected, const ChatStore &store, const TimePoint &since)
{
    Differences differences(since);
    const std::vector<Conversation> &found = store.conversations();
    differences.same("the number of chats", expected.conversations.size(), found.size());
    for (size_t i = 0; i < std::min(found.size(), expected.conversations.size()); ++i)
        compare(expected.conversations[i], found[i], differences);
    if (expected.selectedID.isNull())
        expected.selectedID = expected.conversations.front().id;
    differences.same("the selected chat", expected.selectedID, store.selectedID().value_or(QUuid()));
    if (const Conversation *conversation = expected.run ? expected.find(expected.run->conversationID) : nullptr;
        conversation && expected.run->messageID.isNull())
        expected.run->messageID = conversation->messages.back().id;
    comparePending(expected, store, differences);
    differences.same("the draft", expected.draft, store.draft());
    differences.same("the reply style", expected.replyStyle, store.replyStyle());
    differences.same("the context's tokens", expected.contextTokens, store.contextTokens());
    differences.same("generating", expected.isGenerating, store.isGenerating());
    differences.text("the error", expected.error, store.errorMessage());
    differences.same("the availability", expected.availability, store.modelAvailability());
    differences.same("whether one can send", expected.canSend(), store.canSend());
    differences.same("the images on the disk", expected.images, filesIn(*store.imagesDirectoryURL()));
    return differences.first();
}

QString compare(LibraryRules &expected, const DocumentLibrary &library)
{
    Differences differences;
    const QList<ImportedDocument> &found = library.documents();
    differences.same("the number of documents", expected.documents.size(), found.size());
    for (qsizetype i = 0; i < std::min(found.size(), expected.documents.size()); ++i) {
        ImportedDocument &document = expected.documents[i];
        differences.identifier("a document's identifier", document.id, found[i].id);
        differences.text("the name of a stored copy", document.filename, found[i].filename);
        document.addedAt = found[i].addedAt;
        differences.same("a document", document, found[i]);
    }
    differences.text("the library's error", expected.error, library.errorMessage());
    differences.same("importing", expected.imports > 0, library.isImporting());

    QFile list(*library.storageDirectory() + "/documents.json");
    if (list.open(QIODevice::ReadOnly))
        differences.same("documents.json", decodeDocuments(list.readAll()), std::optional(expected.documents));
    else
        differences.same("the number of documents without a list", qsizetype(0), expected.documents.size());
    return differences.first();
}

} // namespace lumora::races
