// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/localmodelservice.h"

#include "platform/model/local/ggufkind.h"
#include "platform/model/local/problems.h"
#include "platform/model/local/wirerequest.h"

#include <utility>

namespace lumora {

LocalModelService::LocalModelService(LocalModelSettings settings, QObject *parent)
    : ModelService(parent)
    , m_settings(std::move(settings))
{
    m_nextLook.setSingleShot(true);
    m_nextLook.setInterval(m_settings.patience.untilNextLook);
    connect(&m_nextLook, &QTimer::timeout, this, &LocalModelService::look);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        if (m_process)
            m_process->endFor(ServiceEnd::Kind::hung);
    });
}

LocalModelService::~LocalModelService()
{
    for (const QPointer<LocalReply> &reply : m_replies) {
        if (reply)
            reply->silence();
    }
    m_counts.cancelNow();
    delete m_process;
}

Availability LocalModelService::availability()
{
    look();
    m_announced = currentAvailability();
    return *m_announced;
}

qint64 LocalModelService::contextSize() const
{
    return m_contextSize;
}

QCoro::Task<qint64> LocalModelService::tokenCount(QString text)
{
    std::shared_ptr<PendingCount> count = m_counts.add();
    m_requests.add(++m_lastID, text, count);
    submit();
    return PendingCount::result(std::move(count));
}

std::unique_ptr<ModelReply> LocalModelService::respond(ReplyRequest request)
{
    const qint64 id = ++m_lastID;
    auto reply = std::make_unique<LocalReply>();
    connect(reply.get(), &LocalReply::cancelled, this, [this, id] { cancelReply(id); });
    connect(reply.get(), &LocalReply::toolAnswered, this,
            [this, id, from = reply.get()](const QString &callID, const QString &output) {
                sendToolOutput(*from, id, callID, output);
            });
    remember(reply.get());
    m_requests.add(id, std::move(request), reply.get());
    submit();
    return reply;
}

void LocalModelService::remember(LocalReply *reply)
{
    std::erase_if(m_replies, [](const QPointer<LocalReply> &known) { return !known || known->hasEnded(); });
    m_replies.emplace_back(reply);
}

void LocalModelService::submit()
{
    if (m_state == State::notLooked)
        look();
    if (m_state == State::ready)
        sendWaiting();
    else if (m_state != State::loading)
        m_requests.failWaiting(m_problem);
    superviseService();
}

void LocalModelService::sendWaiting()
{
    using Attachments = RequestQueue::Attachments;
    m_requests.send(*m_process, m_readsImages ? Attachments::asImages : Attachments::asLabels);
}

ServiceProcess::Sent LocalModelService::send(const wire::Request &request)
{
    return m_process ? m_process->send(request) : ServiceProcess::Sent::yes;
}

void LocalModelService::sendToolOutput(LocalReply &reply, qint64 id, const QString &callID, const QString &output)
{
    if (send(wire::ToolOutput{id, callID.toStdString(), toolOutputText(output)}) == ServiceProcess::Sent::yes)
        return;
    reply.failLater(problems::toolOutputTooLong());
    cancelReply(id);
}

void LocalModelService::cancelReply(qint64 id)
{
    if (m_requests.cancel(id))
        send(wire::Cancel{id});
    if (m_state == State::ready)
        sendWaiting(); // what waited for this one's images
    superviseService();
}

void LocalModelService::superviseService()
{
    using Work = RequestQueue::Work;
    const RequestQueue::Current current =
        m_state == State::loading ? RequestQueue::Current{Work::load, m_loadID} : m_requests.current();
    if (std::exchange(m_supervised, current) == current)
        return;
    m_patience.stop();
    if (current.work == Work::load)
        m_patience.start(m_settings.patience.untilLoaded);
    else if (current.work == Work::count)
        m_patience.start(m_settings.patience.untilCounted);
    else if (current.work == Work::cancelledReply)
        m_patience.start(m_settings.patience.untilCancelled);
}

void LocalModelService::look()
{
    const std::optional<ModelFile> file =
        chooseModelFile(m_settings.modelFolder, m_settings.builtInModel, m_settings.patience.untilSettled);
    const std::optional<ModelFile> lookBefore = std::exchange(m_lastLook, file);
    // What the service works on is not disturbed: the next look comes when it has ended.
    if (m_requests.isAnySent() || (m_process && file == m_file))
        return;
    if (!file) {
        enter(State::noFile, noFileProblem());
    } else if (isSettled(*file, lookBefore, m_settings.patience.untilSettled)) {
        if (mustLoad(*file))
            adopt(*file);
    } else if (canGoOnBeside(*file)) {
        m_nextLook.start();
    } else {
        enter(State::growing, file->isWhole ? problems::growing(file->path) : problems::partMissing(file->path));
    }
}

QString LocalModelService::noFileProblem() const
{
    const auto unreadable = unreadableModelFile(m_settings.modelFolder, m_settings.builtInModel);
    return unreadable ? problems::unreadable(*unreadable) : problems::noFile(m_settings.modelFolder);
}

// A file that is written over takes the model with it that was loaded from it. A projector was read as a whole.
bool LocalModelService::canGoOnBeside(const ModelFile &file) const
{
    return m_process && m_file && (m_file->path != file.path || isSameModel(*m_file, file));
}

bool LocalModelService::mustLoad(const ModelFile &file) const
{
    switch (m_state) {
    case State::badFile:
    case State::tooLarge:
        return file != m_file;
    case State::cannotRun:
    case State::failing:
        return file != m_file || m_retry.hasExpired();
    default:
        return true;
    }
}

void LocalModelService::adopt(const ModelFile &file)
{
    if (file != m_file)
        m_crashes = 0;
    m_file = file;
    if (!beginsLikeModel(file.path))
        enter(State::badFile, problems::noModel(file.path));
    else if (file.size > memorySize())
        enter(State::tooLarge, problems::tooLarge(file.path));
    else
        load(file);
}

void LocalModelService::load(const ModelFile &file)
{
    // A service can read no files but those that it was started for.
    dropProcess();
    QStringList files = file.parts;
    std::optional<std::string> projector;
    if (file.projector && m_blind != file) {
        files += file.projector->parts;
        projector = file.projector->path.toStdString();
    }
    startProcess(files);
    m_loadID = ++m_lastID;
    send(wire::Load{m_loadID, file.path.toStdString(), std::nullopt, projector});
    enter(State::loading);
}

// The one place where the state changes.
void LocalModelService::enter(State state, const QString &problem)
{
    m_state = state;
    m_problem = problem;
    if (state == State::ready) {
        sendWaiting();
    } else if (state != State::loading) {
        m_contextSize = 0;
        dropProcess();
        m_requests.takeBack(problem);
        m_requests.failWaiting(problem);
    }
    if (state == State::growing)
        m_nextLook.start();
    if (state == State::cannotRun || state == State::failing)
        m_retry.setRemainingTime(m_settings.patience.untilRetry);
    superviseService();
    announceLater();
}

Availability LocalModelService::currentAvailability() const
{
    using Reason = Availability::UnavailableReason;
    switch (m_state) {
    case State::ready:
        return Availability::available();
    case State::noFile:
        return Availability::unavailable(Reason::appleIntelligenceNotEnabled);
    case State::notLooked:
    case State::growing:
    case State::loading:
        return Availability::unavailable(Reason::modelNotReady);
    case State::tooLarge:
    case State::cannotRun:
        return Availability::unavailable(Reason::deviceNotEligible);
    case State::badFile:
    case State::failing:
        break;
    }
    return Availability::unavailable(Reason::other);
}

void LocalModelService::announceLater()
{
    if (!std::exchange(m_isAnnouncementPosted, true))
        QMetaObject::invokeMethod(this, &LocalModelService::announce, Qt::QueuedConnection);
}

void LocalModelService::announce()
{
    m_isAnnouncementPosted = false;
    const Availability current = currentAvailability();
    if (std::exchange(m_announced, current) != current)
        Q_EMIT availabilityChanged();
}

} // namespace lumora
