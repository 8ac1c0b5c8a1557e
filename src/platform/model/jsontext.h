// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace lumora {

/// Writes a text as a JSON string or, where a property name is due, as that name.
void writeJsonString(rapidjson::Writer<rapidjson::StringBuffer> &writer, const QString &text);

} // namespace lumora
