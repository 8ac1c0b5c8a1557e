// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/records.h"

#include <QString>
#include <QUuid>

namespace lumora {

inline constexpr qint64 initialPromptBudget = 9000; ///< characters of the first attempt
inline constexpr qint64 messageCharacterCap = 8000; ///< no message gives more than its last characters
inline constexpr qint64 minimumPromptBudget = 500;  ///< the budget is halved only while it is above this

/// The prompt for the next reply of a chat. One message is left out, the reply to be filled; the last of the others is
/// the latest message. Earlier messages follow from the newest back, until one does not fit the budget.
QString assemblePrompt(const Conversation &conversation, const QUuid &excluding, qint64 budget);

/// The most tokens that a prompt may have, three quarters of the context.
qint64 promptTokenLimit(qint64 contextSize);

} // namespace lumora
