// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/examplestream.h"
#include "conversations/trainingvocabulary.h"
#include "trainer/checkpoint.h"
#include "trainer/configuration.h"
#include "trainer/copyexercises.h"
#include "trainer/heldout.h"
#include "trainer/network.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace lumora::training {

/// One run of the training, of a given time, in which the learning rate rises, stays and falls.
class Training
{
public:
    struct Files
    {
        std::string checkpoint;
        std::string model; ///< written anew with every checkpoint
    };

    /// Where there is no checkpoint to go on from, begins with these weights.
    Training(Configuration configuration, const TrainingVocabulary &vocabulary, Files files, double minutes,
             const std::vector<float> &weights);

    /// Trains until the time is up or the function says so, and saves. Writes its progress to standard output.
    void run(const std::function<bool()> &mustStop);

private:
    using Clock = std::chrono::steady_clock;

    void readHeldOut();
    void enterPhase();
    std::vector<Batch> nextStep();
    Passage nextPassage();
    void step(const std::vector<Batch> &batches);
    void report();
    void look();
    void save();
    double progress() const { return m_at.seconds / (60 * m_minutes); }

    Configuration m_configuration;
    const TrainingVocabulary &m_vocabulary;
    Files m_files;
    double m_minutes;
    Checkpoint m_at;
    Adam m_optimiser;
    std::vector<Network> m_networks;             // one for each thread
    std::vector<std::vector<float>> m_gradients; // the same
    std::unique_ptr<HeldOut> m_heldOut;

    const Phase *m_phase = nullptr;
    std::unique_ptr<ExampleStream> m_examples;
    CopyExercises m_exercises;
    std::int64_t m_exerciseTokens = 0; // in this phase
    std::int64_t m_exampleTokens = 0;

    double m_lossSum = 0; // since the last report, with what belongs to it
    std::int64_t m_lossCount = 0;
    std::int64_t m_tokensSince = 0;
    double m_secondsSince = 0;
    double m_secondsAtLook = 0;
};

} // namespace lumora::training
