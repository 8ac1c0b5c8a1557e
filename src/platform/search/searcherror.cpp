// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/searcherror.h"

namespace lumora {

SearchError::SearchError(QString description)
    : m_description(std::move(description))
    , m_utf8(m_description.toUtf8())
{
}

} // namespace lumora
