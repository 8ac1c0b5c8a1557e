// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/localmodelservice.h"

#include "platform/model/local/problems.h"

#include <QLoggingCategory>

#include <utility>

namespace lumora {

namespace {

Q_LOGGING_CATEGORY(log, "lumora.model", QtWarningMsg)

constexpr int tooManyCrashes = 3;

} // namespace

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
    m_requests.disconnectReplies(this);
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
    connect(reply.get(), &LocalReply::toolAnswered, this, [this, id](const QString &callID, const QString &output) {
        send(wire::ToolOutput{id, callID.toStdString(), output.toStdString()});
    });
    m_requests.add(id, std::move(request), reply.get());
    submit();
    return reply;
}

void LocalModelService::submit()
{
    if (m_state == State::notLooked)
        look();
    if (m_state == State::ready)
        m_requests.send(*m_process);
    else if (m_state != State::loading)
        m_requests.failWaiting(m_problem);
    superviseService();
}

void LocalModelService::send(const wire::Request &request)
{
    if (m_process)
        m_process->send(request);
}

void LocalModelService::cancelReply(qint64 id)
{
    if (m_requests.cancel(id))
        send(wire::Cancel{id});
    superviseService();
}

void LocalModelService::superviseService()
{
    const RequestQueue::Current current = m_requests.current();
    if (std::exchange(m_supervised, current) == current)
        return;
    m_patience.stop();
    if (current.work == RequestQueue::Work::count)
        m_patience.start(m_settings.patience.untilCounted);
    else if (current.work == RequestQueue::Work::cancelledReply)
        m_patience.start(m_settings.patience.untilCancelled);
}

void LocalModelService::look()
{
    const std::optional<ModelFile> file = chooseModelFile(m_settings.modelFolder, m_settings.builtInModels);
    const std::optional<ModelFile> lookBefore = std::exchange(m_lastLook, file);
    // A reply is not disturbed: the next look comes when it has ended.
    if (m_requests.isReplySent() || (m_process && file == m_file))
        return;
    if (!file)
        enter(State::noFile, problems::noFile(m_settings.modelFolder));
    else if (!isSettled(*file, lookBefore, m_settings.patience.untilSettled))
        enter(State::growing, problems::growing(file->path));
    else if (mustLoad(*file))
        adopt(*file);
}

bool LocalModelService::mustLoad(const ModelFile &file) const
{
    switch (m_state) {
    case State::badFile:
    case State::tooLarge:
        return file != m_file;
    case State::cannotRun:
    case State::crashing:
        return file != m_file || m_retry.hasExpired();
    default:
        return true;
    }
}

void LocalModelService::adopt(const ModelFile &file)
{
    if (file != m_file || m_state == State::crashing)
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
    if (!m_process)
        startProcess();
    m_loadID = ++m_lastID;
    send(wire::Load{m_loadID, file.path.toStdString(), std::nullopt});
    enter(State::loading);
}

// The one place where the state changes.
void LocalModelService::enter(State state, const QString &problem)
{
    m_state = state;
    m_problem = problem;
    if (state != State::ready)
        m_contextSize = 0;
    if (state == State::ready) {
        m_requests.send(*m_process);
    } else if (state != State::loading) {
        dropProcess();
        m_requests.takeBack(problem);
        m_requests.failWaiting(problem);
    }
    if (state == State::growing)
        m_nextLook.start();
    if (state == State::cannotRun || state == State::crashing)
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
    case State::crashing:
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

void LocalModelService::startProcess()
{
    m_process = new ServiceProcess(m_settings.command, this);
    connect(m_process, &ServiceProcess::answered, this, &LocalModelService::takeAnswer);
    connect(m_process, &ServiceProcess::ended, this, &LocalModelService::takeEnd);
}

// It may be speaking just now.
void LocalModelService::dropProcess()
{
    if (!m_process)
        return;
    m_process->close();
    std::exchange(m_process, nullptr)->deleteLater();
}

void LocalModelService::takeAnswer(const wire::Answer &answer)
{
    if (takeLoadAnswer(answer))
        return;
    switch (m_requests.take(answer)) {
    case RequestQueue::Answered::goesOn:
        return;
    case RequestQueue::Answered::count:
        break;
    case RequestQueue::Answered::reply:
        m_crashes = 0;
        look();
        break;
    case RequestQueue::Answered::senseless:
        m_process->endFor(ServiceEnd::Kind::garbled);
        return;
    }
    superviseService();
}

// Says whether it was one. The answer to an earlier load changes nothing any more.
bool LocalModelService::takeLoadAnswer(const wire::Answer &answer)
{
    if (const auto *loaded = std::get_if<wire::Loaded>(&answer)) {
        if (loaded->id != m_loadID)
            return true;
        qCInfo(log, "loaded %s", loaded->description.c_str());
        m_contextSize = loaded->contextSize;
        enter(State::ready);
        return true;
    }
    const auto *failed = std::get_if<wire::Failed>(&answer);
    if (!failed || failed->id != m_loadID)
        return false;
    const bool isMemory = failed->code == wire::ErrorCode::noMemory;
    enter(isMemory ? State::tooLarge : State::badFile, QString::fromStdString(failed->message));
    return true;
}

void LocalModelService::takeEnd(const ServiceEnd &end)
{
    const QString description = end.description();
    qCWarning(log, "%s\n%s", qUtf8Printable(description), qUtf8Printable(end.lastWords));
    dropProcess();
    const bool isTooMuch = ++m_crashes >= tooManyCrashes;
    m_requests.takeBack(isTooMuch ? problems::crashing() : description);
    if (end.isHopeless())
        enter(State::cannotRun, description);
    else if (isTooMuch)
        enter(State::crashing, problems::crashing());
    else
        look();
    superviseService();
}

} // namespace lumora
