// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/replytext.h"

#include "platform/text/textrules.h"

namespace lumora {

QString cleanReplyText(const QString &text)
{
    constexpr QLatin1String marker("<start_of_turn>model");
    QString clean = text;
    if (clean.contains(marker))
        clean.remove(marker);
    const QStringView rest = trimmed(clean);
    return rest.size() == clean.size() ? clean : rest.toString();
}

} // namespace lumora
