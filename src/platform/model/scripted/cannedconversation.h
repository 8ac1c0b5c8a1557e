// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/modelservice.h"
#include "platform/model/scripted/script.h"

#include <chrono>

namespace lumora {

/// Something pleasant to look at while the window is worked on: the date where the date tool is offered, an answer card
/// where a schema is given, and otherwise one of a few texts, chosen by the prompt.
Script cannedReply(const ReplyRequest &request, std::chrono::milliseconds pieceDelay = std::chrono::milliseconds{40});

} // namespace lumora
