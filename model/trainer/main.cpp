// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/builtinmodel.h"
#include "trainer/startingweights.h"
#include "trainer/training.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace lumora::training;

namespace {

volatile std::sig_atomic_t mustStop = 0;

void stopSoon(int)
{
    mustStop = 1;
}

using Options = std::map<std::string, std::string, std::less<>>;

std::optional<Options> parse(const std::vector<std::string_view> &words)
{
    Options options = {{"--configuration", ""}, {"--tokenizer", ""}, {"--out", ""}, {"--minutes", ""}, {"--from", ""}};
    if (words.size() % 2 != 0)
        return std::nullopt;
    for (std::size_t i = 0; i < words.size(); i += 2) {
        const auto found = options.find(words[i]);
        if (found == options.end())
            return std::nullopt;
        found->second = words[i + 1];
    }
    for (const char *const needed : {"--configuration", "--tokenizer", "--out", "--minutes"})
        if (options.find(needed)->second.empty())
            return std::nullopt;
    return options;
}

Tokenizer readTokenizer(const std::string &path)
{
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error(path + " could not be read");
    return Tokenizer::read(file);
}

void train(Options options)
{
    Configuration configuration = readConfiguration(readFile(options["--configuration"]));
    const TrainingVocabulary vocabulary(readTokenizer(options["--tokenizer"]));
    configuration.shape.vocabulary = static_cast<int>(vocabulary.tokenizer().size());
    BuiltInModel model{configuration.shape, {}};
    if (options["--from"].empty()) {
        model.weights = startingWeights(configuration.shape, vocabulary.tokenizer().texts(), configuration.seed);
    } else {
        model = readModel(options["--from"], vocabulary.tokenizer());
        // It has learned what the phases before the last one teach.
        configuration.phases.erase(configuration.phases.begin(), configuration.phases.end() - 1);
    }
    configuration.shape = model.shape;

    const std::filesystem::path folder = options["--out"];
    std::filesystem::create_directories(folder);
    std::printf("%zu weights\n", model.weights.size());
    Training training(configuration, vocabulary, {folder / "checkpoint", folder / "model.gguf"},
                      std::stod(options["--minutes"]), model.weights);
    training.run([] { return mustStop != 0; });
}

} // namespace

/// Trains the built-in model. SIGTERM and SIGINT end it with a checkpoint and a model file.
int main(int argc, char **argv)
{
    const auto options = parse(std::vector<std::string_view>(argv + 1, argv + argc));
    if (!options) {
        std::fputs("usage: lumora-train --configuration FILE.json --tokenizer merges.txt --out FOLDER --minutes N\n"
                   "    [--from MODEL.gguf]\n"
                   "Goes on from FOLDER/checkpoint where there is one; begins from MODEL.gguf or by hand otherwise.\n",
                   stderr);
        return EXIT_FAILURE;
    }
    std::signal(SIGTERM, stopSoon);
    std::signal(SIGINT, stopSoon);
    try {
        useOneThreadForProducts();
        train(*options);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "lumora-train: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
