// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/accessiblebutton.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace lumora {

namespace {

QAccessibleInterface *make(const QString &className, QObject *object)
{
    auto *item = qobject_cast<QQuickItem *>(object);
    return item && className.startsWith(QLatin1String("BaseButton_QML")) ? new AccessibleButton(item) : nullptr;
}

void tellEnabledChange(QObject *button)
{
    QAccessible::State changed;
    changed.disabled = true;
    QAccessibleStateChangeEvent event(button, changed);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void AccessibleButton::install()
{
    QAccessible::installFactory(make);
}

AccessibleButton::AccessibleButton(QQuickItem *button)
    : QAccessibleObject(button)
{
    QObject::connect(button, &QQuickItem::enabledChanged, button, [button] { tellEnabledChange(button); });
}

QQuickItem *AccessibleButton::button() const
{
    return static_cast<QQuickItem *>(object());
}

QWindow *AccessibleButton::window() const
{
    return button()->window();
}

QAccessibleInterface *AccessibleButton::parent() const
{
    // Most items only lay others out, and are nothing to a screen reader.
    for (QQuickItem *item = button()->parentItem(); item; item = item->parentItem()) {
        if (QAccessibleInterface *found = QAccessible::queryAccessibleInterface(item))
            return found;
    }
    return QAccessible::queryAccessibleInterface(window());
}

QString AccessibleButton::text(QAccessible::Text kind) const
{
    switch (kind) {
    case QAccessible::Name:
        return button()->property("text").toString();
    case QAccessible::Description:
        return button()->property("description").toString();
    default:
        return {};
    }
}

QRect AccessibleButton::rect() const
{
    if (!window())
        return {};
    const QRect inWindow = button()->mapRectToScene(button()->boundingRect()).toRect();
    return {window()->mapToGlobal(inWindow.topLeft()), inWindow.size()};
}

QAccessible::State AccessibleButton::state() const
{
    QAccessible::State state;
    state.disabled = !button()->isEnabled();
    state.invisible = !window() || !window()->isVisible() || !button()->isVisible();
    state.focusable = button()->isEnabled();
    state.focused = button()->hasActiveFocus();
    state.pressed = button()->property("down").toBool();
    return state;
}

void *AccessibleButton::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
}

QStringList AccessibleButton::actionNames() const
{
    return button()->isEnabled() ? QStringList{pressAction(), setFocusAction()} : QStringList();
}

void AccessibleButton::doAction(const QString &name)
{
    if (name == pressAction() && button()->isEnabled())
        QMetaObject::invokeMethod(button(), "clicked");
    else if (name == setFocusAction())
        button()->forceActiveFocus();
}

} // namespace lumora
