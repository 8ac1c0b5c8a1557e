// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui/replystylechoices.h"

#include "store/records.h"

namespace lumora {

QStringList ReplyStyleChoices::labels() const
{
    QStringList labels;
    for (const ReplyStyle style : allReplyStyles())
        labels << rawValue(style);
    return labels;
}

} // namespace lumora
