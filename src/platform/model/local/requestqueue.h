// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/local/localreply.h"
#include "platform/model/local/promptimages.h"
#include "platform/model/local/serviceprocess.h"
#include "platform/model/pendingcount.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>
#include <wire/messages.h>

namespace lumora {

/// The requests that have no answer yet, in order: what waits for the model, and what the service was sent. It works on
/// the first of these, and has only read the others.
class RequestQueue
{
public:
    /// owner: outlives the queue, and calls in its thread, from the event loop, whenever more may be sent.
    RequestQueue(QObject *owner, std::function<void()> moreMayBeSent);

    void add(qint64 id, const QString &text, std::shared_ptr<PendingCount> count);
    void add(qint64 id, ReplyRequest request, LocalReply *reply);

    enum class Attachments {
        asLabels,
        asImages,
    };
    /// Sends all that waits, up to the first prompt whose images have to be read before.
    void send(ServiceProcess &process, Attachments attachments);

    enum class Answered {
        goesOn,    ///< the request has no end yet, or is not known any more
        count,     ///< a count has its answer
        finished,  ///< a reply has ended as it should
        failed,    ///< a reply has ended otherwise
        senseless, ///< no answer to such a request
    };
    /// answer: any but Loaded.
    Answered take(const wire::Answer &answer);

    /// Forgets a reply that waits; marks one that was sent. Says whether the service must be told.
    bool cancel(qint64 id);

    /// The service has gone: what it worked on fails, but for a count, which is asked once more; the rest waits again.
    void takeBack(const QString &failure);
    /// Everything that waits fails, from the event loop.
    void failWaiting(const QString &failure);

    bool isAnySent() const;

    /// What the service works on.
    enum class Work {
        nothing,
        load, ///< never the queue's: for who supervises the service
        count,
        reply,
        cancelledReply,
    };
    struct Current
    {
        Work work = Work::nothing;
        qint64 id = 0;
        bool operator==(const Current &) const = default;
    };
    Current current() const;

private:
    struct Count
    {
        QString text;
        std::shared_ptr<PendingCount> pending;
        bool isSecondTry = false;
    };
    struct Reply
    {
        ReplyRequest request;
        QPointer<LocalReply> reply;           // null once it is cancelled
        std::shared_ptr<PromptImages> images; // null until they are needed
    };
    struct Request
    {
        qint64 id = 0;
        std::variant<Count, Reply> what;
        bool isSent = false;
    };
    using Requests = std::vector<Request>;

    Requests::iterator find(qint64 id);
    bool isReady(Request &request, Attachments attachments) const;
    static wire::Request toMessage(const Request &request, Attachments attachments);
    static void fail(const Request &request, const QString &failure);
    static bool isCancelled(const Request &request);
    static Answered takeForCount(const Count &count, const wire::Answer &answer);
    static Answered takeForReply(const QPointer<LocalReply> &reply, const wire::Answer &answer);

    QObject *m_owner;
    std::function<void()> m_moreMayBeSent;
    Requests m_requests;
};

} // namespace lumora
