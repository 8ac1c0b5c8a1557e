// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gbnf.h"

#include <functional>
#include <limits>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>

namespace lumora::service {

namespace {

using Positions = std::set<std::size_t>;

/// Walks a grammar's text while it matches: each rule is read again wherever it is used.
class Matcher
{
public:
    Matcher(const std::string &grammar, const std::string &text)
        : m_text(text)
    {
        std::size_t at = 0;
        while (at < grammar.size()) {
            const std::size_t arrow = grammar.find(" ::= ", at);
            const std::size_t end = grammar.find('\n', at);
            if (arrow == std::string::npos || end == std::string::npos || arrow > end)
                throw std::runtime_error("a line is no rule: " + grammar.substr(at));
            m_rules[grammar.substr(at, arrow - at)] = grammar.substr(arrow + 5, end - arrow - 5);
            at = end + 1;
        }
    }

    bool matches() { return rule("root", 0).contains(m_text.size()); }

private:
    Positions rule(const std::string &name, std::size_t from)
    {
        const auto found = m_rules.find(name);
        if (found == m_rules.end())
            throw std::runtime_error("no rule " + name);
        std::string_view source = found->second;
        Positions ends = alternatives(source, {from});
        if (!source.empty())
            throw std::runtime_error("left over in " + name + ": " + std::string(source));
        return ends;
    }

    Positions alternatives(std::string_view &source, const Positions &from)
    {
        Positions ends = sequence(source, from);
        while (source.starts_with('|')) {
            source.remove_prefix(1);
            ends.merge(sequence(source, from));
        }
        return ends;
    }

    Positions sequence(std::string_view &source, Positions at)
    {
        for (;;) {
            source.remove_prefix(std::min(source.find_first_not_of(' '), source.size()));
            if (source.empty() || source.front() == '|' || source.front() == ')')
                return at;
            at = repeated(source, at);
        }
    }

    Positions repeated(std::string_view &source, const Positions &from)
    {
        const std::string_view item = source;
        Positions once = single(source, from);
        std::size_t least = 1;
        std::size_t most = 1;
        repetition(source, least, most);
        Positions ends = least == 0 ? from : Positions();
        Positions now = from;
        for (std::size_t count = 1; count <= most && !now.empty(); ++count) {
            std::string_view again = item;
            now = count == 1 ? once : single(again, now);
            const std::size_t before = ends.size();
            if (count >= least)
                ends.insert(now.begin(), now.end());
            if (count >= least && ends.size() == before)
                break;
        }
        return ends;
    }

    static void repetition(std::string_view &source, std::size_t &least, std::size_t &most)
    {
        if (source.starts_with('?') || source.starts_with('*')) {
            least = 0;
            most = source.front() == '?' ? 1 : std::numeric_limits<std::size_t>::max();
            source.remove_prefix(1);
        } else if (source.starts_with('{')) {
            const std::string inside(source.substr(1, source.find('}') - 1));
            least = std::stoul(inside);
            const std::size_t comma = inside.find(',');
            most = comma == std::string::npos ? least : std::stoul(inside.substr(comma + 1));
            source.remove_prefix(inside.size() + 2);
        }
    }

    Positions single(std::string_view &source, const Positions &from)
    {
        if (source.front() == '"')
            return literal(source, from);
        if (source.front() == '[')
            return characterClass(source, from);
        if (source.front() == '(') {
            source.remove_prefix(1);
            Positions ends = alternatives(source, from);
            source.remove_prefix(1);
            return ends;
        }
        const std::size_t length = std::min(source.find_first_of(" |)?*{"), source.size());
        const std::string name(source.substr(0, length));
        source.remove_prefix(length);
        Positions ends;
        for (const std::size_t position : from)
            ends.merge(rule(name, position));
        return ends;
    }

    static char character(std::string_view &source)
    {
        char value = source.front();
        source.remove_prefix(1);
        if (value != '\\')
            return value;
        value = source.front();
        source.remove_prefix(1);
        if (value != 'x')
            return value == 'n' ? '\n' : value == 't' ? '\t' : value;
        value = static_cast<char>(std::stoi(std::string(source.substr(0, 2)), nullptr, 16));
        source.remove_prefix(2);
        return value;
    }

    Positions literal(std::string_view &source, const Positions &from)
    {
        std::string wanted;
        source.remove_prefix(1);
        while (source.front() != '"')
            wanted += character(source);
        source.remove_prefix(1);
        Positions ends;
        for (const std::size_t position : from)
            if (m_text.compare(position, wanted.size(), wanted) == 0)
                ends.insert(position + wanted.size());
        return ends;
    }

    Positions characterClass(std::string_view &source, const Positions &from)
    {
        source.remove_prefix(1);
        const bool negated = source.starts_with('^');
        source.remove_prefix(negated ? 1 : 0);
        std::set<unsigned char> members;
        while (source.front() != ']') {
            const auto first = static_cast<unsigned char>(character(source));
            unsigned last = first;
            if (source.starts_with('-') && source[1] != ']') {
                source.remove_prefix(1);
                last = static_cast<unsigned char>(character(source));
            }
            for (unsigned value = first; value <= last; ++value)
                members.insert(static_cast<unsigned char>(value));
        }
        source.remove_prefix(1);
        Positions ends;
        for (const std::size_t position : from)
            if (position < m_text.size() && members.contains(static_cast<unsigned char>(m_text[position])) != negated)
                ends.insert(position + 1);
        return ends;
    }

    const std::string &m_text;
    std::map<std::string, std::string> m_rules;
};

} // namespace

bool grammarTakes(const std::string &grammar, const std::string &text)
{
    return Matcher(grammar, text).matches();
}

} // namespace lumora::service
