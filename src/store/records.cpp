// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/records.h"

namespace lumora {

QList<ReplyStyle> allReplyStyles()
{
    return {ReplyStyle::chat, ReplyStyle::structured};
}

QString rawValue(ReplyStyle style)
{
    switch (style) {
    case ReplyStyle::chat:
        return QStringLiteral("Chat");
    case ReplyStyle::structured:
        return QStringLiteral("Structured");
    }
    Q_UNREACHABLE();
}

std::optional<ReplyStyle> replyStyleFromRawValue(QStringView text)
{
    for (const ReplyStyle style : allReplyStyles()) {
        if (rawValue(style) == text)
            return style;
    }
    return std::nullopt;
}

} // namespace lumora
