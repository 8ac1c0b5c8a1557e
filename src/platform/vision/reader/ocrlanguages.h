// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

namespace lumora {

/// The languages to recognise text in, as the recogniser's names (such as "deu", "chi_sim"), the most likely one first:
/// the user's, English, and what else is installed where that is not much. Empty where nothing is installed.
/// uiLanguages: the user's, as BCP 47 names. installed: what there is data for.
QStringList recognitionLanguages(const QStringList &uiLanguages, const QStringList &installed);

} // namespace lumora
