// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

namespace lumora {

/// A paragraph of Markdown that is still being written, with the styles and the code closed that are open at its end.
/// Marks at the end that may become a style, code or a link are left out.
QString withMarksClosed(QStringView paragraph);

/// How often the first unit of a text stands there in a row; 0 for an empty text.
qsizetype runLength(QStringView text);

} // namespace lumora
