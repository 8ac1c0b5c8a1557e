// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/local/promptimages.h"
#include "platform/model/modelservice.h"

#include <string>
#include <wire/messages.h>

namespace lumora {

/// The request as the service reads it. images: of the attachments, in order, as far as the model can see them; of the
/// others it gets to know that they are there, and their labels.
wire::Respond toWire(qint64 id, const ReplyRequest &request, AttachedImages images);

/// The output as UTF-8, cut to a mebibyte at most, between two characters.
std::string toolOutputText(const QString &output);

} // namespace lumora
