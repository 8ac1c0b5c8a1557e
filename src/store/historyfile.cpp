// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/historyfile.h"

#include "platform/files/jsondocument.h"
#include "platform/files/jsonwriter.h"

namespace lumora {

namespace {

constexpr const char *userRole = "user";
constexpr const char *assistantRole = "assistant";

void encode(JsonWriter &json, const AnswerCard &card)
{
    json.startObject();
    json.key("title");
    json.text(card.title);
    json.key("summary");
    json.text(card.summary);
    json.key("keyPoints");
    json.texts(card.keyPoints);
    json.key("nextSteps");
    json.texts(card.nextSteps);
    json.endObject();
}

void encode(JsonWriter &json, const ToolEvent &event)
{
    json.startObject();
    json.key("id");
    json.text(event.id);
    json.key("name");
    json.text(event.name);
    json.key("status");
    json.text(event.status);
    json.endObject();
}

void encodeReplyRecords(JsonWriter &json, const ChatMessage &message)
{
    if (message.card) {
        json.key("card");
        encode(json, *message.card);
    }
    if (message.toolEvents) {
        json.key("toolEvents");
        json.startArray();
        for (const ToolEvent &event : *message.toolEvents)
            encode(json, event);
        json.endArray();
    }
    if (message.inputTokens) {
        json.key("inputTokens");
        json.integer(*message.inputTokens);
    }
    if (message.outputTokens) {
        json.key("outputTokens");
        json.integer(*message.outputTokens);
    }
}

void encode(JsonWriter &json, const ChatMessage &message)
{
    json.startObject();
    json.key("id");
    json.identifier(message.id);
    json.key("role");
    json.utf8Text(message.role == ChatMessage::Role::user ? userRole : assistantRole);
    json.key("text");
    json.text(message.text);
    json.key("date");
    json.number(message.date.secondsSinceReference);
    if (message.imageFilename) {
        json.key("imageFilename");
        json.text(*message.imageFilename);
    }
    encodeReplyRecords(json, message);
    json.endObject();
}

void encode(JsonWriter &json, const std::vector<ChatMessage> &messages)
{
    json.startArray();
    for (const ChatMessage &message : messages)
        encode(json, message);
    json.endArray();
}

void encode(JsonWriter &json, const Conversation &conversation)
{
    json.startObject();
    json.key("id");
    json.identifier(conversation.id);
    json.key("title");
    json.text(conversation.title);
    json.key("messages");
    if (const QByteArray packed = conversation.messages.packedJson(); !packed.isNull())
        json.array(packed);
    else
        encode(json, conversation.messages.all());
    json.key("updatedAt");
    json.number(conversation.updatedAt.secondsSinceReference);
    json.endObject();
}

ChatMessage::Role decodeRole(JsonValue text)
{
    const QString role = text.text();
    if (role == QLatin1String(userRole))
        return ChatMessage::Role::user;
    if (role == QLatin1String(assistantRole))
        return ChatMessage::Role::assistant;
    throw JsonError();
}

AnswerCard decodeCard(JsonValue object)
{
    AnswerCard card;
    card.title = object.member("title").text();
    card.summary = object.member("summary").text();
    card.keyPoints = object.member("keyPoints").texts();
    card.nextSteps = object.member("nextSteps").texts();
    return card;
}

ToolEvent decodeToolEvent(JsonValue object)
{
    ToolEvent event;
    event.id = object.member("id").text();
    event.name = object.member("name").text();
    event.status = object.member("status").text();
    return event;
}

QList<ToolEvent> decodeToolEvents(JsonValue array)
{
    QList<ToolEvent> events;
    for (qsizetype i = 0; i < array.size(); ++i)
        events.append(decodeToolEvent(array.at(i)));
    return events;
}

ChatMessage decodeMessage(JsonValue object)
{
    ChatMessage message{
        .id = object.member("id").identifier(),
        .role = decodeRole(object.member("role")),
        .text = object.member("text").text(),
        .date = {object.member("date").number()},
    };
    if (const auto name = object.optionalMember("imageFilename"))
        message.imageFilename = name->text();
    if (const auto card = object.optionalMember("card"))
        message.card = decodeCard(*card);
    if (const auto events = object.optionalMember("toolEvents"))
        message.toolEvents = decodeToolEvents(*events);
    if (const auto tokens = object.optionalMember("inputTokens"))
        message.inputTokens = tokens->integer();
    if (const auto tokens = object.optionalMember("outputTokens"))
        message.outputTokens = tokens->integer();
    return message;
}

std::vector<ChatMessage> decodeMessages(JsonValue array)
{
    std::vector<ChatMessage> messages;
    messages.reserve(size_t(array.size()));
    for (qsizetype i = 0; i < array.size(); ++i)
        messages.push_back(decodeMessage(array.at(i)));
    return messages;
}

Conversation decodeConversation(JsonValue object)
{
    return {
        .id = object.member("id").identifier(),
        .title = object.member("title").text(),
        .messages = decodeMessages(object.member("messages")),
        .updatedAt = {object.member("updatedAt").number()},
    };
}

} // namespace

void encodeConversations(const std::vector<Conversation> &conversations, const ByteSink &sink)
{
    JsonWriter json(sink);
    json.startArray();
    for (const Conversation &conversation : conversations)
        encode(json, conversation);
    json.endArray();
    json.finish();
}

QByteArray encodeConversations(const std::vector<Conversation> &conversations)
{
    QByteArray bytes;
    encodeConversations(conversations, [&bytes](QByteArrayView piece) { bytes.append(piece); });
    return bytes;
}

std::optional<std::vector<Conversation>> decodeConversations(QByteArray bytes, const ChatFound &found)
{
    try {
        const JsonDocument json(std::move(bytes));
        const JsonValue list = json.root();
        std::vector<Conversation> conversations;
        conversations.reserve(size_t(list.size()));
        for (qsizetype i = 0; i < list.size(); ++i) {
            conversations.push_back(decodeConversation(list.at(i)));
            if (found)
                found(conversations.back());
        }
        return conversations;
    } catch (const JsonError &) {
        return std::nullopt;
    }
}

QByteArray encodeMessages(const std::vector<ChatMessage> &messages)
{
    QByteArray bytes;
    JsonWriter json([&bytes](QByteArrayView piece) { bytes.append(piece); });
    encode(json, messages);
    json.finish();
    return bytes;
}

std::vector<ChatMessage> decodeMessages(QByteArray bytes)
{
    const JsonDocument json(std::move(bytes));
    return decodeMessages(json.root());
}

} // namespace lumora
