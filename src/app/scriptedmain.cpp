// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/program.h"
#include "platform/model/scripted/cannedconversation.h"
#include "platform/model/scripted/scriptedmodelservice.h"

#include <QGuiApplication>

int main(int argc, char *argv[])
{
    lumora::prepareApplication();
    const QGuiApplication application(argc, argv);
    const auto reply = [](const lumora::ReplyRequest &request) { return lumora::cannedReply(request); };
    return lumora::runProgram(std::make_shared<lumora::ScriptedModelService>(reply),
                              lumora::readArguments(QGuiApplication::arguments()));
}
