// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Reading and writing a history of 50 MB, against RapidJSON alone on the same bytes and the same values.

#include "platform/files/filestore.h"
#include "samplehistory.h"
#include "store/historyfile.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <fcntl.h>
#include <limits>
#include <malloc.h>
#include <unistd.h>

using namespace lumora;

namespace {

constexpr qsizetype historyBytes = 50'000'000;

const std::vector<Conversation> &history()
{
    static const std::vector<Conversation> conversations = sampleHistory(historyBytes);
    return conversations;
}

const QByteArray &file()
{
    static const QByteArray bytes = encodeConversations(history());
    return bytes;
}

void setBytes(benchmark::State &state)
{
    state.SetBytesProcessed(state.iterations() * file().size());
}

void decode(benchmark::State &state, const ChatFound &found)
{
    file();
    for (auto _ : state) {
        state.PauseTiming(); // decoding takes over the bytes that were read, which are nobody else's
        QByteArray bytes(file().constData(), file().size());
        state.ResumeTiming();
        const auto conversations = decodeConversations(std::move(bytes), found);
        if (!conversations || conversations->size() != history().size())
            state.SkipWithError("not decoded");
    }
    setBytes(state);
}

void historyDecode(benchmark::State &state)
{
    decode(state, {});
}
BENCHMARK(historyDecode)->Unit(benchmark::kMillisecond);

void historyDecodeAndPack(benchmark::State &state)
{
    decode(state, [](Conversation &conversation) { conversation.messages.pack(); });
}
BENCHMARK(historyDecodeAndPack)->Unit(benchmark::kMillisecond);

void rapidJsonParse(benchmark::State &state)
{
    file();
    for (auto _ : state) {
        rapidjson::Document document;
        document.Parse(file().constData(), size_t(file().size()));
        if (document.HasParseError())
            state.SkipWithError("not parsed");
    }
    setBytes(state);
}
BENCHMARK(rapidJsonParse)->Unit(benchmark::kMillisecond);

void save(benchmark::State &state, const std::vector<Conversation> &conversations)
{
    const QTemporaryDir folder(QStringLiteral("bench-XXXXXX"));
    const QString path = folder.filePath(QStringLiteral("conversations.json"));
    for (auto _ : state) {
        if (replaceFile(path, [&](const ByteSink &file) { encodeConversations(conversations, file); }))
            state.SkipWithError("not written");
    }
    setBytes(state);
}

void historyEncodeAndSave(benchmark::State &state)
{
    save(state, history());
}
BENCHMARK(historyEncodeAndSave)->Unit(benchmark::kMillisecond)->UseRealTime();

void packedHistorySave(benchmark::State &state)
{
    std::vector<Conversation> packed = history();
    for (Conversation &conversation : packed)
        conversation.messages.pack();
    save(state, packed);
}
BENCHMARK(packedHistorySave)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The same values as a plain program holds them for RapidJSON: a document, its texts UTF-8 already.
void rapidJsonWriteAndSync(benchmark::State &state)
{
    const QTemporaryDir folder(QStringLiteral("bench-XXXXXX"));
    const QByteArray path = QFile::encodeName(folder.filePath(QStringLiteral("plain.json")));
    rapidjson::Document document;
    document.Parse(file().constData(), size_t(file().size()));
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        const int handle = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        const bool isWritten =
            ::write(handle, buffer.GetString(), buffer.GetSize()) == ssize_t(buffer.GetSize()) && ::fsync(handle) == 0;
        ::close(handle);
        if (!isWritten)
            state.SkipWithError("not written");
    }
    setBytes(state);
}
BENCHMARK(rapidJsonWriteAndSync)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    // Memory that one round has given back serves the next: what is measured is the work, not the system's zeroing of
    // pages, which would fall on whoever runs first.
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_THRESHOLD, std::numeric_limits<int>::max());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
