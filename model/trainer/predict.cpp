// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "conversations/trainingvocabulary.h"
#include "trainer/builtinmodel.h"
#include "trainer/predictions.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>

using namespace lumora::training;

namespace {

void predict(const std::string &modelPath, const std::string &tokenizerPath)
{
    std::ifstream merges(tokenizerPath);
    const TrainingVocabulary vocabulary(Tokenizer::read(merges));
    const BuiltInModel model = readModel(modelPath, vocabulary.tokenizer());
    Network network(model.shape);
    std::string line;
    while (std::getline(std::cin, line))
        std::cout << predictionLine(line, vocabulary, network, model.weights) << '\n';
}

} // namespace

/// Writes for each of the generator's examples what the trainer's own network makes of it.
int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fputs("usage: lumora-predict MODEL.gguf merges.txt < EXAMPLES > PREDICTIONS\n", stderr);
        return EXIT_FAILURE;
    }
    try {
        useOneThreadForProducts();
        predict(argv[1], argv[2]);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "lumora-predict: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
