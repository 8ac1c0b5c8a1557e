// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

namespace lumora::evaluation {

/// A call that the model made.
struct Call
{
    QString tool;
    QString arguments; ///< a JSON object
};

/// What the model replied, as the program would see it.
struct Reply
{
    QList<Call> calls;
    QString text;                   ///< of a structured answer: the JSON object
    std::optional<QString> failure; ///< why there is no reply
    double seconds = 0;             ///< from the request to the end
    double secondsToText = 0;       ///< to the first text or call
    qint64 inputTokens = 0;
    qint64 outputTokens = 0;
};

/// Which of the things that were expected of a reply it holds. What was not expected is held.
struct Judgement
{
    bool call = true;     ///< the right tool was called, with good arguments, or none
    bool content = true;  ///< the reply says what it has to
    bool citation = true; ///< and names its source

    bool isRight() const { return call && content && citation; }
};

/// expect: the member of that name in an example; model/generator/README.md says what its members mean.
Judgement judge(const QJsonObject &expect, const Reply &reply);

} // namespace lumora::evaluation
