// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "features/currentdatetool.h"

#include "platform/text/dates.h"

#include <QDateTime>

namespace lumora {

QString CurrentDateTool::call(const Arguments & /*arguments*/, const std::stop_token & /*stop*/) const
{
    return fullDateTime(double(QDateTime::currentMSecsSinceEpoch()));
}

} // namespace lumora
