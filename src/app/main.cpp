// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/installation.h"
#include "app/program.h"
#include "generation/sessionsetup.h"
#include "platform/files/storagelocation.h"
#include "platform/model/local/localmodelservice.h"

#include <QGuiApplication>

int main(int argc, char *argv[])
{
    lumora::prepareApplication();
    const QGuiApplication application(argc, argv);
    const lumora::SingleInstance::Wish wish = lumora::readArguments(QGuiApplication::arguments());
    const auto folder = lumora::storageFolder(lumora::applicationSupportDirectory());
    lumora::LocalModelSettings model = lumora::installedModel(QGuiApplication::applicationDirPath(), folder);
    model.instructions = lumora::sessionInstructions();
    return lumora::runProgram(std::make_shared<lumora::LocalModelService>(model), wish);
}
