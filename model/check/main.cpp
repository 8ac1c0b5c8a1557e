// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "conversations/example.h"
#include "core/conversation.h"
#include "core/failure.h"
#include "llamaengine.h"
#include "wire/json.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace lumora;
using service::Token;

namespace {

/// What the trainer makes of an example.
struct Expectation
{
    training::Example example;
    std::vector<Token> tokens;
    std::vector<std::size_t> places; ///< of tokens after which the model writes one
    std::vector<Token> predicted;    ///< the most likely token after each
};

struct Result
{
    int examples = 0;
    int otherTokens = 0; ///< examples that the engine lays out in other ones
    int predictions = 0;
    int otherPredictions = 0;
};

template <typename Number>
std::vector<Number> numbers(const rapidjson::Document &object, const char *name)
{
    const rapidjson::Value *const list = wire::member(object, name);
    if (list == nullptr || !list->IsArray())
        throw std::runtime_error(std::string("a line misses the list ") + name);
    std::vector<Number> all;
    for (const rapidjson::Value &value : list->GetArray())
        all.push_back(static_cast<Number>(value.GetInt()));
    return all;
}

Expectation readExpectation(const std::string &line)
{
    const auto object = wire::parseObject(line);
    if (!object)
        throw std::runtime_error("a line is no JSON object");
    return {training::readExample(line), numbers<Token>(*object, "tokens"), numbers<std::size_t>(*object, "places"),
            numbers<Token>(*object, "predicted")};
}

void append(std::vector<Token> &tokens, const std::vector<Token> &more)
{
    tokens.insert(tokens.end(), more.begin(), more.end());
}

/// The example's tokens as the service would evaluate them, without the mark at the end of the last turn.
std::vector<Token> laidOut(const service::LlamaEngine &engine, const training::Example &example)
{
    const service::Conversation conversation(engine);
    std::vector<Token> tokens = conversation.opening(example.request, {}).tokens;
    for (const training::Turn &turn : example.turns) {
        if (turn.role == training::Turn::Role::model)
            append(tokens, engine.tokenize(turn.text, service::SpecialTokens::asText));
        else
            append(tokens, conversation.toolTurn(turn.tool, turn.text));
    }
    return tokens;
}

void check(service::LlamaEngine &engine, const Expectation &expectation, Result &result)
{
    ++result.examples;
    const std::vector<Token> tokens = laidOut(engine, expectation.example);
    const std::vector<Token> expected(expectation.tokens.begin(), expectation.tokens.end() - 1);
    if (tokens != expected) {
        ++result.otherTokens;
        std::printf("other tokens: %s\n", expectation.example.request.prompt.c_str());
    }
    engine.keep(0);
    engine.startSampling({.greedy = true});
    engine.setGrammar({});
    std::size_t evaluated = 0;
    for (std::size_t i = 0; i < expectation.places.size(); ++i) {
        const std::span<const Token> next(expected.begin() + static_cast<std::ptrdiff_t>(evaluated),
                                          expectation.places[i] + 1 - evaluated);
        evaluated = engine.evaluate(next, evaluated, {});
        ++result.predictions;
        result.otherPredictions += engine.sample() == expectation.predicted[i] ? 0 : 1;
    }
}

Result checkAll(service::LlamaEngine &engine, std::istream &input)
{
    Result result;
    std::string line;
    while (std::getline(input, line))
        check(engine, readExpectation(line), result);
    return result;
}

} // namespace

/// Reads what lumora-predict writes. Succeeds where the engine reads all examples in the same tokens, and continues 99
/// of 100 places with the same ones: it computes in half precision here and there, which turns a close choice.
int main(int argc, char **argv)
{
    const std::vector<std::string_view> words(argv + 1, argv + argc);
    const bool hasBackends = words.size() == 3 && words[0] == "--backends";
    if (!hasBackends && words.size() != 1) {
        std::fputs("usage: lumora-check-model MODEL.gguf < PREDICTIONS\n", stderr);
        return EXIT_FAILURE;
    }
    try {
        service::LlamaEngine engine(hasBackends ? std::string(words[1]) : std::string());
        engine.load(std::string(words.back()), std::nullopt, {});
        const Result result = checkAll(engine, std::cin);
        std::printf("%d examples, %d of them in other tokens; %d predictions, %d of them others\n", result.examples,
                    result.otherTokens, result.predictions, result.otherPredictions);
        const bool agrees =
            result.examples > 0 && result.otherTokens == 0 && result.otherPredictions * 100 <= result.predictions;
        return agrees ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const service::Failure &failure) {
        std::fprintf(stderr, "lumora-check-model: %s\n", failure.what());
    } catch (const std::exception &error) {
        std::fprintf(stderr, "lumora-check-model: %s\n", error.what());
    }
    return EXIT_FAILURE;
}
