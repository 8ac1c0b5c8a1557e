// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/vision/reader/graypicture.h"
#include "platform/vision/reader/recognizedtext.h"

#include <QDeadlineTimer>
#include <QStringList>

#include <memory>
#include <optional>

namespace tesseract {
class TessBaseAPI;
}

namespace lumora {

/// The languages that there is recognition data for, sorted. Any thread.
QStringList installedRecognitionLanguages();

/// Tesseract, loaded with some languages. An object is for the thread that makes it; any number of them work side by
/// side. Says on standard error what it thinks of a picture.
class TextRecognizer
{
public:
    TextRecognizer();
    ~TextRecognizer();
    Q_DISABLE_COPY_MOVE(TextRecognizer)

    /// languages: the first one is tried first on every word. False where they cannot be loaded; then nothing else may
    /// be asked for.
    bool load(const QStringList &languages);

    enum class Layout {
        page,      ///< columns, paragraphs and lines
        lines,     ///< from edge to edge, as on receipts
        scattered, ///< words anywhere, as on signs
    };

    struct Result
    {
        QList<RecognizedLine> lines; ///< in reading order
        bool isComplete = true;      ///< not where the time was up
        double leftOut = 0;          ///< of a page: how much of what looks like letters is in no line; 0 to 1
    };

    /// Small text is enlarged before. What has been recognised when the time is up counts.
    Result recognize(const PagePicture &page, Layout layout, QDeadlineTimer end);

private:
    std::optional<double> show(const QImage &gray);
    double enlarging();
    int lineHeight();
    QList<RecognizedLine> lines() const;

    std::unique_ptr<tesseract::TessBaseAPI> m_api;
    QImage m_shown;
};

} // namespace lumora
