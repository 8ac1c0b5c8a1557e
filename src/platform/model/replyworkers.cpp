// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/replyworkers.h"

#include <QCoreApplication>
#include <QThreadPool>

namespace lumora {

QThreadPool *replyWorkers()
{
    static QThreadPool workers;
    [[maybe_unused]] static const bool isAwaited = (qAddPostRoutine([] { workers.waitForDone(); }), true);
    return &workers;
}

} // namespace lumora
