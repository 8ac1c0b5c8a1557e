// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/local/localmodelservice.h"

#include <QString>

namespace lumora {

/// Where the model service and the models lie, seen from the folder of the program's executable: beside it and in
/// ../share/lumora where the program was built, in ../libexec/lumora and ../share/lumora where it is installed.
/// The user's own models lie in the program's folder of the data directory.
LocalModelSettings installedModel(const QString &programFolder, const std::optional<QString> &storageFolder);

/// Where the program that reads PDF files lies: beside the program's executable or in ../libexec/lumora.
QString installedPdfHelper(const QString &programFolder);

/// The same of the program that reads images.
QString installedImageReader(const QString &programFolder);

} // namespace lumora
