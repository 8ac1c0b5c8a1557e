// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "races/storerules.h"

#include "platform/text/graphemes.h"
#include "platform/text/textrules.h"

#include <algorithm>
#include <ranges>

namespace lumora::races {

namespace {

QString cleaned(QString text)
{
    return trimmed(text.remove(QStringLiteral("<start_of_turn>model"))).toString();
}

bool isEmptyReply(const ChatMessage &message)
{
    return message.role == ChatMessage::Role::assistant && message.text.isEmpty() && !message.card;
}

bool hasAny(const QString &text, const QStringList &words)
{
    return std::ranges::any_of(words, [&text](const QString &word) { return text.contains(word); });
}

QString historyLine(const ChatMessage &message)
{
    return (message.role == ChatMessage::Role::user ? "User: " : "Assistant: ") +
           lastCharacters(message.text, 8000).toString() + (message.imageFilename ? " [Image attached]" : "");
}

} // namespace

Conversation *StoreRules::find(const QUuid &id)
{
    const auto found = std::ranges::find(conversations, id, &Conversation::id);
    return found == conversations.end() ? nullptr : &*found;
}

const Conversation *StoreRules::find(const QUuid &id) const
{
    const auto found = std::ranges::find(conversations, id, &Conversation::id);
    return found == conversations.end() ? nullptr : &*found;
}

bool StoreRules::canSend() const
{
    return (!trimmed(draft).isEmpty() || pendingImage) && !isGenerating && availability.isAvailable();
}

void StoreRules::start(std::vector<Conversation> stored)
{
    for (Conversation &each : stored) {
        std::erase_if(each.messages.all(), isEmptyReply);
        for (ChatMessage &message : each.messages.all()) {
            if (message.role == ChatMessage::Role::assistant)
                message.text = cleaned(message.text);
        }
    }
    std::ranges::stable_sort(stored, std::greater(), &Conversation::updatedAt);
    *this = {.conversations = std::move(stored), .availability = availability, .images = images, .saves = saves};
    if (conversations.empty())
        newConversation();
    selectedID = conversations.front().id;
}

void StoreRules::send()
{
    if (!canSend())
        return;
    const QString typed = trimmed(draft).toString();
    append({.id = {},
            .text = typed.isEmpty() ? "Describe this image." : typed,
            .date = unseenTime,
            .imageFilename = pendingImage},
           selectedID);
    append({.id = {}, .role = ChatMessage::Role::assistant, .date = unseenTime}, selectedID);
    draft.clear();
    pendingImage.reset();
    error.clear();
    isGenerating = true;
    ++saves;

    run = {.conversationID = selectedID, .typedText = typed, .style = replyStyle};
    if (const Conversation *conversation = find(selectedID)) {
        for (const ChatMessage &message : conversation->messages) {
            if (message.imageFilename)
                run->image = message.imageFilename;
        }
    }
}

void StoreRules::append(ChatMessage message, const QUuid &conversationID)
{
    Conversation *conversation = find(conversationID);
    if (!conversation)
        return;
    if (message.role == ChatMessage::Role::user && conversation->title == "New Chat")
        conversation->title = firstCharacters(message.text, 48).toString();
    conversation->messages.append(std::move(message));
    conversation->updatedAt = unseenTime;
}

void StoreRules::stopGenerating()
{
    run.reset();
    isGenerating = false;
    Conversation *selected = find(selectedID);
    if (selected && !selected->messages.empty() && isEmptyReply(selected->messages.back()))
        selected->messages.all().pop_back();
    ++saves;
}

void StoreRules::newConversation()
{
    stopGenerating();
    const auto empty =
        std::ranges::find_if(conversations, [](const Conversation &each) { return each.messages.empty(); });
    if (empty != conversations.end()) {
        compose(empty->id);
        return;
    }
    conversations.insert(conversations.begin(), Conversation{.id = {}, .updatedAt = unseenTime});
    compose({});
    ++saves;
}

void StoreRules::selectConversation(const QUuid &id)
{
    if (selectedID == id)
        return;
    stopGenerating();
    compose(id);
}

void StoreRules::compose(const QUuid &id)
{
    selectedID = id;
    draft.clear();
    contextTokens = 0;
    removePendingImage();
    error.clear();
}

void StoreRules::deleteConversation(const QUuid &id)
{
    const bool wasSelected = selectedID == id;
    if (wasSelected)
        stopGenerating();
    std::erase_if(conversations, [&id](const Conversation &each) { return each.id == id; });
    if (conversations.empty())
        newConversation();
    else if (wasSelected)
        selectedID = conversations.front().id;
    ++saves;
}

void StoreRules::attachImage(const QString &suffix)
{
    removePendingImage();
    pendingImage = "*." + suffix;
    images.insert(*pendingImage);
    error.clear();
}

void StoreRules::failToAttach()
{
    error = "Could not attach image: *";
}

void StoreRules::removePendingImage()
{
    if (pendingImage)
        images.remove(*pendingImage);
    pendingImage.reset();
}

ChatMessage *StoreRules::reply()
{
    Conversation *conversation = find(run->conversationID);
    if (!conversation)
        return nullptr;
    std::vector<ChatMessage> &messages = conversation->messages.all();
    const auto found = std::ranges::find(messages, run->messageID, &ChatMessage::id);
    return found == messages.end() ? nullptr : &*found;
}

void StoreRules::takeText(const QString &whole, const QList<ToolEvent> &events)
{
    if (ChatMessage *message = reply()) {
        message->text = cleaned(whole);
        message->toolEvents = events;
        find(run->conversationID)->updatedAt = unseenTime;
    }
}

void StoreRules::takeTextEnd(const QList<ToolEvent> &events, qint64 inputTokens, qint64 outputTokens)
{
    if (ChatMessage *message = reply()) {
        message->toolEvents = events;
        message->inputTokens = inputTokens;
        message->outputTokens = outputTokens;
    }
    endRun();
}

void StoreRules::takeCard(const AnswerCard &card, const QList<ToolEvent> &events, qint64 inputTokens,
                          qint64 outputTokens)
{
    if (ChatMessage *message = reply())
        message->card = card;
    takeTextEnd(events, inputTokens, outputTokens);
}

void StoreRules::takeFailure(const QString &description)
{
    error = description;
    if (Conversation *conversation = find(run->conversationID)) {
        std::erase_if(conversation->messages.all(), [this](const ChatMessage &message) {
            return message.id == run->messageID && message.text.isEmpty() && !message.card;
        });
    }
    endRun();
}

void StoreRules::endRun()
{
    run.reset();
    isGenerating = false;
    ++saves;
}

QString promptText(const StoreRules &state, const Run &run, qint64 budget)
{
    const Conversation *conversation = state.find(run.conversationID);
    const ChatMessage *latest = nullptr;
    QStringList lines;
    qint64 remaining = budget;
    const std::vector<ChatMessage> none;
    for (const ChatMessage &message : (conversation ? conversation->messages.all() : none) | std::views::reverse) {
        if (message.id == run.messageID)
            continue;
        if (!latest) {
            latest = &message;
            continue;
        }
        const QString line = historyLine(message);
        if (remaining < characterCount(line))
            break;
        remaining -= characterCount(line);
        lines.prepend(line);
    }
    if (!latest)
        return {};
    const QString history = lines.isEmpty() ? QString() : "Previous conversation:\n\n" + lines.join("\n\n") + "\n\n";
    return history + "Latest user message:\n" +
           lastCharacters(latest->text, std::min<qint64>(budget, 8000)).toString() +
           "\n\nRespond to the latest user message.";
}

QStringList offeredTools(const Run &run, const QStringList &documentNames)
{
    const QString text = lowercased(run.typedText);
    QStringList names;
    if (hasAny(text, {"today", "current date", "current time", "what time"}))
        names.append("currentDate");
    if (run.image && hasAny(text, {"barcode", "qr code", "qr-code"}))
        names.append("readBarcodes");
    else if (run.image && hasAny(text, {"read", "text", "ocr", "word"}))
        names.append("readText");
    QStringList words{"document", "file", "pdf", "notes"};
    for (const QString &name : documentNames)
        words.append(lowercased(name));
    if (!documentNames.isEmpty() && hasAny(text, words))
        names.append("searchDocuments");
    return names;
}

} // namespace lumora::races
