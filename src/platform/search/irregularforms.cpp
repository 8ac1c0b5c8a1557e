// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/irregularforms.h"

#include <array>
#include <unordered_map>

namespace lumora {

namespace {

/// A word, then its forms. Those that are also words with forms of their own are left out ("left", "saw", "thought").
constexpr std::array wordsWithForms = {
    "analysis analyses",
    "appendix appendices",
    "arise arose arisen",
    "bear borne",
    "beat beaten",
    "become became",
    "begin began begun",
    "bend bent",
    "bite bitten",
    "bleed bled",
    "blow blew blown",
    "break broke broken",
    "breed bred",
    "bring brought",
    "build built",
    "burn burnt",
    "buy bought",
    "catch caught",
    "child children",
    "choose chose chosen",
    "cling clung",
    "come came",
    "creep crept",
    "crisis crises",
    "criterion criteria",
    "cry cries cried",
    "deal dealt",
    "diagnosis diagnoses",
    "die dies died dying",
    "dig dug",
    "draw drew drawn",
    "dream dreamt",
    "drink drank drunk",
    "drive drove driven",
    "dry dries dried",
    "eat ate eaten",
    "fall fell fallen",
    "feed fed",
    "feel felt",
    "fight fought",
    "find found",
    "flee fled",
    "fly flies flew flown",
    "foot feet",
    "forbid forbade forbidden",
    "forget forgot forgotten",
    "forgive forgave forgiven",
    "freeze froze frozen",
    "fry fries fried",
    "get got gotten",
    "give gave given",
    "go goes went gone",
    "goose geese",
    "grow grew grown",
    "half halves",
    "hang hung",
    "hear heard",
    "hide hid hidden",
    "hold held",
    "hypothesis hypotheses",
    "index indices",
    "keep kept",
    "knife knives",
    "know knew known",
    "lay laid",
    "lead led",
    "learn learnt",
    "lend lent",
    "lie lies lied lying lain",
    "light lit",
    "loaf loaves",
    "lose lost",
    "make made",
    "man men",
    "matrix matrices",
    "mean meant",
    "meet met",
    "mistake mistook mistaken",
    "mouse mice",
    "ox oxen",
    "parenthesis parentheses",
    "pay paid",
    "penny pence",
    "phenomenon phenomena",
    "pie pies",
    "ply plies plied",
    "pry pries pried",
    "repay repaid",
    "ride rode ridden",
    "ring rang",
    "rise risen",
    "run ran",
    "say said",
    "seek sought",
    "see seen",
    "sell sold",
    "send sent",
    "shake shook shaken",
    "shelf shelves",
    "shine shone",
    "show shown",
    "shrink shrank shrunk",
    "sing sang sung",
    "sink sank sunk",
    "sit sat",
    "sky skies",
    "sleep slept",
    "slide slid",
    "speak spoke spoken",
    "spend spent",
    "spin spun",
    "spring sprang sprung",
    "spy spies spied",
    "stand stood",
    "steal stole stolen",
    "stick stuck",
    "sting stung",
    "strike struck stricken",
    "strive strove striven",
    "swear swore sworn",
    "sweep swept",
    "swell swollen",
    "swim swam swum",
    "swing swung",
    "take took taken",
    "teach taught",
    "tear tore torn",
    "tell told",
    "thesis theses",
    "thief thieves",
    "throw threw thrown",
    "tie ties tied tying",
    "tooth teeth",
    "try tries tried",
    "understand understood",
    "undertake undertook undertaken",
    "vertex vertices",
    "wake woke woken",
    "wear wore worn",
    "weave wove woven",
    "weep wept",
    "wife wives",
    "win won",
    "withdraw withdrew withdrawn",
    "withhold withheld",
    "wolf wolves",
    "woman women",
    "write wrote written",
};

std::unordered_map<std::string_view, std::string_view> makeRegularForms()
{
    std::unordered_map<std::string_view, std::string_view> forms;
    for (const std::string_view line : wordsWithForms) {
        const std::string_view word = line.substr(0, line.find(' '));
        for (size_t start = word.size(); start != std::string_view::npos; start = line.find(' ', start + 1))
            forms.emplace(line.substr(start + 1, line.find(' ', start + 1) - start - 1), word);
    }
    return forms;
}

} // namespace

std::string_view regularForm(std::string_view word)
{
    static const std::unordered_map<std::string_view, std::string_view> forms = makeRegularForms();
    const auto found = forms.find(word);
    return found == forms.end() ? word : found->second;
}

} // namespace lumora
