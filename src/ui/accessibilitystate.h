// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAccessible>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace lumora {

/// Whether anybody listens, such as a screen reader: what only they hear need not be made before.
class AccessibilityState : public QObject, private QAccessible::ActivationObserver
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isActive READ isActive NOTIFY isActiveChanged)

public:
    explicit AccessibilityState(QObject *parent = nullptr);
    ~AccessibilityState() override;
    Q_DISABLE_COPY_MOVE(AccessibilityState)

    bool isActive() const { return m_isActive; }

Q_SIGNALS:
    void isActiveChanged();

private:
    void accessibilityActiveChanged(bool isActive) override;

    bool m_isActive;
};

} // namespace lumora
