// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "generation/generationtask.h"

namespace lumora {

void GenerationTask::cancel()
{
    m_isCancelled = true;
    if (m_session)
        m_session->cancel();
}

GenerationTask::SessionGuard::SessionGuard(std::shared_ptr<GenerationTask> task, LanguageModelSession &session)
    : m_task(std::move(task))
{
    m_task->m_session = &session;
}

GenerationTask::SessionGuard::~SessionGuard()
{
    m_task->m_session = nullptr;
}

} // namespace lumora
