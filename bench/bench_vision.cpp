// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What recognising a page of text costs, through the tool and with the tesseract command.

#include "platform/vision/imagetools.h"
#include "platform/vision/reader/ocrlanguages.h"
#include "platform/vision/reader/textrecognizer.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QLocale>
#include <QPainter>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace lumora;

namespace {

constexpr int dotsPerInch = 200;
constexpr QSize paper(1654, 2339); // A4
constexpr int margin = dotsPerInch;

/// A sheet full of prose in 11 points, as a file.
class Sheet
{
public:
    Sheet()
    {
        QImage image(paper, QImage::Format_RGB32);
        image.setDotsPerMeterX(qRound(dotsPerInch / 0.0254));
        image.setDotsPerMeterY(qRound(dotsPerInch / 0.0254));
        image.fill(Qt::white);
        QPainter painter(&image);
        QFont font(QStringLiteral("DejaVu Serif"));
        font.setPixelSize(11 * dotsPerInch / 72);
        painter.setFont(font);
        const QString sentences = QStringLiteral(
            "The lease begins on the first of March and ends after twelve months, unless both sides agree otherwise in "
            "writing. The rent of 850 euros is due on the third day of each month. Two cats may live in the flat, but "
            "no dogs. Bicycles are kept in the cellar, room 14, to which every tenant has a key. ");
        painter.drawText(image.rect().adjusted(margin, margin, -margin, -margin), Qt::TextWordWrap,
                         sentences.repeated(9));
        painter.end();
        image.save(path());
    }

    QString path() const { return m_folder.filePath(QStringLiteral("page.png")); }

private:
    QTemporaryDir m_folder;
};

void expectPage(benchmark::State &state, const QString &text)
{
    if (text.count(QLatin1String("Bicycles")) < 5)
        state.SkipWithError("the page was not read");
}

void recognisePage(benchmark::State &state)
{
    const Sheet sheet;
    const ImageTool tool = ocrTool(sheet.path(), {QStringLiteral(IMAGE_READER)});
    for (auto _ : state)
        expectPage(state, tool.call({}, {}));
}
BENCHMARK(recognisePage)->Unit(benchmark::kMillisecond)->UseRealTime();

/// With as many threads as its range says, or with all that it takes by itself (0), which wait for each other a lot.
void tesseractCommand(benchmark::State &state)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (state.range(0) > 0)
        environment.insert(QStringLiteral("OMP_THREAD_LIMIT"), QString::number(state.range(0)));
    const Sheet sheet;
    const QString languages =
        recognitionLanguages(QLocale::system().uiLanguages(), installedRecognitionLanguages()).join(u'+');
    for (auto _ : state) {
        QProcess command;
        command.setProcessEnvironment(environment);
        command.setStandardErrorFile(QProcess::nullDevice());
        command.start(QStringLiteral("tesseract"),
                      {sheet.path(), QStringLiteral("stdout"), QStringLiteral("-l"), languages});
        command.waitForFinished(-1);
        expectPage(state, QString::fromUtf8(command.readAllStandardOutput()));
    }
}
BENCHMARK(tesseractCommand)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
