// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/languagemodelsession.h"

#include <QtGlobal>

namespace lumora {

/// The handle by which the store stops a run. Shared by both; used on the main thread.
class GenerationTask
{
public:
    /// Ends the run's wait, from the event loop, and stops the model. A task that is cancelled stays so.
    void cancel();
    bool isCancelled() const { return m_isCancelled; }

    /// The session whose waits a cancel ends, for as long as the guard lives.
    class SessionGuard
    {
    public:
        SessionGuard(std::shared_ptr<GenerationTask> task, LanguageModelSession &session);
        ~SessionGuard();
        Q_DISABLE_COPY_MOVE(SessionGuard)

    private:
        std::shared_ptr<GenerationTask> m_task;
    };

private:
    bool m_isCancelled = false;
    LanguageModelSession *m_session = nullptr;
};

} // namespace lumora
