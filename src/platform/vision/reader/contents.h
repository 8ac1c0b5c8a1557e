// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/vision/reading.h"

#include <QStringList>

namespace lumora {

/// What is written in an image file that is open: the text alone, its lines and paragraphs kept. uiLanguages: the
/// user's, as BCP 47 names. Ends after about half a minute at the latest.
Reading readWriting(int descriptor, const QStringList &uiLanguages);

/// What the barcodes of an image file that is open hold: a line for each, its type, a colon and its content; a content
/// of several lines begins on a line of its own. Some pictures keep it busy for hours.
Reading readCodes(int descriptor);

} // namespace lumora
