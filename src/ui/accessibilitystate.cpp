// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/accessibilitystate.h"

namespace lumora {

AccessibilityState::AccessibilityState(QObject *parent)
    : QObject(parent)
    , m_isActive(QAccessible::isActive())
{
    QAccessible::installActivationObserver(this);
}

AccessibilityState::~AccessibilityState()
{
    QAccessible::removeActivationObserver(this);
}

void AccessibilityState::accessibilityActiveChanged(bool isActive)
{
    if (m_isActive == isActive)
        return;
    m_isActive = isActive;
    Q_EMIT isActiveChanged();
}

} // namespace lumora
