// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/modelservice.h"
#include "races/storerules.h"
#include "store/chatstore.h"

#include <deque>
#include <functional>

namespace lumora::races {

/// Follows a store. What the user does changes both at once. What the model says takes its time to reach the store, so
/// it is kept here in order, and the store may show the state after any number of it, never an earlier one than it has
/// shown. What belongs to a run that was stopped must never show.
class StoreReference
{
public:
    using Operation = std::function<void(StoreRules &)>;

    const StoreRules &now() const { return m_now; }

    /// What the user does: before the store is told.
    void apply(const Operation &operation);

    /// A store is started, on what the one before it has left.
    void start();

    /// Compares, and says what differs; empty where nothing does.
    QString observe(const ChatStore &store);

    /// Whether the store shows all that the model has said.
    bool hasCaughtUp(const ChatStore &store);

    /// What has not come, for a human.
    QString waitingFor() const;

    // What the run asks, and what the model says to it. Each is told before the run is.
    void takeCount(const QString &text);
    void takeRequest(const ReplyRequest &request, const QStringList &documentNames);
    void answerCount(qint64 tokens, qint64 contextSize);
    void addText(const QString &piece);
    void addToolCall(const QString &callID, const QString &name, const QStringList &offered);
    void addToolOutput(const QString &callID);
    void finish(const Usage &usage, const QByteArray &json);
    void fail(const QString &description);

private:
    struct Asked
    {
        qint64 budget = 9000;
        QString prompt;
        QString text;
        QList<ToolEvent> events; ///< with the model's identifiers, which the store does not show
        bool isOver = false;
    };

    struct News
    {
        Operation change;
        TimePoint since = TimePoint::now(); ///< not known before
    };

    void complain(const QString &what);
    void expectText();
    QList<ToolEvent> unseenEvents() const;
    QString differenceAfter(StoreRules &candidate, const ChatStore &store, const TimePoint &since);

    StoreRules m_now;
    std::deque<News> m_pending;
    std::optional<Asked> m_asked; ///< of the run
    QString m_complaint;
    TimePoint m_since = TimePoint::now(); ///< of the latest comparison
    QByteArray m_file;                    ///< as it was then
    int m_savesSeen = 0;
};

} // namespace lumora::races
