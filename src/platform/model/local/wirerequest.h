// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/modelservice.h"

#include <string>
#include <wire/messages.h>

namespace lumora {

/// The request as the service reads it. Of an attachment it gets to know that there is one, and its label.
wire::Respond toWire(qint64 id, const ReplyRequest &request);

/// The output as UTF-8, cut to a mebibyte at most, between two characters.
std::string toolOutputText(const QString &output);

} // namespace lumora
