// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/toolrunner.h"

#include "platform/model/errors.h"
#include "platform/model/replyworkers.h"

#include <QCoreApplication>
#include <QtConcurrentRun>

#include <exception>
#include <new>

namespace lumora {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("LanguageModel", text);
}

// Nothing that a tool throws may leave the worker.
ToolOutcome callTool(const std::shared_ptr<const Tool> &tool, const QByteArray &argumentsJson,
                     const std::stop_token &stop)
{
    try {
        return {tool->call(GeneratedContent::fromJson(argumentsJson), stop), {}};
    } catch (const ModelError &error) {
        return {std::nullopt, error.description()};
    } catch (const std::bad_alloc &) {
        return {std::nullopt, translated(QT_TRANSLATE_NOOP("LanguageModel",
                                                           "The tool “%1” needs more memory than there is. Close other "
                                                           "programs and ask again."))
                                  .arg(tool->name())};
    } catch (const std::exception &error) {
        return {std::nullopt, translated(QT_TRANSLATE_NOOP("LanguageModel", "The tool “%1” failed (%2). Ask again."))
                                  .arg(tool->name(), QString::fromUtf8(error.what()))};
    } catch (...) {
        return {std::nullopt,
                translated(QT_TRANSLATE_NOOP("LanguageModel", "The tool “%1” failed. Ask again.")).arg(tool->name())};
    }
}

} // namespace

QFutureWatcher<ToolOutcome> *runTool(std::shared_ptr<const Tool> tool, QByteArray argumentsJson, std::stop_token stop,
                                     QObject *parent)
{
    auto *watcher = new QFutureWatcher<ToolOutcome>(parent);
    watcher->setFuture(
        QtConcurrent::run(replyWorkers(), callTool, std::move(tool), std::move(argumentsJson), std::move(stop)));
    return watcher;
}

} // namespace lumora
