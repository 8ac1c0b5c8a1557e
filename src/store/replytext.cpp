// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/replytext.h"

#include "platform/text/textrules.h"

namespace lumora {

QString cleanReplyText(const QString &text)
{
    QString withoutMarkers = text;
    withoutMarkers.remove(QLatin1String("<start_of_turn>model"));
    return trimmed(withoutMarkers).toString();
}

} // namespace lumora
