// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/timepoint.h"
#include "store/messages.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace lumora {

/// The response mode of the next request. Never stored.
class ReplyStyles
{
    Q_GADGET

public:
    enum class ReplyStyle {
        chat,
        structured,
    };
    Q_ENUM(ReplyStyle)
};
using ReplyStyle = ReplyStyles::ReplyStyle;

/// All cases, in the order in which they are shown.
QList<ReplyStyle> allReplyStyles();
/// The label of a case, "Chat" or "Structured".
QString rawValue(ReplyStyle style);
/// The case that has this label; nothing for any other text.
std::optional<ReplyStyle> replyStyleFromRawValue(QStringView text);

struct Conversation
{
    QUuid id = QUuid::createUuid();
    QString title = QStringLiteral("New Chat");
    Messages messages;
    TimePoint updatedAt = TimePoint::now();

    bool operator==(const Conversation &) const = default;
};

} // namespace lumora
