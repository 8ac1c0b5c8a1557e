// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAccessibleObject>

class QQuickItem;

namespace lumora {

/// A button of the window as a screen reader sees it. What Qt makes of one does not tell that it is disabled.
class AccessibleButton : public QAccessibleObject, public QAccessibleActionInterface
{
public:
    /// From now on, buttons are seen this way. May be called any number of times.
    static void install();

    explicit AccessibleButton(QQuickItem *button);

    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Button; }
    QAccessible::State state() const override;

    void *interface_cast(QAccessible::InterfaceType type) override;
    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QQuickItem *button() const;
};

} // namespace lumora
