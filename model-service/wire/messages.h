// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumora::wire {

// All texts are valid UTF-8. A field said to hold JSON holds the text of one JSON object.

/// What the program sends. `id` names the request; every answer repeats it.
/// ToolOutput and Cancel carry the id of the request that they belong to.
struct Load
{
    std::int64_t id = 0;
    std::string path;
    std::optional<std::int64_t> contextLimit; ///< tokens
    std::optional<std::string> projector;     ///< the path of the file that lets the model read images
    bool operator==(const Load &) const = default;
};

struct Count
{
    std::int64_t id = 0;
    std::string text;
    bool operator==(const Count &) const = default;
};

struct Tool
{
    std::string name;
    std::string description;
    std::string schema; ///< JSON
    bool operator==(const Tool &) const = default;
};

enum class Sampling {
    greedy,
    random,
};

/// What is unset is the model's own default.
struct Options
{
    std::optional<Sampling> sampling;
    std::optional<double> temperature;
    std::optional<std::int64_t> maximumTokens;
    bool operator==(const Options &) const = default;
};

/// An image as pixels, so that the service needs neither a decoder nor the file.
struct Image
{
    std::int64_t width = 0;  ///< pixels; 1 to largestImageSide
    std::int64_t height = 0; ///< the same
    std::string pixels;      ///< 3 bytes each (red, green, blue), row after row from the top; not a text
    bool operator==(const Image &) const = default;
};

constexpr std::int64_t largestImageSide = 16384;

struct Respond
{
    std::int64_t id = 0;
    std::string instructions;
    std::vector<Tool> tools;
    std::string prompt;
    std::vector<Image> images;         ///< they follow the prompt; only for a model that reads images
    std::optional<std::string> schema; ///< JSON
    Options options;
    bool operator==(const Respond &) const = default;
};

/// Computes ahead what requests with these instructions begin with.
struct Prepare
{
    std::int64_t id = 0;
    std::string instructions;
    bool operator==(const Prepare &) const = default;
};

struct ToolOutput
{
    std::int64_t id = 0;
    std::string call;
    std::string output;
    bool operator==(const ToolOutput &) const = default;
};

struct Cancel
{
    std::int64_t id = 0;
    bool operator==(const Cancel &) const = default;
};

using Request = std::variant<Load, Count, Prepare, Respond, ToolOutput, Cancel>;

/// What the service sends.
struct Loaded
{
    std::int64_t id = 0;
    std::int64_t contextSize = 0; ///< tokens
    std::string description;      ///< for the log
    bool readsImages = false;
    bool operator==(const Loaded &) const = default;
};

struct Counted
{
    std::int64_t id = 0;
    std::int64_t tokens = 0;
    bool operator==(const Counted &) const = default;
};

struct Text
{
    std::int64_t id = 0;
    std::string piece; ///< the next part of the reply
    bool operator==(const Text &) const = default;
};

struct ToolCall
{
    std::int64_t id = 0;
    std::string call; ///< unique in the service's life
    std::string name;
    std::string arguments; ///< JSON
    bool operator==(const ToolCall &) const = default;
};

struct Finished
{
    std::int64_t id = 0;
    std::int64_t inputTokens = 0;       ///< all that the model read and did not write itself
    std::int64_t outputTokens = 0;      ///< all that it wrote, calls and reasoning included
    std::int64_t evaluatedTokens = 0;   ///< all that was computed: less than both together where a prefix was kept
    std::optional<std::string> content; ///< JSON; only where a schema was given
    bool operator==(const Finished &) const = default;
};

enum class ErrorCode {
    cancelled,
    notLoaded,
    badFile,
    badProjector,
    noMemory,
    contextFull,
    cutShort,
    tooManyCalls,
    internal,
};

struct Failed
{
    std::int64_t id = 0;
    ErrorCode code = ErrorCode::internal;
    std::string message; ///< a whole sentence for the user
    bool operator==(const Failed &) const = default;
};

using Answer = std::variant<Loaded, Counted, Text, ToolCall, Finished, Failed>;

/// The body of a frame: one compact JSON object. Throws std::invalid_argument where a field said to hold JSON does not
/// hold one object, or where a text is not UTF-8. Pixels become base64.
std::string encode(const Request &request);
std::string encode(const Answer &answer);

/// Nothing where the body is not a message of this direction: not JSON, nested deeper than 64, an unknown type, a
/// member missing or of another type, an image whose pixels are not as many as its sides say. Members that are not
/// known are passed over.
std::optional<Request> decodeRequest(std::string_view body);
std::optional<Answer> decodeAnswer(std::string_view body);

/// The name of an error code on the wire, such as "badFile".
std::string_view errorCodeName(ErrorCode code);
std::optional<ErrorCode> errorCodeFromName(std::string_view name);

} // namespace lumora::wire
