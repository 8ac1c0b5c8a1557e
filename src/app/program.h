// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/modelservice.h"

#include <QCoreApplication>

#include <memory>

namespace lumora {

/// What every program of this family sets before its application object: name, desktop file, high-DPI rounding.
void prepareApplication();

/// Shows the window on this model and runs until it is closed; gives the exit status. Where another program already has
/// the user's files open, that one's window comes to the front instead.
int runProgram(std::shared_ptr<ModelService> service);

} // namespace lumora
