// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/training.h"

#include "trainer/builtinmodel.h"
#include "trainer/packer.h"
#include "trainer/threads.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <utility>

namespace lumora::training {

namespace {

constexpr double secondsBetweenReports = 20;
constexpr double longestStepSeconds = 60; // what takes longer was a pause of the process or of the machine

// The spans of the exercises grow while the first tokens are seen.
constexpr int shortestLongest = 6;
constexpr int longestLongest = 40;
constexpr double tokensOfGrowth = 1e6;

int tokensOf(const std::vector<Batch> &batches)
{
    return std::accumulate(batches.begin(), batches.end(), 0,
                           [](int sum, const Batch &batch) { return sum + batch.size(); });
}

std::size_t targetsOf(const std::vector<Batch> &batches)
{
    return std::accumulate(batches.begin(), batches.end(), std::size_t{0},
                           [](std::size_t sum, const Batch &batch) { return sum + batch.targets.size(); });
}

} // namespace

Training::Training(Configuration configuration, const TrainingVocabulary &vocabulary, Files files, double minutes,
                   const std::vector<float> &weights)
    : m_configuration(std::move(configuration))
    , m_vocabulary(vocabulary)
    , m_files(std::move(files))
    , m_minutes(minutes)
    , m_optimiser(weights.size())
    , m_gradients(static_cast<std::size_t>(m_configuration.threads), std::vector<float>(weights.size()))
    , m_exercises(m_configuration.shape.vocabulary, m_configuration.seed)
{
    for (int i = 0; i < m_configuration.threads; ++i)
        m_networks.emplace_back(m_configuration.shape);
    m_at.weights = weights;
    if (auto saved = readCheckpoint(m_files.checkpoint, m_configuration.shape)) {
        m_at = std::move(*saved);
        m_optimiser.state() = std::exchange(m_at.optimiser, {});
        std::printf("going on after %.1f minutes and %.2f M tokens\n", m_at.seconds / 60,
                    static_cast<double>(m_at.tokens) / 1e6);
    }
    m_secondsAtLook = m_at.seconds;
    readHeldOut();
}

void Training::readHeldOut()
{
    ExampleStream stream(m_configuration.heldOutExamples, 1, ExampleStream::Ends::withTheCommand);
    std::vector<Passage> passages;
    stream.forEach([&](const Example &example) { passages.push_back(makePassage(example, m_vocabulary)); });
    m_heldOut = std::make_unique<HeldOut>(std::move(passages));
}

void Training::run(const std::function<bool()> &mustStop)
{
    while (progress() < 1 && !mustStop()) {
        enterPhase();
        const Clock::time_point start = Clock::now();
        step(nextStep());
        const double seconds =
            std::min(std::chrono::duration<double>(Clock::now() - start).count(), longestStepSeconds);
        m_at.seconds += seconds;
        m_secondsSince += seconds;
        if (m_secondsSince > secondsBetweenReports)
            report();
        if (m_at.seconds - m_secondsAtLook > 60 * m_configuration.heldOutMinutes) {
            look();
            save();
        }
    }
    save();
    if (!mustStop())
        look();
}

void Training::enterPhase()
{
    const Phase &phase = m_configuration.phaseAt(m_at.tokens);
    if (&phase == m_phase)
        return;
    m_phase = &phase;
    // Another part of the endless examples than any run before had.
    const std::int64_t seed = 1000 * (m_at.tokens / 1000 + m_configuration.seed);
    m_examples = std::make_unique<ExampleStream>(phase.examples, seed, ExampleStream::Ends::never);
    m_exerciseTokens = 0;
    m_exampleTokens = 0;
}

std::vector<Batch> Training::nextStep()
{
    std::vector<Passage> passages;
    TokenCount count;
    while (count.tokens() < m_phase->tokensPerStep) {
        Passage passage = nextPassage();
        if (passage.tokens.size() > static_cast<std::size_t>(m_phase->longestPassage))
            continue;
        count.add(passage);
        passages.push_back(std::move(passage));
    }
    return pack(std::move(passages), m_configuration.threads);
}

Passage Training::nextPassage()
{
    const double all = static_cast<double>(m_exerciseTokens + m_exampleTokens);
    if (static_cast<double>(m_exerciseTokens) < m_phase->copyShare * all) {
        const double growth = std::min(1.0, static_cast<double>(m_at.tokens) / tokensOfGrowth);
        Passage exercise =
            m_exercises.make(shortestLongest + static_cast<int>(growth * (longestLongest - shortestLongest)));
        m_exerciseTokens += static_cast<std::int64_t>(exercise.tokens.size());
        return exercise;
    }
    const std::optional<Example> example = m_examples->next();
    if (!example)
        throw std::runtime_error("the examples have come to an end");
    Passage passage = makePassage(*example, m_vocabulary);
    m_exercises.show(passage.tokens);
    m_exampleTokens += static_cast<std::int64_t>(passage.tokens.size() - passage.systemSize);
    return passage;
}

void Training::step(const std::vector<Batch> &batches)
{
    const std::size_t targets = targetsOf(batches);
    const int threads = m_configuration.threads;
    std::vector<double> losses(static_cast<std::size_t>(threads));
    std::atomic<std::size_t> next = 0;
    onThreads(threads, [&](int thread) {
        for (std::size_t i = next++; i < batches.size(); i = next++)
            losses[thread] += m_networks[thread].learn(m_at.weights, batches[i], m_gradients[thread]);
    });
    m_optimiser.beginStep();
    const double rate = m_configuration.rateAt(progress(), m_optimiser.state().steps);
    const std::size_t part = m_at.weights.size() / threads + 1;
    onThreads(threads, [&](int thread) {
        m_optimiser.move(m_at.weights, m_gradients, std::min(part * thread, m_at.weights.size()),
                         std::min(part * (thread + 1), m_at.weights.size()), 1.0F / static_cast<float>(targets),
                         static_cast<float>(rate));
    });
    m_at.tokens += tokensOf(batches);
    m_at.supervised += static_cast<std::int64_t>(targets);
    m_tokensSince += tokensOf(batches);
    m_lossSum += std::accumulate(losses.begin(), losses.end(), 0.0);
    m_lossCount += static_cast<std::int64_t>(targets);
}

void Training::report()
{
    std::printf("%6.1f min  step %lld  %.2f M tokens, %.2f M to be written  loss %.4f  rate %.2e  %.0f tokens/s\n",
                m_at.seconds / 60, static_cast<long long>(m_optimiser.state().steps),
                static_cast<double>(m_at.tokens) / 1e6, static_cast<double>(m_at.supervised) / 1e6,
                m_lossSum / static_cast<double>(m_lossCount),
                m_configuration.rateAt(progress(), m_optimiser.state().steps),
                static_cast<double>(m_tokensSince) / m_secondsSince);
    std::fflush(stdout);
    m_lossSum = 0;
    m_lossCount = 0;
    m_tokensSince = 0;
    m_secondsSince = 0;
}

void Training::look()
{
    m_secondsAtLook = m_at.seconds;
    std::printf("held out: %s\n", m_heldOut->look(m_networks, m_at.weights).text().c_str());
    std::fflush(stdout);
}

void Training::save()
{
    m_at.optimiser = m_optimiser.state();
    writeCheckpoint(m_at, m_configuration.shape, m_files.checkpoint);
    m_at.optimiser = {};
    writeModel({m_configuration.shape, m_at.weights}, m_vocabulary.tokenizer(), NumberFormat::half, m_files.model);
}

} // namespace lumora::training
