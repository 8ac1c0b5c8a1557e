// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/availability.h"

#include <QString>

namespace lumora {

/// One sentence for the user on why the model is unavailable; null while it is available.
QString availabilityMessage(const Availability &availability);

} // namespace lumora
