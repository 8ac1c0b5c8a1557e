// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tokenizer/pieces.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace lumora::training {

namespace {

constexpr std::array<std::string_view, 7> contractions = {"'s", "'t", "'re", "'ve", "'m", "'ll", "'d"};

enum class Kind {
    letter,
    number,
    space,
    sign,
    end,
};

/// The character at a place, and where the next one begins.
struct Character
{
    Kind kind = Kind::end;
    std::size_t next = 0;
};

Character characterAt(std::string_view text, std::size_t at)
{
    if (at >= text.size())
        return {Kind::end, at};
    const auto *const bytes = reinterpret_cast<const std::uint8_t *>(text.data());
    std::size_t next = at;
    UChar32 character = 0;
    U8_NEXT(bytes, next, text.size(), character);
    if (character < 0)
        return {Kind::sign, next};
    const std::uint32_t category = U_MASK(u_charType(character));
    if ((category & U_GC_L_MASK) != 0)
        return {Kind::letter, next};
    if ((category & U_GC_N_MASK) != 0)
        return {Kind::number, next};
    return {u_isUWhiteSpace(character) != 0 ? Kind::space : Kind::sign, next};
}

std::size_t endOfRun(std::string_view text, std::size_t at, Kind kind)
{
    for (Character character = characterAt(text, at); character.kind == kind; character = characterAt(text, at))
        at = character.next;
    return at;
}

// The last white space before a word goes with the word, if it is a space, and is a piece of its own otherwise.
std::size_t endOfSpace(std::string_view text, std::size_t at)
{
    const std::size_t end = endOfRun(text, at, Kind::space);
    if (end == text.size())
        return end;
    std::size_t last = at;
    for (std::size_t next = characterAt(text, at).next; next < end; next = characterAt(text, next).next)
        last = next;
    return last > at ? last : end;
}

std::size_t endOfPiece(std::string_view text, std::size_t at)
{
    for (const std::string_view contraction : contractions)
        if (text.substr(at).starts_with(contraction))
            return at + contraction.size();
    const std::size_t word = text[at] == ' ' ? at + 1 : at;
    const Kind kind = characterAt(text, word).kind;
    if (kind == Kind::space || kind == Kind::end)
        return endOfSpace(text, at);
    return endOfRun(text, word, kind);
}

} // namespace

std::vector<std::string_view> pieces(std::string_view text)
{
    std::vector<std::string_view> all;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = endOfPiece(text, at);
        all.push_back(text.substr(at, end - at));
        at = end;
    }
    return all;
}

bool isNumber(std::string_view piece)
{
    return characterAt(piece, piece.starts_with(' ') ? 1 : 0).kind == Kind::number;
}

} // namespace lumora::training
