// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/installation.h"
#include "app/program.h"
#include "platform/files/storagelocation.h"
#include "platform/model/local/localmodelservice.h"

#include <QGuiApplication>

int main(int argc, char *argv[])
{
    lumora::prepareApplication();
    const QGuiApplication application(argc, argv);
    const auto folder = lumora::storageFolder(lumora::applicationSupportDirectory());
    const lumora::LocalModelSettings model = lumora::installedModel(QGuiApplication::applicationDirPath(), folder);
    return lumora::runProgram(std::make_shared<lumora::LocalModelService>(model));
}
