// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/textargument.h"

#include <QString>

#include <stop_token>

namespace lumora {

/// Tells the model the current local date and time. Reads nothing but the clock and the user's regional settings.
struct CurrentDateTool
{
    QString name;
    QString description;

    static constexpr TextProperty question{u"question", u"The user's question about the current date or time"};
    using Arguments = TextArgument<question>;

    /// The current instant in full, as the user's locale writes it, and nothing else. The question plays no role in it.
    QString call(const Arguments &arguments, const std::stop_token &stop) const;
};

} // namespace lumora
