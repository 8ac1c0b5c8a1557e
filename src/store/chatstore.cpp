// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/chatstore.h"

#include "generation/generationtask.h"
#include "platform/files/storagelocation.h"
#include "platform/text/textrules.h"
#include "store/availabilitymessage.h"
#include "store/historyfile.h"
#include "store/replytext.h"

#include <QFileInfo>

#include <algorithm>

namespace lumora {

namespace {

/// Takes out empty replies, and cleans the texts of the others.
void mend(Conversation &conversation)
{
    std::vector<ChatMessage> &messages = conversation.messages.all();
    std::erase_if(messages, &ChatMessage::isEmptyReply);
    for (ChatMessage &message : messages) {
        if (message.role == ChatMessage::Role::assistant)
            message.text = cleanReplyText(message.text);
    }
}

} // namespace

ChatStore::ChatStore(SystemLanguageModel model, std::optional<QString> applicationSupport, PdfTextReader pdf,
                     ImageReader images, QObject *parent)
    : QObject(parent)
    , m_model(std::move(model))
    , m_applicationSupport(std::move(applicationSupport))
    , m_images(std::move(images))
    , m_library(new DocumentLibrary(m_applicationSupport, std::move(pdf), this))
    , m_modelAvailability(m_model.availability())
    , m_lastAvailabilityCheck(TimePoint::now())
{
    refreshAvailability();
    load();
    if (m_conversations.isEmpty())
        newConversation();
    setSelectedID(conversations().front().id);
    connect(m_model.service(), &ModelService::availabilityChanged, this, &ChatStore::refreshAvailability);
}

ChatStore::~ChatStore()
{
    // The model's service may end here, and with it the run's wait: while the store is whole, and no run is its own.
    m_generationID.reset();
    if (m_generationTask)
        m_generationTask->cancel();
    const SystemLanguageModel lastHold = std::move(m_model);
}

const Conversation *ChatStore::selectedConversation() const
{
    return m_selectedID ? m_conversations.find(*m_selectedID) : nullptr;
}

QString ChatStore::windowTitle() const
{
    const Conversation *selected = selectedConversation();
    return selected ? selected->title : QStringLiteral("Lumora");
}

void ChatStore::setDraft(const QString &draft)
{
    if (m_draft == draft)
        return;
    m_draft = draft;
    Q_EMIT draftChanged();
    updateCanSend();
}

void ChatStore::setReplyStyle(ReplyStyle style)
{
    if (m_replyStyle == style)
        return;
    m_replyStyle = style;
    Q_EMIT replyStyleChanged();
}

void ChatStore::setSelectedID(const QUuid &id)
{
    if (m_selectedID == id)
        return;
    m_selectedID = id;
    Q_EMIT selectedIDChanged();
    Q_EMIT windowTitleChanged();
}

void ChatStore::setContextTokens(qint64 tokens)
{
    if (m_contextTokens == tokens)
        return;
    m_contextTokens = tokens;
    Q_EMIT contextTokensChanged();
}

void ChatStore::setPendingImageURL(const std::optional<QString> &path)
{
    if (m_pendingImageURL == path)
        return;
    m_pendingImageURL = path;
    Q_EMIT pendingImageURLChanged();
    updateCanSend();
}

void ChatStore::setGenerating(bool isGenerating)
{
    if (m_isGenerating == isGenerating)
        return;
    m_isGenerating = isGenerating;
    Q_EMIT isGeneratingChanged();
    updateCanSend();
}

void ChatStore::setErrorMessage(const QString &message)
{
    if (m_errorMessage == message)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
}

void ChatStore::updateCanSend()
{
    const bool hasContent = !trimmed(m_draft).isEmpty() || m_pendingImageURL;
    const bool canSend = hasContent && !m_isGenerating && m_modelAvailability.isAvailable();
    if (m_canSend == canSend)
        return;
    m_canSend = canSend;
    Q_EMIT canSendChanged();
}

QString ChatStore::availabilityMessage() const
{
    return lumora::availabilityMessage(m_modelAvailability);
}

bool ChatStore::isModelNotReady() const
{
    return m_modelAvailability.reason() == Availability::UnavailableReason::modelNotReady;
}

void ChatStore::refreshAvailability()
{
    m_modelAvailability = m_model.availability();
    m_lastAvailabilityCheck = TimePoint::now();
    Q_EMIT modelAvailabilityChanged();
    updateCanSend();
}

std::optional<QString> ChatStore::conversationsFileURL() const
{
    const std::optional<QString> folder = storageFolder(m_applicationSupport);
    return folder ? std::optional(*folder + QStringLiteral("/conversations.json")) : std::nullopt;
}

void ChatStore::load()
{
    const std::optional<QString> path = conversationsFileURL();
    if (!path)
        return;
    std::optional<QByteArray> bytes = readWholeFile(*path);
    if (!bytes)
        return;
    // Packed at once, a long history never takes the memory that it would unpacked.
    const auto pack = [](Conversation &conversation) {
        mend(conversation);
        conversation.messages.pack();
    };
    std::optional<std::vector<Conversation>> loaded = decodeConversations(std::move(*bytes), pack);
    if (!loaded)
        return;
    m_historyFile = HistoryFile::ours;
    std::ranges::stable_sort(*loaded, std::greater(), &Conversation::updatedAt);
    m_conversations.reset(std::move(*loaded));
}

void ChatStore::save()
{
    const std::optional<QString> path = conversationsFileURL();
    if (!path)
        return;
    if (const FileOutcome failed = writeHistory(*path))
        setErrorMessage(tr("Could not save chats: ") + failed->description);
}

FileOutcome ChatStore::writeHistory(const QString &path)
{
    if (FileOutcome failed = createFolder(QFileInfo(path).path()))
        return failed;
    if (m_historyFile == HistoryFile::unknown) {
        if (FileOutcome failed = setFileAside(path))
            return failed;
    }
    FileOutcome failed =
        replaceFile(path, [this](const ByteSink &file) { encodeConversations(conversations(), file); });
    if (!failed)
        m_historyFile = HistoryFile::ours;
    return failed;
}

} // namespace lumora
