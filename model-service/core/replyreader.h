// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/linewatcher.h"
#include "core/thoughtfilter.h"
#include "core/utf8.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace lumora::service {

/// Reads the free text of one turn: makes whole characters of the tokens' bytes, leaves thoughts out, and finds where a
/// tool call begins.
class TextReader
{
public:
    struct Result
    {
        std::size_t consumed = 0; ///< bytes; fewer than were given where something was found inside them
        LineWatcher::Found found = LineWatcher::Found::nothing;
    };

    TextReader(LineWatcher::Watch watch, ThoughtFilter::Start start);

    /// Appends to text what is known to be part of the reply.
    Result read(std::string_view bytes, std::string &text);

    /// Appends what was held back: the turn ended.
    void finish(std::string &text);

    /// What was read ends in a thought, before which nothing was said.
    bool isInsideThought() const { return m_thoughts.isInside(); }

private:
    LineWatcher::Found pass(std::string_view characters, std::string &text);
    LineWatcher::Found watch(std::string_view passed, std::string &text);

    Utf8Reader m_utf8;
    ThoughtFilter m_thoughts;
    LineWatcher m_lines;
};

/// Reads one JSON object that a grammar binds, up to its closing brace.
class ObjectReader
{
public:
    /// beginning: what has been read of the object already.
    explicit ObjectReader(std::string_view beginning);

    void read(std::string_view bytes);

    bool isComplete() const { return m_complete; }

    /// The object so far, as valid UTF-8.
    const std::string &text() const { return m_text; }

private:
    void follow(char byte);

    Utf8Reader m_utf8;
    std::string m_text;
    int m_depth = 0;
    bool m_inString = false;
    bool m_escaped = false;
    bool m_complete = false;
};

} // namespace lumora::service
