// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace lumora {

/// What is stored and found in the index. A null text means that there is none of that kind.
struct SearchableItem
{
    QString uniqueIdentifier; ///< one item each: a later item with the same one replaces the earlier
    QString domainIdentifier;
    QString title;              ///< searched, and weighs more than the text
    QString textContent;        ///< searched
    QString contentDescription; ///< only stored

    bool operator==(const SearchableItem &) const = default;
};

} // namespace lumora
