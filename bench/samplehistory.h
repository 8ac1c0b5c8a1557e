// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/records.h"

#include <QString>

#include <vector>

namespace lumora {

/// Ordinary prose of about this many UTF-16 units: mostly English, with quotation marks, line breaks, accents, Japanese
/// and emoji. The same for the same seed.
QString sampleText(qsizetype length, quint32 seed);

/// A chat of questions and answers in turn, an answer of this many UTF-16 units and a question of a quarter of it; some
/// with tool events, a card or token counts.
Conversation sampleConversation(int messages, qsizetype answerLength, quint32 seed);

/// Chats of 25 messages, answers of about 1,600 characters, until the file has about this many bytes.
std::vector<Conversation> sampleHistory(qsizetype bytes);

} // namespace lumora
