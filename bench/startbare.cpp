// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The least program with a window of this toolkit: an empty one, with all that the program's own views import.

#include "firstframe.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    lumora::reportFirstFrame(application);
    QQmlApplicationEngine engine;
    engine.loadData("import QtCore\n"
                    "import QtQuick\n"
                    "import QtQuick.Controls.Basic\n"
                    "import QtQuick.Dialogs\n"
                    "import QtQuick.Layouts\n"
                    "import QtQuick.Templates as T\n"
                    "ApplicationWindow { height: 800; visible: true; width: 1080 }\n");
    return QGuiApplication::exec();
}
