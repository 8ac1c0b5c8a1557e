// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fuzz/fuzztarget.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t longestInput = 4096;

using Random = std::mt19937;

std::size_t below(std::size_t limit, Random &random)
{
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
}

std::vector<std::string> readAll(const std::filesystem::path &folder)
{
    std::vector<std::filesystem::path> paths;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        paths.push_back(entry.path());
    std::ranges::sort(paths); // whatever the order on this disk is
    std::vector<std::string> texts;
    for (const auto &path : paths) {
        std::ifstream file(path, std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return texts;
}

/// One small change: a bit, a byte, a part that comes twice or goes, or a part of another text.
void change(std::string &text, const std::string &other, Random &random)
{
    constexpr std::array tokens{"\"", "\\u", "\\ud800", "{",    "}",    "[",        "]",           ",",
                                ":",  "0",   "-1e9",    "null", "*",    "`",        "|",           "<",
                                "&",  "\n",  " ",       "\x80", "\xff", "\xcc\x81", "\xe2\x80\x8d"};
    const std::size_t at = below(text.size() + 1, random);
    const std::size_t length = std::min(text.size() - at, below(16, random) + 1);
    switch (below(6, random)) {
    case 0:
        if (at < text.size())
            text[at] = char(text[at] ^ (1 << below(8, random)));
        break;
    case 1:
        text.insert(at, 1, char(below(256, random)));
        break;
    case 2:
        text.insert(at, tokens.at(below(tokens.size(), random)));
        break;
    case 3:
        text.erase(at, length);
        break;
    case 4:
        text.insert(at, std::string(text, at, length));
        break;
    default: {
        const std::size_t from = below(other.size() + 1, random);
        text.insert(at, other, from, below(64, random) + 1);
    }
    }
    text.resize(std::min(text.size(), longestInput));
}

} // namespace

// TARGET FOLDER COUNT [SEED]: tries the texts in the folder, and so many changed ones. This is what a compiler without
// a fuzzer can do, and quick enough to be done with every test run.
int main(int argc, char *argv[])
{
    if (argc < 3) {
        std::fprintf(stderr, "Say where the texts are, and how many more to try: %s FOLDER COUNT [SEED]\n", argv[0]);
        return 2;
    }
    const std::vector<std::string> corpus = readAll(argv[1]);
    lumora::fuzz::require(!corpus.empty(), "There are no texts to begin with.");
    for (const std::string &text : corpus)
        lumora::fuzz::tryInput(text);

    const unsigned seed = argc > 3 ? unsigned(std::stoul(argv[3])) : std::random_device()();
    std::printf("%zu texts, and %s changed ones from the seed %u\n", corpus.size(), argv[2], seed);
    std::fflush(stdout); // before a sanitizer ends it
    Random random(seed);
    for (int count = std::stoi(argv[2]); count > 0; --count) {
        std::string text = corpus[below(corpus.size(), random)];
        for (std::size_t changes = below(8, random) + 1; changes > 0; --changes)
            change(text, corpus[below(corpus.size(), random)], random);
        lumora::fuzz::tryInput(text);
    }
    return 0;
}
