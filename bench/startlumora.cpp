// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The program as it is, but for its model, until it shows its first frame.

#include "app/program.h"
#include "firstframe.h"
#include "platform/model/scripted/scriptedmodelservice.h"

#include <QGuiApplication>

int main(int argc, char *argv[])
{
    lumora::prepareApplication();
    QGuiApplication application(argc, argv);
    lumora::reportFirstFrame(application);
    return lumora::runProgram(std::make_shared<lumora::ScriptedModelService>());
}
