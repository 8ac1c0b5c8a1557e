// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What a prompt and a snapshot cost, with small and with large chats and histories.

#include "generation/promptassembly.h"
#include "platform/model/scripted/scriptedmodelservice.h"
#include "samplehistory.h"
#include "store/chatstore.h"
#include "store/historyfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>

using namespace lumora;

namespace {

constexpr qsizetype ordinaryLength = 1000; // of an answer; questions are shorter

void assemble(benchmark::State &state, const Conversation &conversation)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(assemblePrompt(conversation, QUuid(), initialPromptBudget));
}

void prompt20Messages(benchmark::State &state)
{
    assemble(state, sampleConversation(21, ordinaryLength, 1));
}
BENCHMARK(prompt20Messages)->Unit(benchmark::kMicrosecond);

void prompt5000Messages(benchmark::State &state)
{
    assemble(state, sampleConversation(5000, ordinaryLength, 1));
}
BENCHMARK(prompt5000Messages)->Unit(benchmark::kMicrosecond);

void prompt5MegabyteEarlierMessage(benchmark::State &state)
{
    Conversation conversation = sampleConversation(21, ordinaryLength, 1);
    conversation.messages[18].text = sampleText(5'000'000, 7);
    assemble(state, conversation);
}
BENCHMARK(prompt5MegabyteEarlierMessage)->Unit(benchmark::kMicrosecond);

void prompt5MegabyteLatestMessage(benchmark::State &state)
{
    Conversation conversation = sampleConversation(21, ordinaryLength, 1);
    conversation.messages.back().text = sampleText(5'000'000, 7);
    assemble(state, conversation);
}
BENCHMARK(prompt5MegabyteLatestMessage)->Unit(benchmark::kMicrosecond);

/// A store with this many chats, in which a reply of many snapshots is generated. The time is that from the first
/// snapshot's arrival on the message to the last one's, by the number of snapshots.
void snapshot(benchmark::State &state)
{
    const QTemporaryDir data;
    QDir(data.path()).mkpath(QStringLiteral("Lumora"));
    std::vector<Conversation> history;
    for (int64_t i = 0; i < state.range(0); ++i)
        history.push_back(sampleConversation(4, ordinaryLength, quint32(i + 1)));
    QFile file(data.filePath(QStringLiteral("Lumora/conversations.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(encodeConversations(history)) < 0)
        state.SkipWithError("no history");
    file.close();

    const auto model = std::make_shared<ScriptedModelService>();
    ChatStore store(SystemLanguageModel(model), data.path());
    // The chat that is looked up lies at the end of the list.
    store.selectConversation(store.conversations().back().id);
    QStringList pieces;
    for (int i = 0; i < 2000; ++i)
        pieces.append(QStringLiteral("word "));
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        model->enqueue(Script::pieces(pieces));
        Clock::time_point first;
        Clock::time_point last;
        int snapshots = 0;
        const auto connection = QObject::connect(&store, &ChatStore::messageChanged, &store, [&] {
            last = Clock::now();
            if (snapshots++ == 0)
                first = last;
        });
        store.setDraft(QStringLiteral("Go"));
        store.send();
        while (store.isGenerating())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QObject::disconnect(connection);
        state.SetIterationTime(std::chrono::duration<double>(last - first).count() / snapshots);
    }
}
BENCHMARK(snapshot)->Arg(10)->Arg(5000)->Unit(benchmark::kMicrosecond)->UseManualTime()->Iterations(5);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
