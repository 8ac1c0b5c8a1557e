// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/systemlanguagemodel.h"

namespace lumora {

SystemLanguageModel::SystemLanguageModel(std::shared_ptr<ModelService> service)
    : m_service(std::move(service))
{
}

Availability SystemLanguageModel::availability() const
{
    return m_service->availability();
}

qint64 SystemLanguageModel::contextSize() const
{
    return m_service->contextSize();
}

QCoro::Task<qint64> SystemLanguageModel::tokenCount(QString text) const
{
    return m_service->tokenCount(std::move(text));
}

} // namespace lumora
