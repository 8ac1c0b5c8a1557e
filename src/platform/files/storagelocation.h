// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <optional>

namespace lumora {

/// The user's data directory ("application support"), an absolute path without a trailing slash, created or not.
/// Absent where the system names none, as for a user without a home.
std::optional<QString> applicationSupportDirectory();

/// The program's folder in a data directory; all that it stores lies inside. Absent where the directory is.
std::optional<QString> storageFolder(const std::optional<QString> &applicationSupport);

} // namespace lumora
