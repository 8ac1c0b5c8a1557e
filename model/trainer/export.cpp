// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/builtinmodel.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <map>
#include <string>

using namespace lumora::training;

/// Writes a model file with its numbers in another format.
int main(int argc, char **argv)
{
    const std::map<std::string, NumberFormat> formats = {
        {"single", NumberFormat::single}, {"half", NumberFormat::half}, {"eight-bits", NumberFormat::eightBits}};
    const auto format = argc == 5 ? formats.find(argv[4]) : formats.end();
    if (format == formats.end()) {
        std::fputs("usage: lumora-export MODEL.gguf merges.txt OUT.gguf single|half|eight-bits\n", stderr);
        return EXIT_FAILURE;
    }
    try {
        std::ifstream merges(argv[2]);
        const Tokenizer tokenizer = Tokenizer::read(merges);
        writeModel(readModel(argv[1], tokenizer), tokenizer, format->second, argv[3]);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "lumora-export: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
