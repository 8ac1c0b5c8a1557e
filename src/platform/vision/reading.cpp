// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/vision/reading.h"

#include <QStringDecoder>

namespace lumora {

namespace {

constexpr char firstOutcome = 'a'; // the outcome as a letter, and the content behind it as UTF-8

} // namespace

QByteArray encoded(const Reading &reading)
{
    return char(firstOutcome + int(reading.outcome)) + reading.content.toUtf8();
}

std::optional<Reading> decodedReading(const QByteArray &bytes)
{
    const int outcome = bytes.isEmpty() ? -1 : bytes.front() - firstOutcome;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString content = decoder(QByteArrayView(bytes).sliced(qMin<qsizetype>(1, bytes.size())));
    if (outcome < 0 || outcome > int(Reading::Outcome::noLanguage) || decoder.hasError())
        return std::nullopt;
    return Reading{Reading::Outcome(outcome), content};
}

} // namespace lumora
