// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

namespace lumora {

// For bytes that wait in memory. Any thread.

/// Never null. Throws std::bad_alloc where memory is short.
QByteArray compressed(const QByteArray &bytes);

/// What compressed() was given. Throws std::bad_alloc too; ends the program for bytes that were not made by it.
QByteArray decompressed(const QByteArray &bytes);

} // namespace lumora
