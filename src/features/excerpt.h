// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <stop_token>

namespace lumora {

/// The part of a text that a search phrase is about: at most 1,000 characters, from 200 before the first place where
/// the phrase's first word that occurs stands. Words of one or two characters do not count; where none occurs it is the
/// beginning of the text, and any part of it once stop is requested. As it stands there: not trimmed, line breaks kept.
QString excerpt(const QString &text, const QString &query, const std::stop_token &stop = {});

} // namespace lumora
