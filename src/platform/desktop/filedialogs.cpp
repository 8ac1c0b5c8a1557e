// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/desktop/filedialogs.h"

#include <QFile>
#include <QStandardPaths>
#include <QtGlobal>

namespace lumora {

namespace {

constexpr const char *themeVariable = "QT_QPA_PLATFORMTHEME";

bool hasSessionBus()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/bus"));
}

bool isPortalInstalled()
{
    const QString activation = QStringLiteral("dbus-1/services/org.freedesktop.portal.Desktop.service");
    return !QStandardPaths::locate(QStandardPaths::GenericDataLocation, activation).isEmpty();
}

} // namespace

void preferPortalFileDialogs()
{
    // The toolkit's portal theme stands before the desktop's own one, which goes on to give fonts and colours. Without
    // a portal its dialogs would close as soon as they are opened.
    if (qEnvironmentVariableIsEmpty(themeVariable) && hasSessionBus() && isPortalInstalled())
        qputenv(themeVariable, "xdgdesktopportal");
}

} // namespace lumora
