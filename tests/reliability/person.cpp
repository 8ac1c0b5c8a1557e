// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reliability/person.h"

#include "platform/search/userquery.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>

#include <algorithm>
#include <functional>

namespace lumora {

namespace {

/// Lets the program run until it is so.
void waitUntil(const std::function<bool()> &isSo)
{
    constexpr int patience = 60'000; // milliseconds
    const QDeadlineTimer limit(patience);
    while (!isSo()) {
        if (limit.hasExpired())
            qFatal("The program does not go on.");
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    }
}

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool finds(const DocumentLibrary &library, const ImportedDocument &document)
{
    UserQuery query(library.index(), wordOf(numberIn(document.name)), {{"title"}, 8});
    try {
        const std::optional<SearchableItem> item = query.next();
        return item && item->title == document.name && !query.next();
    } catch (const SearchError &) {
        return false;
    }
}

} // namespace

Person::Person(const QString &dataDirectory, const QString &pickedFolder)
    : m_pickedFolder(pickedFolder.isNull() ? m_ownFolder.path() : pickedFolder)
    , m_store(std::make_unique<ChatStore>(SystemLanguageModel(m_model), dataDirectory))
{
}

Person::~Person() = default;

void Person::perform(const Step &step)
{
    switch (step.kind) {
    case Step::Kind::newChat:
        return m_store->newConversation();
    case Step::Kind::select:
        return select(step.chat);
    case Step::Kind::attach:
        return m_store->attachImage(pickedFile(step));
    case Step::Kind::send:
        return send(step);
    case Step::Kind::finish:
        m_model->release();
        return waitUntil([this] { return !m_store->isGenerating(); });
    case Step::Kind::stop:
        return m_store->stopGenerating();
    case Step::Kind::deleteChat:
        select(step.chat);
        return m_store->deleteConversation(*m_store->selectedID());
    case Step::Kind::import:
        return import(step);
    case Step::Kind::removeDocument:
        return removeDocument(step.document);
    }
}

void Person::select(const QString &title)
{
    const auto chat = std::ranges::find(m_store->conversations(), title, &Conversation::title);
    if (chat == m_store->conversations().end())
        qFatal("The chat \"%s\" is not there.", qUtf8Printable(title));
    m_store->selectConversation(chat->id);
}

void Person::send(const Step &step)
{
    m_model->enqueue(
        Script::text(replyBegin(step.number)).then(Script::hold()).then(Script::text(replyEnd(step.number))));
    m_store->setDraft(question(step.number));
    m_store->send();
    waitUntil(
        [this] { return m_model->isHolding() && !m_store->selectedConversation()->messages.back().text.isEmpty(); });
}

void Person::import(const Step &step)
{
    m_store->library()->add(pickedFile(step));
    waitUntil([this] { return !m_store->library()->isImporting(); });
}

void Person::removeDocument(const QString &name)
{
    DocumentLibrary &library = *m_store->library();
    const QList<ImportedDocument> documents = library.documents();
    library.remove(*std::ranges::find(documents, name, &ImportedDocument::name));
    library.index()->deleteSearchableItems({}).waitForFinished(); // after the deletion that was begun
}

void Person::prepare(const Step &step)
{
    const bool isDocument = step.kind == Step::Kind::import;
    if (!isDocument && step.kind != Step::Kind::attach)
        return;
    QFile file(m_pickedFolder + '/' + (isDocument ? documentName(step.number) : QStringLiteral("Picture.PNG")));
    const QByteArray content = isDocument ? documentBytes(step.number) : pictureBytes(step.number);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qUtf8Printable(file.fileName()));
    m_pickedFiles[step.number] = QUrl::fromLocalFile(file.fileName());
}

QUrl Person::pickedFile(const Step &step)
{
    if (!m_pickedFiles.contains(step.number))
        prepare(step);
    return m_pickedFiles.at(step.number);
}

void Person::saveAll()
{
    m_store->save();
    m_store->library()->save();
}

Holdings Person::holdings() const
{
    Holdings found;
    for (const Conversation &chat : m_store->conversations()) {
        QStringList &messages = found.chats[chat.title];
        if (!messages.isEmpty())
            messages.append("(another chat with this title)");
        for (const ChatMessage &message : chat.messages.all()) {
            const bool isUnderWay =
                m_store->isGenerating() && &message == &m_store->selectedConversation()->messages.back();
            if (!isUnderWay && !message.isEmptyReply())
                messages.append(line(message));
        }
    }
    for (const ImportedDocument &document : m_store->library()->documents())
        found.documents.append(state(document));
    return found;
}

QString Person::line(const ChatMessage &message) const
{
    if (message.role == ChatMessage::Role::assistant)
        return "assistant: " + message.text;
    const QString line = "user: " + message.text;
    if (!message.imageFilename)
        return line;
    const bool isThere = content(*m_store->imageURL(*message.imageFilename)) == pictureBytes(numberIn(message.text));
    return line + (isThere ? " (with its picture)" : " (its picture is lost)");
}

QString Person::state(const ImportedDocument &document) const
{
    const DocumentLibrary &library = *m_store->library();
    if (content(*library.storageDirectory() + '/' + document.filename) != documentBytes(numberIn(document.name)))
        return document.name + " (its copy is lost)";
    return finds(library, document) ? document.name : document.name + " (not found by its word)";
}

} // namespace lumora
