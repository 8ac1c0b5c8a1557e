// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "conversations/example.h"
#include "conversations/trainingvocabulary.h"
#include "core/conversation.h"
#include "tokenizer/learning.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>

using namespace lumora::training;

namespace {

constexpr std::size_t vocabularySize = 2048;
constexpr std::size_t wordsWithSpace = 480;
constexpr int systemTextsShown = 16; // one in so many: the same few texts in all examples would drown the rest

void show(PieceCounts &pieces, const Example &example, bool withSystemText)
{
    if (withSystemText)
        pieces.add(lumora::service::systemText(example.request));
    pieces.add("assistant\n");
    pieces.add(example.request.prompt);
    for (const Turn &turn : example.turns)
        pieces.add(turn.role == Turn::Role::model ? turn.text : "Output of " + turn.tool + ":\n" + turn.text);
}

PieceCounts countPieces(std::istream &input)
{
    PieceCounts pieces;
    std::string line;
    for (int read = 0; std::getline(input, line); ++read)
        show(pieces, readExample(line), read % systemTextsShown == 0);
    return pieces;
}

} // namespace

/// Learns the built-in model's merges from the generator's examples.
int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: lumora-learn-tokenizer merges.txt < EXAMPLES\n", stderr);
        return EXIT_FAILURE;
    }
    try {
        const Tokenizer tokenizer(learnMerges(countPieces(std::cin), vocabularySize, wordsWithSpace));
        std::ofstream file(argv[1]);
        tokenizer.write(file);
        file.close();
        std::printf("%zu tokens\n", tokenizer.size());
        return file ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "lumora-learn-tokenizer: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
