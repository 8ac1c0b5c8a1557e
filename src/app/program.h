// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/singleinstance.h"
#include "platform/model/modelservice.h"

#include <QCoreApplication>

#include <memory>

namespace lumora {

/// What every program of this family sets before its application object: name, desktop file, high-DPI rounding.
void prepareApplication();

/// What the command line asks for. Ends the process where it asks for help or the version, or makes no sense. To be
/// called once the application object exists.
SingleInstance::Wish readArguments(const QStringList &arguments);

/// Shows the window on this model and runs until it is closed or the session ends; gives the exit status. Where another
/// program already has the user's files open, that one is told of the wish, and its window comes to the front instead.
int runProgram(std::shared_ptr<ModelService> service, SingleInstance::Wish wish = SingleInstance::Wish::window);

} // namespace lumora
