// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/replyreader.h"

namespace lumora::service {

TextReader::TextReader(LineWatcher::Watch watch, ThoughtFilter::Start start)
    : m_thoughts(start)
    , m_lines(watch)
{
}

TextReader::Result TextReader::read(std::string_view bytes, std::string &text)
{
    std::string characters;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        characters.clear();
        m_utf8.read(bytes[i], characters);
        const LineWatcher::Found found = pass(characters, text);
        if (found != LineWatcher::Found::nothing)
            return {i + 1, found};
    }
    return {bytes.size(), LineWatcher::Found::nothing};
}

void TextReader::finish(std::string &text)
{
    std::string rest;
    m_utf8.finish(rest);
    pass(rest, text);
    rest.clear();
    m_thoughts.finish(rest);
    watch(rest, text);
    m_lines.finish(text);
}

LineWatcher::Found TextReader::pass(std::string_view characters, std::string &text)
{
    std::string passed;
    for (const char byte : characters)
        m_thoughts.read(byte, passed);
    return watch(passed, text);
}

LineWatcher::Found TextReader::watch(std::string_view passed, std::string &text)
{
    for (const char byte : passed) {
        const LineWatcher::Found found = m_lines.read(byte, text);
        if (found != LineWatcher::Found::nothing)
            return found;
    }
    return LineWatcher::Found::nothing;
}

ObjectReader::ObjectReader(std::string_view beginning)
{
    read(beginning);
}

void ObjectReader::read(std::string_view bytes)
{
    for (const char byte : bytes) {
        if (m_complete)
            return;
        m_utf8.read(byte, m_text);
        follow(byte);
    }
}

// Structure is ASCII, so bytes can be followed before they are whole characters.
void ObjectReader::follow(char byte)
{
    if (m_escaped) {
        m_escaped = false;
    } else if (m_inString) {
        m_escaped = byte == '\\';
        m_inString = byte != '"';
    } else if (byte == '"') {
        m_inString = true;
    } else if (byte == '{' || byte == '[') {
        ++m_depth;
    } else if (byte == '}' || byte == ']') {
        m_complete = --m_depth == 0;
    }
}

} // namespace lumora::service
