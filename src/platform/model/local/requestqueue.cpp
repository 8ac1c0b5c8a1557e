// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/requestqueue.h"

#include "platform/model/local/wirerequest.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace lumora {

namespace {

qint64 idOf(const wire::Answer &answer)
{
    return std::visit([](const auto &message) { return qint64{message.id}; }, answer);
}

QByteArray toBytes(const std::string &text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

} // namespace

RequestQueue::RequestQueue(QObject *owner, std::function<void()> moreMayBeSent)
    : m_owner(owner)
    , m_moreMayBeSent(std::move(moreMayBeSent))
{
}

void RequestQueue::add(qint64 id, const QString &text, std::shared_ptr<PendingCount> count)
{
    m_requests.push_back({id, Count{text, std::move(count)}});
}

void RequestQueue::add(qint64 id, ReplyRequest request, LocalReply *reply)
{
    m_requests.push_back({id, Reply{std::move(request), reply}});
}

void RequestQueue::send(ServiceProcess &process, Attachments attachments)
{
    Requests refused;
    auto next = std::ranges::find(m_requests, false, &Request::isSent);
    while (next != m_requests.end() && isReady(*next, attachments)) {
        next->isSent = process.send(toMessage(*next, attachments)) == ServiceProcess::Sent::yes;
        if (next->isSent) {
            ++next;
        } else {
            refused.push_back(std::move(*next));
            next = m_requests.erase(next);
        }
    }
    for (const Request &request : refused)
        fail(request, QCoreApplication::translate("LanguageModel",
                                                  "The message is too long for the language model. Shorten it."));
}

// Begins to read the images where that has not been done.
bool RequestQueue::isReady(Request &request, Attachments attachments) const
{
    auto *reply = std::get_if<Reply>(&request.what);
    if (!reply || attachments == Attachments::asLabels || reply->request.prompt.attachments.isEmpty())
        return true;
    if (!reply->images) {
        reply->images = std::make_shared<PromptImages>(reply->request.prompt.attachments);
        // Not from within the signal: to send the request may be to forget it, and its images.
        QObject::connect(reply->images.get(), &PromptImages::read, m_owner, m_moreMayBeSent, Qt::QueuedConnection);
    }
    return reply->images->areRead();
}

wire::Request RequestQueue::toMessage(const Request &request, Attachments attachments)
{
    if (const auto *count = std::get_if<Count>(&request.what))
        return wire::Count{request.id, count->text.toStdString()};
    const auto &reply = std::get<Reply>(request.what);
    const bool hasImages = attachments == Attachments::asImages && reply.images;
    return toWire(request.id, reply.request, hasImages ? reply.images->images() : AttachedImages());
}

RequestQueue::Answered RequestQueue::take(const wire::Answer &answer)
{
    const auto found = find(idOf(answer));
    if (found == m_requests.end() || !found->isSent)
        return Answered::goesOn;
    if (const auto *count = std::get_if<Count>(&found->what)) {
        const Answered answered = takeForCount(*count, answer);
        if (answered == Answered::count)
            m_requests.erase(found);
        return answered;
    }
    // Out of the queue before anybody hears of it, and then asks for more.
    const QPointer<LocalReply> reply = std::get<Reply>(found->what).reply;
    if (std::holds_alternative<wire::Finished>(answer) || std::holds_alternative<wire::Failed>(answer))
        m_requests.erase(found);
    return takeForReply(reply, answer);
}

RequestQueue::Answered RequestQueue::takeForCount(const Count &count, const wire::Answer &answer)
{
    if (const auto *counted = std::get_if<wire::Counted>(&answer))
        count.pending->finish(counted->tokens);
    else if (const auto *failed = std::get_if<wire::Failed>(&answer))
        count.pending->fail(QString::fromStdString(failed->message));
    else
        return Answered::senseless;
    return Answered::count;
}

RequestQueue::Answered RequestQueue::takeForReply(const QPointer<LocalReply> &reply, const wire::Answer &answer)
{
    if (const auto *text = std::get_if<wire::Text>(&answer)) {
        if (reply)
            reply->takeText(QString::fromStdString(text->piece));
        return Answered::goesOn;
    }
    if (const auto *call = std::get_if<wire::ToolCall>(&answer)) {
        if (reply)
            reply->takeToolCall(QString::fromStdString(call->call), QString::fromStdString(call->name),
                                toBytes(call->arguments));
        return Answered::goesOn;
    }
    if (const auto *finished = std::get_if<wire::Finished>(&answer)) {
        if (reply)
            reply->finish({{finished->inputTokens}, {finished->outputTokens}},
                          toBytes(finished->content.value_or(std::string())));
        return Answered::finished;
    }
    if (const auto *failed = std::get_if<wire::Failed>(&answer)) {
        if (reply)
            reply->fail(QString::fromStdString(failed->message));
        return Answered::failed;
    }
    return Answered::senseless;
}

bool RequestQueue::cancel(qint64 id)
{
    const auto found = find(id);
    if (found == m_requests.end())
        return false;
    if (!found->isSent) {
        m_requests.erase(found);
        return false;
    }
    std::get<Reply>(found->what).reply = nullptr;
    return true;
}

void RequestQueue::takeBack(const QString &failure)
{
    std::optional<Request> failed;
    const auto current = std::ranges::find(m_requests, true, &Request::isSent);
    if (current != m_requests.end()) {
        auto *count = std::get_if<Count>(&current->what);
        // It may have gone between the last answer and this question: that a count is asked again does no harm.
        if (!count || std::exchange(count->isSecondTry, true)) {
            failed = std::move(*current);
            m_requests.erase(current);
        }
    }
    std::erase_if(m_requests, [](const Request &request) { return isCancelled(request); });
    for (Request &request : m_requests)
        request.isSent = false;
    if (failed)
        fail(*failed, failure);
}

void RequestQueue::failWaiting(const QString &failure)
{
    const auto firstWaiting = std::ranges::stable_partition(m_requests, &Request::isSent).begin();
    const Requests waiting(std::make_move_iterator(firstWaiting), std::make_move_iterator(m_requests.end()));
    m_requests.erase(firstWaiting, m_requests.end());
    for (const Request &request : waiting)
        fail(request, failure);
}

void RequestQueue::fail(const Request &request, const QString &failure)
{
    if (const auto *count = std::get_if<Count>(&request.what))
        count->pending->fail(failure);
    else if (const auto &reply = std::get<Reply>(request.what).reply)
        reply->failLater(failure);
}

bool RequestQueue::isCancelled(const Request &request)
{
    const auto *reply = std::get_if<Reply>(&request.what);
    return reply && !reply->reply;
}

bool RequestQueue::isAnySent() const
{
    return std::ranges::any_of(m_requests, &Request::isSent);
}

RequestQueue::Current RequestQueue::current() const
{
    const auto found = std::ranges::find(m_requests, true, &Request::isSent);
    if (found == m_requests.end())
        return {};
    if (std::holds_alternative<Count>(found->what))
        return {Work::count, found->id};
    return {isCancelled(*found) ? Work::cancelledReply : Work::reply, found->id};
}

RequestQueue::Requests::iterator RequestQueue::find(qint64 id)
{
    return std::ranges::find(m_requests, id, &Request::id);
}

} // namespace lumora
