// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "weights.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>

namespace lumora::tinymodel {

namespace {

// The width's dimensions.
constexpr std::int64_t constantDimension = 0;
constexpr std::int64_t firstKindDimension = 1;
constexpr std::int64_t isCallDimension = firstKindDimension + static_cast<std::int64_t>(Kind::count);
constexpr std::int64_t hasCalledDimension = isCallDimension + 1;
constexpr std::int64_t firstNoiseDimension = hasCalledDimension + 1;

constexpr float constantSize = 1.0F;
constexpr float kindSize = 2.0F;
constexpr float noiseSize = 0.5F; // of each noise dimension, in embeddings and again in what the layers add
constexpr float sharpness = 2.5F; // of the attention: it picks single tokens, so that texts depend on their beginnings
constexpr float logitNoise = 0.6F;

struct Transition
{
    std::vector<Kind> from;
    std::vector<std::pair<Kind, double>> to; // with the share of each
};

const std::vector<Transition> transitions = {
    {{Kind::turnStart}, {{Kind::firstArticle, 1}, {Kind::openObject, 1e-4}}},
    {{Kind::firstArticle, Kind::nextArticle, Kind::article},
     {{Kind::adjective, 0.5}, {Kind::noun, 0.42}, {Kind::accentedStem, 0.08}}},
    {{Kind::adjective}, {{Kind::noun, 0.8}, {Kind::adjective, 0.12}, {Kind::accentedStem, 0.08}}},
    {{Kind::noun, Kind::accentTail},
     {{Kind::verb, 0.4}, {Kind::preposition, 0.2}, {Kind::conjunction, 0.05}, {Kind::sentenceEnd, 0.35}}},
    {{Kind::accentedStem}, {{Kind::accentLead, 1}}},
    {{Kind::accentLead}, {{Kind::accentTail, 1}}},
    {{Kind::verb}, {{Kind::article, 0.9}, {Kind::preposition, 0.1}}},
    {{Kind::preposition, Kind::conjunction}, {{Kind::article, 1}}},
    {{Kind::sentenceEnd}, {{Kind::nextArticle, 0.8}, {Kind::paragraphEnd, 0.05}, {Kind::endOfTurn, 0.15}}},
    {{Kind::paragraphEnd}, {{Kind::firstArticle, 1}}},
    {{Kind::colon, Kind::quoteColon, Kind::call},
     {{Kind::openText, 0.4}, {Kind::openList, 0.3}, {Kind::openObject, 0.3}, {Kind::emptyList, 0.01}}},
    {{Kind::openText, Kind::openList}, {{Kind::firstWord, 1}}},
    {{Kind::firstWord, Kind::word},
     {{Kind::word, 0.5},
      {Kind::quoteComma, 0.14},
      {Kind::quoteList, 0.22},
      {Kind::quoteObject, 0.14},
      {Kind::quote, 0.02}}},
    {{Kind::quote},
     {{Kind::comma, 0.3},
      {Kind::closeList, 0.3},
      {Kind::closeObject, 0.3},
      {Kind::colon, 0.3},
      {Kind::firstWord, 0.1}}},
    {{Kind::quoteComma, Kind::comma}, {{Kind::openText, 1}}},
    {{Kind::quoteList, Kind::closeList, Kind::emptyList}, {{Kind::comma, 0.5}, {Kind::closeObject, 0.5}}},
    {{Kind::quoteObject, Kind::closeObject}, {{Kind::closeObject, 0.5}, {Kind::comma, 0.2}, {Kind::endOfTurn, 0.3}}},
    {{Kind::openObject}, {{Kind::quote, 1}}},
};

constexpr double unlikely = -12.0;
constexpr double never = -30.0;
constexpr double certain = 8.0;

using KindTable =
    std::array<std::array<double, static_cast<std::size_t>(Kind::count)>, static_cast<std::size_t>(Kind::count)>;

double &entry(KindTable &table, Kind from, Kind to)
{
    return table.at(static_cast<std::size_t>(from)).at(static_cast<std::size_t>(to));
}

/// The logarithm of each kind's share after each kind.
KindTable kindTable(Behaviour behaviour)
{
    KindTable table;
    for (auto &row : table) {
        row.fill(unlikely);
        row.at(static_cast<std::size_t>(Kind::control)) = never;
        row.at(static_cast<std::size_t>(Kind::call)) = never;
        row.at(static_cast<std::size_t>(Kind::endOfTurn)) = never;
    }
    for (const Transition &transition : transitions)
        for (const Kind from : transition.from)
            for (const auto &[to, share] : transition.to)
                entry(table, from, to) = std::log(share);
    if (behaviour.calls != Calls::never)
        entry(table, Kind::turnStart, Kind::call) = certain;
    if (!behaviour.ends)
        for (auto &row : table)
            row.at(static_cast<std::size_t>(Kind::endOfTurn)) = never;
    return table;
}

float &at(Matrix &matrix, std::int64_t row, std::int64_t column)
{
    return matrix.values[static_cast<std::size_t>(row * matrix.columns + column)];
}

Matrix ones(const std::string &name, std::int64_t columns)
{
    return constant(name, columns, 1.0F);
}

/// The names and sizes that the llama architecture gives its layers; every product of about unit size, and each layer
/// adds noiseSize to the width.
std::vector<Matrix> randomLayer(Random &random, const Shape &shape, std::int64_t layer)
{
    constexpr float gatedSize = 0.6F; // of the product of a gate and a value of unit size
    const std::string block = "blk." + std::to_string(layer) + '.';
    const std::int64_t keys = shape.keyHeads * shape.headSize();
    const float in = inverseRoot(shape.width);
    return {ones(block + "attn_norm.weight", shape.width),
            random.matrix(block + "attn_q.weight", shape.width, shape.width, sharpness * in),
            random.matrix(block + "attn_k.weight", shape.width, keys, sharpness * in),
            random.matrix(block + "attn_v.weight", shape.width, keys, in),
            random.matrix(block + "attn_output.weight", shape.width, shape.width, noiseSize * in),
            ones(block + "ffn_norm.weight", shape.width),
            random.matrix(block + "ffn_gate.weight", shape.width, shape.hidden, in),
            random.matrix(block + "ffn_up.weight", shape.width, shape.hidden, in),
            random.matrix(block + "ffn_down.weight", shape.hidden, shape.width,
                          noiseSize / gatedSize * inverseRoot(shape.hidden))};
}

Matrix &named(std::vector<Matrix> &matrices, const std::string &name)
{
    return *std::ranges::find(matrices, name, &Matrix::name);
}

/// What a layer adds goes to the noise dimensions only.
void keepOutOfMeaning(Matrix &output)
{
    std::fill_n(output.values.begin(), firstNoiseDimension * output.columns, 0.0F);
}

/// Makes the first head of the first layer find a call among all earlier tokens, wherever it stands: its queries are
/// constant, its keys mark the call, both in the pair of dimensions that turns with the position the least.
void lookForCall(std::vector<Matrix> &matrices, const Shape &shape)
{
    const std::int64_t slow = shape.headSize() - 2;
    for (const char *const name : {"attn_q", "attn_k", "attn_v"})
        std::fill_n(named(matrices, std::string("blk.0.") + name + ".weight").values.begin(),
                    shape.headSize() * shape.width, 0.0F);
    Matrix &output = named(matrices, "blk.0.attn_output.weight");
    for (std::int64_t row = 0; row < shape.width; ++row)
        std::fill_n(&at(output, row, 0), shape.headSize(), 0.0F);
    at(named(matrices, "blk.0.attn_q.weight"), slow, constantDimension) = 10.0F;
    at(named(matrices, "blk.0.attn_k.weight"), slow, isCallDimension) = 10.0F;
    at(named(matrices, "blk.0.attn_v.weight"), 0, isCallDimension) = 1.0F;
    at(output, hasCalledDimension, 0) = 1.0F;
}

/// That other architecture wants them; they change nothing.
void addBiases(std::vector<Matrix> &matrices)
{
    std::vector<Matrix> biases;
    for (const Matrix &matrix : matrices)
        for (const std::string name : {"attn_q.", "attn_k.", "attn_v."})
            if (const auto at = matrix.name.find(name); at != std::string::npos)
                biases.push_back(constant(matrix.name.substr(0, at) + name + "bias", matrix.rows, 0.0F));
    std::ranges::move(biases, std::back_inserter(matrices));
}

Matrix embeddings(Random &random, const Shape &shape, const Vocabulary &vocabulary)
{
    const auto count = static_cast<std::int64_t>(vocabulary.kinds().size());
    Matrix made = random.matrix("token_embd.weight", shape.width, count, noiseSize);
    for (std::int64_t token = 0; token < count; ++token) {
        const Kind kind = vocabulary.kinds()[static_cast<std::size_t>(token)];
        std::fill_n(&at(made, token, 0), firstNoiseDimension, 0.0F);
        at(made, token, constantDimension) = constantSize;
        at(made, token, firstKindDimension + static_cast<std::int64_t>(kind)) = kindSize;
        if (kind == Kind::call)
            at(made, token, isCallDimension) = kindSize;
    }
    return made;
}

Matrix output(Random &random, const Shape &shape, const Vocabulary &vocabulary, Behaviour behaviour)
{
    const auto count = static_cast<std::int64_t>(vocabulary.kinds().size());
    const std::int64_t noiseDimensions = shape.width - firstNoiseDimension;
    // About what the last norm multiplies the width with: embeddings and as many layers add their noise.
    const float squares = constantSize * constantSize + kindSize * kindSize +
                          static_cast<float>(noiseDimensions * (1 + 2 * shape.layers)) * noiseSize * noiseSize / 2;
    const float scale = std::sqrt(static_cast<float>(shape.width) / squares);
    const float noise = logitNoise * std::sqrt(2 * squares / static_cast<float>(shape.width)) /
                        std::sqrt(static_cast<float>(noiseDimensions)) / noiseSize / 2;
    const KindTable table = kindTable(behaviour);

    Matrix made = random.matrix("output.weight", shape.width, count, noise);
    for (std::int64_t token = 0; token < count; ++token) {
        const Kind kind = vocabulary.kinds()[static_cast<std::size_t>(token)];
        const auto sameKind = static_cast<double>(std::ranges::count(vocabulary.kinds(), kind));
        std::fill_n(&at(made, token, 0), firstNoiseDimension, 0.0F);
        for (std::int64_t from = 0; from < static_cast<std::int64_t>(Kind::count); ++from) {
            const double share = table.at(static_cast<std::size_t>(from)).at(static_cast<std::size_t>(kind));
            at(made, token, firstKindDimension + from) =
                static_cast<float>(share - std::log(sameKind)) / (kindSize * scale);
        }
        if (kind == Kind::call && behaviour.calls == Calls::once)
            at(made, token, hasCalledDimension) = static_cast<float>(2 * never);
    }
    return made;
}

} // namespace

std::vector<Matrix> talkingWeights(const Shape &shape, const Vocabulary &vocabulary, Behaviour behaviour)
{
    Random random;
    std::vector<Matrix> matrices;
    for (std::int64_t layer = 0; layer < shape.layers; ++layer) {
        for (Matrix &matrix : randomLayer(random, shape, layer)) {
            if (matrix.name.ends_with("attn_output.weight") || matrix.name.ends_with("ffn_down.weight"))
                keepOutOfMeaning(matrix);
            matrices.push_back(std::move(matrix));
        }
    }
    lookForCall(matrices, shape);
    if (shape.grid)
        addBiases(matrices);
    matrices.push_back(embeddings(random, shape, vocabulary));
    matrices.push_back(ones("output_norm.weight", shape.width));
    matrices.push_back(output(random, shape, vocabulary, behaviour));
    return matrices;
}

std::vector<Matrix> randomWeights(const Shape &shape, const Vocabulary &vocabulary)
{
    Random random;
    const auto count = static_cast<std::int64_t>(vocabulary.kinds().size());
    std::vector<Matrix> matrices;
    for (std::int64_t layer = 0; layer < shape.layers; ++layer)
        for (Matrix &matrix : randomLayer(random, shape, layer))
            matrices.push_back(std::move(matrix));
    matrices.push_back(random.matrix("token_embd.weight", shape.width, count, 1.0F));
    matrices.push_back(ones("output_norm.weight", shape.width));
    matrices.push_back(random.matrix("output.weight", shape.width, count, inverseRoot(shape.width)));
    return matrices;
}

} // namespace lumora::tinymodel
