// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/network.h"

#include "trainer/packer.h"
#include "trainer/startingweights.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

using namespace lumora::training;

namespace {

const Shape small{.vocabulary = 80,
                  .width = 48,
                  .layers = 3,
                  .heads = 4,
                  .keyHeads = 2,
                  .headSize = 8,
                  .hidden = 40,
                  .context = 400,
                  .ropeBase = 10000.0F,
                  .normEpsilon = 1e-5F};

std::mt19937 &chance()
{
    static std::mt19937 random(7);
    return random;
}

std::vector<float> randomNumbers(std::size_t count, float size)
{
    std::normal_distribution<float> normal(0, size);
    std::vector<float> numbers(count);
    for (float &number : numbers)
        number = normal(chance());
    return numbers;
}

std::vector<float> randomWeights(const WeightLayout &layout)
{
    std::vector<float> weights = randomNumbers(layout.size(), 0.2F);
    for (const Tensor &tensor : layout.tensors())
        if (tensor.rows == 1)
            for (float &gain : tensor.in(std::span(weights)))
                gain += 1.0F;
    return weights;
}

Passage randomPassage(const std::vector<Token> &system, int size)
{
    Passage passage{"", system, std::vector<std::uint8_t>(system.size()), system.size()};
    std::uniform_int_distribution<Token> token(0, small.vocabulary - 1);
    for (int i = 0; i < size; ++i) {
        passage.tokens.push_back(token(chance()));
        passage.supervised.push_back(i > 2 && i % 3 != 0 ? 1 : 0);
    }
    return passage;
}

Batch packed(const std::vector<Passage> &passages)
{
    return pack(passages, 1).front();
}

} // namespace

class NetworkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gradientIsTheSlopeOfTheLoss()
    {
        Network network(small);
        const std::vector<float> weights = randomWeights(network.layout());
        const std::vector<Token> system = randomPassage({}, 70).tokens; // longer than a block of queries
        const Batch batch = packed({randomPassage(system, 90), randomPassage(system, 5), randomPassage(system, 65)});
        std::vector<float> gradient(weights.size());
        const double loss = network.learn(weights, batch, gradient);
        QCOMPARE(float(network.predict(weights, batch).loss), float(loss));

        for (const Tensor &tensor : network.layout().tensors()) {
            const std::vector<float> direction = randomNumbers(tensor.size(), 1.0F);
            double expected = 0;
            double length = 0;
            for (std::size_t i = 0; i < direction.size(); ++i) {
                expected += double{direction[i]} * gradient[tensor.offset + i];
                length += double{gradient[tensor.offset + i]} * gradient[tensor.offset + i];
            }
            const auto lossAt = [&](float distance) {
                std::vector<float> moved = weights;
                for (std::size_t i = 0; i < direction.size(); ++i)
                    moved[tensor.offset + i] += distance * direction[i];
                return network.predict(moved, batch).loss;
            };
            const float distance = 2e-4F;
            const double slope = (lossAt(distance) - lossAt(-distance)) / (2.0 * double{distance});
            QVERIFY2(std::abs(slope - expected) < 0.01 * std::sqrt(length) + 0.01,
                     qPrintable(QStringLiteral("%1: %2 instead of %3")
                                    .arg(QString::fromStdString(tensor.name))
                                    .arg(slope)
                                    .arg(expected)));
        }
    }

    // What stands in a batch once for many is computed as if each had it.
    void sharedBeginningChangesNothing()
    {
        Network network(small);
        const std::vector<float> weights = randomWeights(network.layout());
        const std::vector<Token> system = randomPassage({}, 70).tokens;
        const Passage first = randomPassage(system, 80);
        const Passage second = randomPassage(system, 30);
        const Passage other = randomPassage(randomPassage({}, 20).tokens, 40);
        std::vector<float> together(weights.size());
        std::vector<float> apart(weights.size());
        double loss = 0;
        const std::vector<Batch> batches = pack({first, other, second, other}, 2);
        QCOMPARE(batches.size(), size_t(2));
        for (const Batch &batch : batches)
            loss += network.learn(weights, batch, together);
        double sum = 0;
        for (const Passage &passage : {first, second, other, other})
            sum += network.learn(weights, batchOf(passage), apart);

        QVERIFY(std::abs(loss - sum) < 1e-4 * sum);
        for (std::size_t i = 0; i < together.size(); ++i)
            QVERIFY(std::abs(together[i] - apart[i]) < 1e-3F + 1e-3F * std::abs(apart[i]));
    }

    // Before anything was learned, a text that stood there before is continued.
    void startingWeightsCopy()
    {
        const Shape shape{.vocabulary = 500, .context = 512};
        Network network(shape);
        const std::vector<float> weights = startingWeights(shape, words(shape.vocabulary), 1);
        const std::vector<Token> text = randomWords(40, shape.vocabulary);
        Passage passage{"", {}, {}, 0};
        for (const bool isRepeated : {false, true}) {
            passage.tokens.push_back(Tokenizer::messageStart);
            passage.tokens.insert(passage.tokens.end(), text.begin(), text.end());
            passage.supervised.resize(passage.tokens.size(), isRepeated ? 1 : 0);
        }
        QVERIFY2(shareRight(network, weights, passage) > 0.85, qPrintable(QString::number(m_lastShare)));
    }

    // Nor that a few words of a sentence are asked for, which is then begun from its beginning. By chance one in 500
    // would be right, and one in five would be if the sentence were not told from the others.
    void startingWeightsFindSentences()
    {
        const Shape shape{.vocabulary = 500, .context = 512};
        Network network(shape);
        const std::vector<float> weights = startingWeights(shape, words(shape.vocabulary), 1);
        double right = 0;
        constexpr int questions = 60;
        for (int question = 0; question < questions; ++question) {
            Passage passage{"", {Tokenizer::messageStart}, {}, 0};
            std::vector<std::vector<Token>> sentences;
            for (int i = 0; i < 5; ++i) {
                const std::vector<Token> &sentence = sentences.emplace_back(randomWords(7, shape.vocabulary));
                passage.tokens.insert(passage.tokens.end(), sentence.begin(), sentence.end());
                passage.tokens.insert(passage.tokens.end(), {fullStop, space});
            }
            const std::vector<Token> &asked = sentences.at(static_cast<std::size_t>(question % 5));
            passage.tokens.insert(passage.tokens.end(),
                                  {Tokenizer::messageStart, asked[3], asked[5], Tokenizer::messageStart, asked[0]});
            passage.supervised.assign(passage.tokens.size(), 0);
            passage.supervised.back() = 1;
            right += shareRight(network, weights, passage);
        }
        QVERIFY2(right > 0.3 * questions, qPrintable(QString::number(right)));
    }

private:
    static constexpr Token fullStop = 2;
    static constexpr Token space = 3;

    static std::vector<std::string> words(int count)
    {
        std::vector<std::string> texts{"<|im_start|>", "<|im_end|>", ".", "\u0120"};
        while (std::cmp_less(texts.size(), count))
            texts.push_back("t" + std::to_string(texts.size()));
        return texts;
    }

    static std::vector<Token> randomWords(int count, int vocabulary)
    {
        std::uniform_int_distribution<Token> token(space + 1, vocabulary - 1);
        std::vector<Token> tokens(static_cast<std::size_t>(count));
        std::ranges::generate(tokens, [&] { return token(chance()); });
        return tokens;
    }

    double shareRight(Network &network, const std::vector<float> &weights, const Passage &passage)
    {
        const Batch batch = batchOf(passage);
        const Network::Prediction prediction = network.predict(weights, batch);
        double right = 0;
        for (std::size_t i = 0; i < batch.targets.size(); ++i)
            right += prediction.tokens[i] == batch.targets[i].token ? 1 : 0;
        m_lastShare = right / static_cast<double>(batch.targets.size());
        return m_lastShare;
    }

    double m_lastShare = 0;
};

QTEST_GUILESS_MAIN(NetworkTest)
#include "networktest.moc"
