// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace lumora {

/// What came out of reading an image file.
struct Reading
{
    enum class Outcome {
        everything, ///< content is all that stands in it
        part,       ///< content is what could be read in time
        nothing,    ///< it holds nothing to read
        late,       ///< nothing could be read in time
        noImage,    ///< it is no image, or one that exceeds the limits
        noLanguage, ///< there is no language data to recognise text with
    };

    Outcome outcome = Outcome::nothing;
    QString content;

    bool operator==(const Reading &) const = default;
};

/// As the reading process writes it for the one that asked.
QByteArray encoded(const Reading &reading);
/// Nothing where this is not what encoded makes.
std::optional<Reading> decodedReading(const QByteArray &bytes);

} // namespace lumora
