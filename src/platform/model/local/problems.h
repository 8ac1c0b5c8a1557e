// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <optional>

/// Why there is no model to answer, and what helps, as whole sentences for the user.
namespace lumora::problems {

QString noFile(const std::optional<QString> &folder);
QString unreadable(const QString &path);
QString growing(const QString &path);
QString partMissing(const QString &path);
QString noModel(const QString &path);
QString tooLarge(const QString &path);
QString crashing();
QString killedWhileLoading();
QString loadingTooLong(const QString &path);
QString toolOutputTooLong();

} // namespace lumora::problems
