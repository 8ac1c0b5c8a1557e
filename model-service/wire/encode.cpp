// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wire/base64.h"
#include "wire/json.h"
#include "wire/messages.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <stdexcept>

namespace lumora::wire {

namespace {

/// Writes one message, member by member.
class MessageWriter
{
public:
    MessageWriter(std::string_view type, std::int64_t id)
    {
        m_writer.StartObject();
        member("type", type);
        member("id", id);
    }

    void member(std::string_view name, std::string_view text)
    {
        key(name);
        require(m_writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size())), "a text is not UTF-8");
    }
    void member(std::string_view name, std::int64_t number)
    {
        key(name);
        m_writer.Int64(number);
    }
    void member(std::string_view name, bool truth)
    {
        key(name);
        m_writer.Bool(truth);
    }
    void numberOrNull(std::string_view name, const std::optional<double> &number)
    {
        key(name);
        if (number)
            require(m_writer.Double(*number), "a number is not finite");
        else
            m_writer.Null();
    }
    void numberOrNull(std::string_view name, const std::optional<std::int64_t> &number)
    {
        key(name);
        if (number)
            m_writer.Int64(*number);
        else
            m_writer.Null();
    }
    void object(std::string_view name, std::string_view json)
    {
        key(name);
        const auto document = parseObject(json);
        if (!document)
            throw std::invalid_argument("a field that is to hold a JSON object does not");
        document->Accept(m_writer);
    }
    void objectOrNull(std::string_view name, const std::optional<std::string> &json)
    {
        if (json)
            return object(name, *json);
        key(name);
        m_writer.Null();
    }
    void options(std::string_view name, const Options &options)
    {
        key(name);
        m_writer.StartObject();
        key("sampling");
        if (options.sampling)
            m_writer.String(*options.sampling == Sampling::greedy ? "greedy" : "random");
        else
            m_writer.Null();
        numberOrNull("temperature", options.temperature);
        numberOrNull("maximumTokens", options.maximumTokens);
        m_writer.EndObject();
    }
    void tools(std::string_view name, const std::vector<Tool> &tools)
    {
        key(name);
        m_writer.StartArray();
        for (const Tool &tool : tools) {
            m_writer.StartObject();
            member("name", tool.name);
            member("description", tool.description);
            object("schema", tool.schema);
            m_writer.EndObject();
        }
        m_writer.EndArray();
    }
    void images(std::string_view name, const std::vector<Image> &images)
    {
        key(name);
        m_writer.StartArray();
        for (const Image &image : images) {
            m_writer.StartObject();
            member("width", image.width);
            member("height", image.height);
            base64("pixels", image.pixels);
            m_writer.EndObject();
        }
        m_writer.EndArray();
    }

    std::string finish()
    {
        m_writer.EndObject();
        return {m_buffer.GetString(), m_buffer.GetSize()};
    }

private:
    // Straight into the buffer: the writer would look at each of some million characters for what is never there.
    void base64(std::string_view name, std::string_view bytes)
    {
        key(name);
        m_writer.RawValue("", 0, rapidjson::kStringType); // the colon
        const std::size_t size = base64Size(bytes.size());
        char *const text = m_buffer.Push(size + 2);
        text[0] = '"';
        writeBase64(bytes, text + 1);
        text[size + 1] = '"';
    }
    void key(std::string_view name) { m_writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size())); }
    static void require(bool holds, const char *otherwise)
    {
        if (!holds)
            throw std::invalid_argument(otherwise);
    }

    rapidjson::StringBuffer m_buffer;
    rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, rapidjson::CrtAllocator,
                      rapidjson::kWriteValidateEncodingFlag>
        m_writer{m_buffer};
};

std::string text(const Load &load)
{
    MessageWriter writer("load", load.id);
    writer.member("path", load.path);
    if (load.contextLimit)
        writer.member("contextLimit", *load.contextLimit);
    if (load.projector)
        writer.member("projector", *load.projector);
    return writer.finish();
}

std::string text(const Count &count)
{
    MessageWriter writer("count", count.id);
    writer.member("text", count.text);
    return writer.finish();
}

std::string text(const Prepare &prepare)
{
    MessageWriter writer("prepare", prepare.id);
    writer.member("instructions", prepare.instructions);
    return writer.finish();
}

std::string text(const Respond &respond)
{
    MessageWriter writer("respond", respond.id);
    writer.member("instructions", respond.instructions);
    writer.tools("tools", respond.tools);
    writer.member("prompt", respond.prompt);
    if (!respond.images.empty())
        writer.images("images", respond.images);
    writer.objectOrNull("schema", respond.schema);
    writer.options("options", respond.options);
    return writer.finish();
}

std::string text(const ToolOutput &output)
{
    MessageWriter writer("toolOutput", output.id);
    writer.member("call", output.call);
    writer.member("output", output.output);
    return writer.finish();
}

std::string text(const Cancel &cancel)
{
    return MessageWriter("cancel", cancel.id).finish();
}

std::string text(const Loaded &loaded)
{
    MessageWriter writer("loaded", loaded.id);
    writer.member("contextSize", loaded.contextSize);
    writer.member("description", loaded.description);
    writer.member("readsImages", loaded.readsImages);
    return writer.finish();
}

std::string text(const Counted &counted)
{
    MessageWriter writer("counted", counted.id);
    writer.member("tokens", counted.tokens);
    return writer.finish();
}

std::string text(const Text &piece)
{
    MessageWriter writer("text", piece.id);
    writer.member("piece", piece.piece);
    return writer.finish();
}

std::string text(const ToolCall &call)
{
    MessageWriter writer("toolCall", call.id);
    writer.member("call", call.call);
    writer.member("name", call.name);
    writer.object("arguments", call.arguments);
    return writer.finish();
}

std::string text(const Finished &finished)
{
    MessageWriter writer("finished", finished.id);
    writer.member("inputTokens", finished.inputTokens);
    writer.member("outputTokens", finished.outputTokens);
    writer.member("evaluatedTokens", finished.evaluatedTokens);
    writer.objectOrNull("content", finished.content);
    return writer.finish();
}

std::string text(const Failed &failed)
{
    MessageWriter writer("failed", failed.id);
    writer.member("code", errorCodeName(failed.code));
    writer.member("message", failed.message);
    return writer.finish();
}

} // namespace

std::string encode(const Request &request)
{
    return std::visit([](const auto &message) { return text(message); }, request);
}

std::string encode(const Answer &answer)
{
    return std::visit([](const auto &message) { return text(message); }, answer);
}

} // namespace lumora::wire
