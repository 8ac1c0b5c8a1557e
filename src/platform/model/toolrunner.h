// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/tool.h"

#include <QByteArray>
#include <QFutureWatcher>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace lumora {

/// How one tool call ended: with an output, or with a failure's description.
struct ToolOutcome
{
    std::optional<QString> output;
    QString failure;
};

/// Calls the tool on a worker thread. The watcher, a child of parent, says on the parent's thread when it is done.
/// Destroying the watcher gives up the outcome; the call itself runs to its end, or until stop, on what it holds.
QFutureWatcher<ToolOutcome> *runTool(std::shared_ptr<const Tool> tool, QByteArray argumentsJson, std::stop_token stop,
                                     QObject *parent);

} // namespace lumora
