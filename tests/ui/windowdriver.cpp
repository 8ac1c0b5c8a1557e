// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/windowdriver.h"

#include <QTest>

#include <functional>

namespace lumora {

namespace {

QQuickItem *findVisible(QAccessibleInterface *tree, const std::function<bool(QAccessibleInterface *)> &matches)
{
    for (int i = 0; i < tree->childCount(); ++i) {
        QAccessibleInterface *child = tree->child(i);
        auto *item = qobject_cast<QQuickItem *>(child->object());
        if (!item || !item->isVisible())
            continue;
        if (matches(child))
            return item;
        if (QQuickItem *found = findVisible(child, matches))
            return found;
    }
    return nullptr;
}

} // namespace

WindowDriver::WindowDriver(ChatStore *store)
{
    if (!window())
        qFatal("The window cannot be loaded.");
    m_window.setStore(store);
    window()->requestActivate();
    if (!QTest::qWaitForWindowActive(window()))
        qFatal("The window does not become active.");
}

QAccessibleInterface *WindowDriver::tree() const
{
    QAccessible::setActive(true); // some of it is made only while somebody listens
    return QAccessible::queryAccessibleInterface(window());
}

QQuickItem *WindowDriver::find(QAccessible::Role role, const QString &name) const
{
    return findVisible(tree(), [&](QAccessibleInterface *accessible) {
        return accessible->role() == role && accessible->text(QAccessible::Name) == name;
    });
}

bool WindowDriver::showsText(const QString &text) const
{
    return findVisible(tree(), [&](QAccessibleInterface *accessible) {
        return accessible->role() != QAccessible::Notification && accessible->text(QAccessible::Name) == text;
    });
}

QString WindowDriver::focusName() const
{
    QAccessible::setActive(true);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(window()->activeFocusItem());
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

void WindowDriver::click(const QQuickItem *item, Qt::MouseButton button) const
{
    QVERIFY(item);
    QTest::mouseClick(window(), button, {}, item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
}

void WindowDriver::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(window(), key, modifiers);
}

void WindowDriver::type(const QString &text) const
{
    for (const QChar character : text)
        QTest::keyClick(window(), character.toLatin1());
}

} // namespace lumora
