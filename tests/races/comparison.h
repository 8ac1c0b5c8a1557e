// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "races/libraryrules.h"
#include "races/storerules.h"
#include "store/chatstore.h"

namespace lumora::races {

// Each compares what the rules say with what there is, on the disk too, and says what differs; empty where nothing
// does. What the rules cannot know beforehand is taken over from what there is, where it can be true.

/// since: when they were compared before.
QString compare(StoreRules &expected, const ChatStore &store, const TimePoint &since);

QString compare(LibraryRules &expected, const DocumentLibrary &library);

/// The messages of a chat, which stays packed.
std::vector<ChatMessage> messagesOf(const Conversation &conversation);

} // namespace lumora::races
