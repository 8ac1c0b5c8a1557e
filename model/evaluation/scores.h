// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "evaluation/judgement.h"

#include <QJsonObject>
#include <QString>

#include <map>

namespace lumora::evaluation {

/// Counts what was right, by what is asked of the model and by task.
class Scores
{
public:
    void add(const QString &task, const QJsonObject &expect, const Reply &reply, const Judgement &judgement);

    /// Two tables in Markdown, and a line about the speed.
    QString text() const;

private:
    struct Count
    {
        int asked = 0;
        int right = 0;
        void add(bool isRight);
        QString percent() const;
    };

    Count &measure(const char *name);

    std::map<QString, Count> m_measures; // in the order of their names, which begin with a number
    std::map<QString, Count> m_tasks;
    double m_seconds = 0;
    double m_secondsToText = 0;
    int m_texts = 0;
    qint64 m_inputTokens = 0;
    qint64 m_outputTokens = 0;
};

} // namespace lumora::evaluation
