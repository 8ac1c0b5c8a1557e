// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/transcript.h"
#include "store/records.h"

#include <QList>

namespace lumora {

/// The tool calls of a transcript in their order: "Running" until the output with the call's id has come, then
/// "Complete". An output completes the first call with its id; one that answers no call is passed over.
QList<ToolEvent> toolEvents(const Transcript &transcript);

} // namespace lumora
