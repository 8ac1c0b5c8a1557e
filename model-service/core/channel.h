// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/inbox.h"
#include "wire/messages.h"

#include <string_view>

namespace lumora::service {

enum class ChannelEnd {
    closed,    ///< the other end is gone
    malformed, ///< what came is not a frame, or not a message
};

/// Reads frames until the descriptor ends or breaks, and posts what they hold.
ChannelEnd readRequests(int descriptor, Inbox &inbox);

/// Writes all of the bytes. False: the other end is gone. The signal SIGPIPE must be ignored.
bool writeAll(int descriptor, std::string_view bytes);

} // namespace lumora::service
