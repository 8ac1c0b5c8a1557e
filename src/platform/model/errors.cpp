// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/errors.h"

namespace lumora {

ModelError::ModelError(QString description)
    : m_description(std::move(description))
    , m_utf8(m_description.toUtf8())
{
}

} // namespace lumora
