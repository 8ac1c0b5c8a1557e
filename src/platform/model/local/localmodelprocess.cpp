// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The process behind the service: what it answers, and how it ends.

#include "platform/model/local/localmodelservice.h"
#include "platform/model/local/problems.h"

#include <QLoggingCategory>

#include <utility>

namespace lumora {

namespace {

Q_LOGGING_CATEGORY(log, "lumora.model", QtWarningMsg)

constexpr int tooManyCrashes = 3;

} // namespace

void LocalModelService::startProcess(const QStringList &files)
{
    ServiceCommand command = m_settings.command;
    for (const QString &file : files)
        command.arguments += {QStringLiteral("--reads"), file};
    m_process = new ServiceProcess(command, this);
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
        // Not at once: who counted may ask for a reply now, of the same model.
        m_nextLook.start();
        break;
    case RequestQueue::Answered::finished:
        m_crashes = 0;
        look();
        break;
    case RequestQueue::Answered::failed:
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
        takeLoaded(*loaded);
        return true;
    }
    const auto *failed = std::get_if<wire::Failed>(&answer);
    if (!failed || failed->id != m_loadID)
        return false;
    takeLoadFailure(*failed);
    return true;
}

void LocalModelService::takeLoaded(const wire::Loaded &loaded)
{
    qCInfo(log, "loaded %s", loaded.description.c_str());
    if (m_file && m_file->projector && !loaded.readsImages)
        qCWarning(log, "the model reads no images: %s", loaded.description.c_str());
    m_contextSize = loaded.contextSize;
    m_readsImages = loaded.readsImages;
    if (!m_settings.instructions.isEmpty()) // its end is of no interest
        send(wire::Prepare{++m_lastID, m_settings.instructions.toStdString()});
    enter(State::ready);
}

void LocalModelService::takeLoadFailure(const wire::Failed &failure)
{
    const QString problem = QString::fromStdString(failure.message);
    if (failure.code == wire::ErrorCode::badProjector && tryWithoutProjector())
        return;
    if (failure.code == wire::ErrorCode::noMemory)
        enter(State::cannotRun, problem);
    else if (failure.code == wire::ErrorCode::internal)
        enter(State::failing, problem);
    else
        enter(State::badFile, problem);
}

// Reading text is better than nothing. False where there was no projector.
bool LocalModelService::tryWithoutProjector()
{
    if (m_state != State::loading || !m_file || !m_file->projector || m_blind == m_file)
        return false;
    qCWarning(log, "loading the model with %s ended the service; the model reads no images",
              qUtf8Printable(m_file->projector->path));
    m_blind = m_file;
    load(*m_file);
    return true;
}

void LocalModelService::takeEnd(const ServiceEnd &end)
{
    const QString description = end.description();
    qCWarning(log, "%s\n%s", qUtf8Printable(description), qUtf8Printable(end.lastWords));
    dropProcess();
    // Where it would only happen again, it is not tried at once.
    if (end.isHopeless())
        enter(State::cannotRun, description);
    else if (end.isKill() && tryWithoutProjector())
        return;
    else if (m_state == State::loading && end.isKill())
        enter(State::cannotRun, problems::killedWhileLoading());
    else if (m_state == State::loading && end.kind == ServiceEnd::Kind::hung)
        enter(State::failing, problems::loadingTooLong(m_file ? m_file->path : QString()));
    else if (++m_crashes >= tooManyCrashes) // and stays so: after a pause, one more is enough
        enter(State::failing, problems::crashing());
    else
        startAnew(description);
}

void LocalModelService::startAnew(const QString &failure)
{
    m_requests.takeBack(failure);
    look();
    superviseService();
}

} // namespace lumora
