// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/files/timepoint.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace lumora {

/// A structured answer as it is stored.
struct AnswerCard
{
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString summary MEMBER summary)
    Q_PROPERTY(QStringList keyPoints MEMBER keyPoints)
    Q_PROPERTY(QStringList nextSteps MEMBER nextSteps)

public:
    QString title;
    QString summary;
    QStringList keyPoints;
    QStringList nextSteps;

    bool operator==(const AnswerCard &) const = default;
};

/// One tool call made for a reply.
struct ToolEvent
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString status MEMBER status)

public:
    QString id;
    QString name;
    QString status; ///< "Running" or "Complete"; a file may hold any text

    bool operator==(const ToolEvent &) const = default;
};

struct ChatMessage
{
    enum class Role {
        user,
        assistant,
    };

    QUuid id = QUuid::createUuid();
    Role role = Role::user;
    QString text; ///< of a reply: what has arrived so far
    TimePoint date = TimePoint::now();
    std::optional<QString> imageFilename; ///< a bare name inside the image folder; user messages only
    std::optional<AnswerCard> card;
    std::optional<QList<ToolEvent>> toolEvents; ///< in call order; an empty list is not an absent one
    std::optional<qint64> inputTokens;
    std::optional<qint64> outputTokens;

    /// A reply of which nothing has arrived.
    bool isEmptyReply() const { return role == Role::assistant && text.isEmpty() && !card; }

    bool operator==(const ChatMessage &) const = default;
};

} // namespace lumora
