// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wire/base64.h"
#include "wire/json.h"
#include "wire/messages.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace lumora::wire {

namespace {

using rapidjson::Value;

/// Ends the decoding of a message that does not have its shape; never leaves this file.
class Malformed : public std::exception
{
};

const Value &required(const Value &object, std::string_view name)
{
    const Value *const found = member(object, name);
    if (found == nullptr)
        throw Malformed();
    return *found;
}

std::string textOf(const Value &object, std::string_view name)
{
    const Value &value = required(object, name);
    if (!value.IsString())
        throw Malformed();
    return std::string(view(value));
}

std::int64_t integerOf(const Value &object, std::string_view name)
{
    const Value &value = required(object, name);
    if (!value.IsInt64())
        throw Malformed();
    return value.GetInt64();
}

bool truthOf(const Value &object, std::string_view name)
{
    const Value &value = required(object, name);
    if (!value.IsBool())
        throw Malformed();
    return value.GetBool();
}

std::optional<std::int64_t> integerOrNull(const Value &object, std::string_view name)
{
    if (required(object, name).IsNull())
        return std::nullopt;
    return integerOf(object, name);
}

std::optional<double> numberOrNull(const Value &object, std::string_view name)
{
    const Value &value = required(object, name);
    if (value.IsNull())
        return std::nullopt;
    if (!value.IsNumber())
        throw Malformed();
    return value.GetDouble();
}

std::string objectOf(const Value &object, std::string_view name)
{
    const Value &value = required(object, name);
    if (!value.IsObject())
        throw Malformed();
    return jsonText(value);
}

std::optional<std::string> objectOrNull(const Value &object, std::string_view name)
{
    if (required(object, name).IsNull())
        return std::nullopt;
    return objectOf(object, name);
}

std::vector<Tool> toolsOf(const Value &object)
{
    const Value &list = required(object, "tools");
    if (!list.IsArray())
        throw Malformed();
    std::vector<Tool> tools;
    for (const Value &tool : list.GetArray()) {
        if (!tool.IsObject())
            throw Malformed();
        tools.push_back({textOf(tool, "name"), textOf(tool, "description"), objectOf(tool, "schema")});
    }
    return tools;
}

Image imageOf(const Value &object)
{
    if (!object.IsObject())
        throw Malformed();
    const auto sideOf = [&object](std::string_view name) {
        const std::int64_t side = integerOf(object, name);
        if (side < 1 || side > largestImageSide)
            throw Malformed();
        return side;
    };
    const Value &pixels = required(object, "pixels");
    auto bytes = pixels.IsString() ? fromBase64(view(pixels)) : std::nullopt;
    Image image{sideOf("width"), sideOf("height"), {}};
    if (!bytes || static_cast<std::int64_t>(bytes->size()) != 3 * image.width * image.height)
        throw Malformed();
    image.pixels = std::move(*bytes);
    return image;
}

std::vector<Image> imagesOf(const Value &object)
{
    const Value *const list = member(object, "images");
    if (list == nullptr)
        return {};
    if (!list->IsArray())
        throw Malformed();
    std::vector<Image> images;
    for (const Value &image : list->GetArray())
        images.push_back(imageOf(image));
    return images;
}

std::optional<Sampling> samplingOf(const Value &options)
{
    if (required(options, "sampling").IsNull())
        return std::nullopt;
    const std::string name = textOf(options, "sampling");
    if (name != "greedy" && name != "random")
        throw Malformed();
    return name == "greedy" ? Sampling::greedy : Sampling::random;
}

Options optionsOf(const Value &object)
{
    const Value &options = required(object, "options");
    if (!options.IsObject())
        throw Malformed();
    return {samplingOf(options), numberOrNull(options, "temperature"), integerOrNull(options, "maximumTokens")};
}

Request loadOf(std::int64_t id, const Value &object)
{
    std::optional<std::int64_t> limit;
    if (member(object, "contextLimit") != nullptr)
        limit = integerOf(object, "contextLimit");
    std::optional<std::string> projector;
    if (member(object, "projector") != nullptr)
        projector = textOf(object, "projector");
    return Load{id, textOf(object, "path"), limit, std::move(projector)};
}

Request countOf(std::int64_t id, const Value &object)
{
    return Count{id, textOf(object, "text")};
}

Request prepareOf(std::int64_t id, const Value &object)
{
    return Prepare{id, textOf(object, "instructions")};
}

Request respondOf(std::int64_t id, const Value &object)
{
    return Respond{id,
                   textOf(object, "instructions"),
                   toolsOf(object),
                   textOf(object, "prompt"),
                   imagesOf(object),
                   objectOrNull(object, "schema"),
                   optionsOf(object)};
}

Request toolOutputOf(std::int64_t id, const Value &object)
{
    return ToolOutput{id, textOf(object, "call"), textOf(object, "output")};
}

Request cancelOf(std::int64_t id, const Value &)
{
    return Cancel{id};
}

Answer loadedOf(std::int64_t id, const Value &object)
{
    return Loaded{id, integerOf(object, "contextSize"), textOf(object, "description"), truthOf(object, "readsImages")};
}

Answer countedOf(std::int64_t id, const Value &object)
{
    return Counted{id, integerOf(object, "tokens")};
}

Answer pieceOf(std::int64_t id, const Value &object)
{
    return Text{id, textOf(object, "piece")};
}

Answer toolCallOf(std::int64_t id, const Value &object)
{
    return ToolCall{id, textOf(object, "call"), textOf(object, "name"), objectOf(object, "arguments")};
}

Answer finishedOf(std::int64_t id, const Value &object)
{
    return Finished{id, integerOf(object, "inputTokens"), integerOf(object, "outputTokens"),
                    integerOf(object, "evaluatedTokens"), objectOrNull(object, "content")};
}

Answer failedOf(std::int64_t id, const Value &object)
{
    const auto code = errorCodeFromName(textOf(object, "code"));
    if (!code)
        throw Malformed();
    return Failed{id, *code, textOf(object, "message")};
}

template <typename Message>
using Decoder = std::pair<std::string_view, Message (*)(std::int64_t, const Value &)>;

constexpr std::array<Decoder<Request>, 6> requestDecoders{{
    {"load", loadOf},
    {"count", countOf},
    {"prepare", prepareOf},
    {"respond", respondOf},
    {"toolOutput", toolOutputOf},
    {"cancel", cancelOf},
}};

constexpr std::array<Decoder<Answer>, 6> answerDecoders{{
    {"loaded", loadedOf},
    {"counted", countedOf},
    {"text", pieceOf},
    {"toolCall", toolCallOf},
    {"finished", finishedOf},
    {"failed", failedOf},
}};

template <typename Message, std::size_t size>
std::optional<Message> decode(std::string_view body, const std::array<Decoder<Message>, size> &decoders)
{
    const auto object = parseObject(body);
    if (!object)
        return std::nullopt;
    try {
        const std::string type = textOf(*object, "type");
        const auto *const found = std::ranges::find(decoders, type, &Decoder<Message>::first);
        if (found == decoders.end())
            return std::nullopt;
        return found->second(integerOf(*object, "id"), *object);
    } catch (const Malformed &) {
        return std::nullopt;
    }
}

} // namespace

std::optional<Request> decodeRequest(std::string_view body)
{
    return decode(body, requestDecoders);
}

std::optional<Answer> decodeAnswer(std::string_view body)
{
    return decode(body, answerDecoders);
}

} // namespace lumora::wire
