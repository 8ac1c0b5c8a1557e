// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/errors.h"

#include <QString>
#include <qcoro/qcorotask.h>

#include <memory>
#include <optional>

namespace lumora {

/// What has become of a task so far.
template <typename T>
struct Outcome
{
    std::optional<T> value;
    std::optional<QString> failure;
    bool isConversionFailure = false;
    bool isCancelled = false;

    bool isDone() const { return value || failure || isCancelled; }
};

namespace detail {

template <typename T>
QCoro::Task<> record(QCoro::Task<T> task, std::shared_ptr<Outcome<T>> outcome)
{
    try {
        T value = co_await task;
        outcome->value = std::move(value);
    } catch (const ConversionError &error) {
        outcome->failure = error.description();
        outcome->isConversionFailure = true;
    } catch (const ModelError &error) {
        outcome->failure = error.description();
    } catch (const CancellationError &) {
        outcome->isCancelled = true;
    }
}

} // namespace detail

/// Lets the task run by itself and tells how it ends.
template <typename T>
std::shared_ptr<Outcome<T>> outcomeOf(QCoro::Task<T> task)
{
    auto outcome = std::make_shared<Outcome<T>>();
    detail::record(std::move(task), outcome);
    return outcome;
}

} // namespace lumora
