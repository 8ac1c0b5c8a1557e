// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/conversation.h"

#include "core/failure.h"
#include "core/linewatcher.h"
#include "core/utf8.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace lumora::service {

namespace {

// Three noncharacters, which are never part of a text meant for others. The first cuts a special token's text in two
// where it stands in somebody's words; the second stands for a turn of the model, the third for an image.
constexpr std::string_view cut = "\xEF\xB7\x90";
constexpr std::string_view modelTurn = "\xEF\xB7\x91";
constexpr std::string_view imageMark = "\xEF\xB7\x92";
static_assert(cut.size() == modelTurn.size() && cut.size() == imageMark.size());

constexpr std::string_view thoughtMark = "<think>";

// Without the marks, which mean something else here, and without U+0000, at which a template would end the text.
std::string cleaned(std::string_view text)
{
    std::string clean;
    clean.reserve(text.size());
    while (!text.empty()) {
        if (text.starts_with(cut) || text.starts_with(modelTurn) || text.starts_with(imageMark)) {
            text.remove_prefix(cut.size());
            continue;
        }
        clean += text.front() == '\0' ? replacementCharacter : text.substr(0, 1);
        text.remove_prefix(1);
    }
    return clean;
}

std::string_view firstCharacter(std::string_view text)
{
    std::size_t size = 1;
    while (size < text.size() && prefixOfCharacters(text, size).size() != size)
        ++size;
    return text.substr(0, size);
}

bool endsWithOpenThought(std::string_view text)
{
    const std::size_t end = text.find_last_not_of(" \t\r\n");
    return end != std::string_view::npos && text.substr(0, end + 1).ends_with(thoughtMark);
}

} // namespace

Conversation::Conversation(const ChatVocabulary &vocabulary)
    : m_vocabulary(vocabulary)
{
    const std::vector<ChatMessage> probe = {{ChatMessage::Role::user, "?"}};
    const auto laidOut = m_vocabulary.applyTemplate(probe);
    m_plain = !laidOut.has_value();
    m_opensThought = laidOut && endsWithOpenThought(*laidOut);
    for (const std::string &mark : m_vocabulary.specialTexts())
        m_specialBeginnings.set(static_cast<unsigned char>(mark.front()));
}

Sequence Conversation::opening(const wire::Respond &request, std::span<const PreparedImage> images) const
{
    std::vector<ChatMessage> messages;
    if (const std::string system = systemText(request); !system.empty())
        messages.push_back({ChatMessage::Role::system, guarded(system)});
    std::string prompt = guarded(request.prompt);
    for (std::size_t i = 0; i < images.size(); ++i)
        prompt += "\n\n" + std::string(imageMark);
    messages.push_back({ChatMessage::Role::user, std::move(prompt)});
    const std::string laidOut = layOut(messages);

    Sequence all;
    const auto appendText = [&](std::string_view text) {
        const std::vector<Token> read = tokens(text);
        const auto first = m_vocabulary.openingToken();
        if (first && all.tokens.empty() && (read.empty() || read.front() != *first))
            all.append({&*first, 1});
        all.append(read);
    };
    std::string_view rest = laidOut;
    for (std::size_t i = 0; i < images.size(); ++i) {
        const std::size_t mark = rest.find(imageMark);
        if (mark == std::string_view::npos)
            throw internalFailure("the model's chat template leaves an image out");
        appendText(rest.substr(0, mark));
        all.append(images[i], std::make_shared<const wire::Image>(request.images[i]));
        rest.remove_prefix(mark + imageMark.size());
    }
    appendText(rest);
    return all;
}

// Only what follows the call is laid out, so that the tokens of the call stay the ones that the model wrote.
std::vector<Token> Conversation::toolTurn(std::string_view tool, std::string_view output) const
{
    const std::string said = "Output of " + std::string(tool) + ":\n" + std::string(output);
    const std::string laidOut = layOut({{ChatMessage::Role::user, "?"},
                                        {ChatMessage::Role::assistant, std::string(modelTurn)},
                                        {ChatMessage::Role::user, guarded(said)}});
    const std::size_t turn = laidOut.find(modelTurn);
    if (turn == std::string::npos)
        throw internalFailure("the model's chat template leaves a turn out");
    return tokens(std::string_view(laidOut).substr(turn + modelTurn.size()));
}

std::string Conversation::layOut(const std::vector<ChatMessage> &messages) const
{
    if (m_plain)
        return plainLayout(messages);
    const auto laidOut = m_vocabulary.applyTemplate(messages);
    if (!laidOut)
        throw internalFailure("the model's chat template does not take these messages");
    return *laidOut;
}

// A special token's text in somebody's words must not become that token: a question could then speak for the system.
std::string Conversation::guarded(std::string_view text) const
{
    const std::string clean = cleaned(text);
    std::string marked;
    marked.reserve(clean.size());
    for (std::string_view rest = clean; !rest.empty();) {
        const std::string_view character = firstCharacter(rest);
        marked += character;
        if (beginsSpecialText(rest))
            marked += cut;
        rest.remove_prefix(character.size());
    }
    return marked;
}

bool Conversation::beginsSpecialText(std::string_view text) const
{
    // Most characters begin none, and a vocabulary can have thousands.
    return m_specialBeginnings.test(static_cast<unsigned char>(text.front())) &&
           std::ranges::any_of(m_vocabulary.specialTexts(), [&](const auto &mark) { return text.starts_with(mark); });
}

std::vector<Token> Conversation::tokens(std::string_view laidOut) const
{
    std::vector<Token> all;
    while (!laidOut.empty()) {
        const std::size_t end = std::min(laidOut.find(cut), laidOut.size());
        const auto part = m_vocabulary.tokenize(laidOut.substr(0, end), SpecialTokens::recognised);
        all.insert(all.end(), part.begin(), part.end());
        laidOut.remove_prefix(std::min(end + cut.size(), laidOut.size()));
    }
    return all;
}

std::string systemText(const wire::Respond &request)
{
    std::string text = request.instructions;
    const auto paragraph = [&text](std::string_view added) {
        text += text.empty() ? "" : "\n\n";
        text += added;
    };
    if (!request.tools.empty()) {
        paragraph("You can call these tools:\n");
        for (const wire::Tool &tool : request.tools)
            text += "- " + tool.name + ": " + tool.description + " Arguments: " + tool.schema + "\n";
        text += "To call one, write nothing but {\"tool\": NAME, \"arguments\": {...}} on a line of its own. "
                "Its output comes as the next message.";
    }
    return text;
}

std::string plainLayout(const std::vector<ChatMessage> &messages)
{
    std::string text;
    for (const ChatMessage &message : messages) {
        if (message.role == ChatMessage::Role::user)
            text += std::string(userLabel) + ' ';
        if (message.role == ChatMessage::Role::assistant)
            text += "Assistant: ";
        text += message.content + "\n\n";
    }
    return text + "Assistant:";
}

} // namespace lumora::service
