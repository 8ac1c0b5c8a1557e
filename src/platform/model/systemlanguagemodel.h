// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/modelservice.h"

#include <memory>

namespace lumora {

/// A handle of the machine's language model; copies name the same model. Used on the main thread.
class SystemLanguageModel
{
public:
    explicit SystemLanguageModel(std::shared_ptr<ModelService> service);

    /// A synchronous look at the model's files and service.
    Availability availability() const;

    /// In tokens; 0 while no model is loaded.
    qint64 contextSize() const;

    /// Counts with the model's own tokenizer. Throws ModelError, CancellationError.
    QCoro::Task<qint64> tokenCount(QString text) const;

    ModelService *service() const { return m_service.get(); }

private:
    std::shared_ptr<ModelService> m_service;
};

} // namespace lumora
