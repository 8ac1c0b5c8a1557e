// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/errors.h"
#include "platform/model/languagemodelsession.h"

#include <QStringList>

#include <memory>
#include <optional>

namespace lumora {

/// What a stream of snapshots has brought so far.
struct StreamLog
{
    QStringList snapshots;
    QList<qsizetype> transcriptSizes; ///< as each snapshot came
    bool isComplete = false;
    bool isCancelled = false;
    std::optional<QString> failure;

    bool hasEnded() const { return isComplete || isCancelled || failure; }
};

namespace detail {

/// Reads to the end; session may be gone before.
inline QCoro::Task<> readAll(ResponseStream stream, std::shared_ptr<StreamLog> log, const LanguageModelSession *session)
{
    try {
        while (!log->isComplete) {
            QCoro::Task<std::optional<Snapshot>> next = stream.next();
            const std::optional<Snapshot> snapshot = co_await next;
            if (snapshot) {
                log->snapshots.append(snapshot->content);
                log->transcriptSizes.append(session->transcript().entries.size());
            }
            log->isComplete = !snapshot;
        }
    } catch (const ModelError &error) {
        log->failure = error.description();
    } catch (const CancellationError &) {
        log->isCancelled = true;
    }
}

} // namespace detail

/// Asks, and reads what comes for as long as it comes.
inline std::shared_ptr<StreamLog> streamOf(LanguageModelSession &session, const Prompt &prompt,
                                           const GenerationOptions &options = {})
{
    auto log = std::make_shared<StreamLog>();
    detail::readAll(session.streamResponse(prompt, options), log, &session);
    return log;
}

} // namespace lumora
