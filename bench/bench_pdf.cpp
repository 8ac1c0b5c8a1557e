// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The text of a PDF of 200 pages, and its import into the library, against the command that a person would use and an
// insert of its text into the index.

#include "documents/documentimport.h"
#include "platform/pdf/pdftextreader.h"
#include "platform/pdf/pdfwriter.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <memory>

using namespace lumora;

namespace {

constexpr int pages = 200;
constexpr int linesOfAPage = 46;
constexpr int wordsOfALine = 12;

QByteArray samplePdf()
{
    const QStringList words{"the", "lease",   "says",     "that",       "pets",   "are",     "allowed", "with",
                            "of",  "consent", "landlord", "in",         "café",   "naïve",   "writing", "because",
                            "it",  "was",     "agreed",   "between",    "both",   "parties", "Monday;", "page",
                            "a",   "see",     "12/14",    "Übersicht.", "(draft)"};
    QRandomGenerator random(1);
    QList<QByteArray> contents;
    for (int page = 0; page < pages; ++page) {
        QStringList lines;
        for (int line = 0; line < linesOfAPage; ++line) {
            QStringList chosen;
            for (int word = 0; word < wordsOfALine; ++word)
                chosen.append(words[random.bounded(int(words.size()))]);
            lines.append(chosen.join(' '));
        }
        contents.append(pdfLines(lines));
    }
    return pdfWithPages(contents);
}

/// The path of the file.
QString sampleFile()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        QFile file(folder.filePath("sample.pdf"));
        const QByteArray bytes = samplePdf();
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
    }();
    return path;
}

QString textByReader()
{
    return PdfTextReader{.helper = QStringLiteral(PDF_HELPER)}.text(sampleFile());
}

QString textByCommand()
{
    const QByteArray command = "exec pdftotext '" + QFile::encodeName(sampleFile()) + "' -";
    std::FILE *const output = ::popen(command.constData(), "r");
    QByteArray bytes;
    std::array<char, 65536> piece{};
    for (size_t count = 1; output && count > 0; bytes.append(piece.data(), qsizetype(count)))
        count = std::fread(piece.data(), 1, piece.size(), output);
    return output && ::pclose(output) == 0 ? QString::fromUtf8(bytes) : QString();
}

bool import(const QString &folder, const std::shared_ptr<SearchIndex> &index)
{
    const DocumentImport import{.picked = sampleFile(),
                                .folder = folder,
                                .document = {.name = "sample.pdf", .filename = "sample.pdf"},
                                .pdf = {.helper = QStringLiteral(PDF_HELPER)},
                                .index = index};
    const bool isImported = import.run().result == DocumentImport::Result::imported;
    return QFile::remove(folder + "/sample.pdf") && isImported;
}

bool insertByCommand(const QString &, const std::shared_ptr<SearchIndex> &index)
{
    return !index->indexSearchableItems({searchableItem({.name = "sample.pdf"}, {}, textByCommand())}).result();
}

void measureImport(benchmark::State &state, bool (*import)(const QString &, const std::shared_ptr<SearchIndex> &))
{
    const QTemporaryDir folder("bench-XXXXXX"); // a real disk's
    const auto index = std::make_shared<SearchIndex>(folder.filePath("index"));
    for (auto _ : state) {
        if (!import(folder.filePath("documents"), index))
            state.SkipWithError("not imported");
    }
}

void measure(benchmark::State &state, QString (*text)())
{
    static const QString expected = textByCommand().simplified();
    for (auto _ : state) {
        const QString result = text();
        state.PauseTiming();
        if (expected.isEmpty() || result.simplified() != expected)
            state.SkipWithError("not the text");
        state.ResumeTiming();
    }
}

void pdfText(benchmark::State &state)
{
    measure(state, textByReader);
}
BENCHMARK(pdfText)->Unit(benchmark::kMillisecond)->UseRealTime();

void pdftotextCommand(benchmark::State &state)
{
    measure(state, textByCommand);
}
BENCHMARK(pdftotextCommand)->Unit(benchmark::kMillisecond)->UseRealTime();

void pdfImport(benchmark::State &state)
{
    measureImport(state, import);
}
BENCHMARK(pdfImport)->Unit(benchmark::kMillisecond)->UseRealTime();

void pdftotextAndInsert(benchmark::State &state)
{
    measureImport(state, insertByCommand);
}
BENCHMARK(pdftotextAndInsert)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
