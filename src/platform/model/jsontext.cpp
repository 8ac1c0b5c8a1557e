// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/jsontext.h"

namespace lumora {

void writeJsonString(rapidjson::Writer<rapidjson::StringBuffer> &writer, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    writer.String(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
}

} // namespace lumora
