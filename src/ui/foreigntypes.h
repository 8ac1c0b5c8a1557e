// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/desktop/desktopsettings.h"
#include "store/chatstore.h"

#include <QtQml/qqml.h>

namespace lumora {

// The types of the layers below, as the views know them. Those layers link no QML.

struct ChatStoreForeign
{
    Q_GADGET
    QML_FOREIGN(lumora::ChatStore)
    QML_NAMED_ELEMENT(ChatStore)
    QML_UNCREATABLE("The program creates its one store.")
};

struct DocumentLibraryForeign
{
    Q_GADGET
    QML_FOREIGN(lumora::DocumentLibrary)
    QML_NAMED_ELEMENT(DocumentLibrary)
    QML_UNCREATABLE("The store creates its library.")
};

struct DesktopSettingsForeign
{
    Q_GADGET
    QML_FOREIGN(lumora::DesktopSettings)
    QML_NAMED_ELEMENT(DesktopSettings)
};

struct ImportedDocumentForeign
{
    Q_GADGET
    QML_FOREIGN(lumora::ImportedDocument)
    QML_VALUE_TYPE(importedDocument)
};

struct AnswerCardForeign
{
    Q_GADGET
    QML_FOREIGN(lumora::AnswerCard)
    QML_VALUE_TYPE(answerCard)
};

struct ToolEventForeign
{
    Q_GADGET
    QML_FOREIGN(lumora::ToolEvent)
    QML_VALUE_TYPE(toolEvent)
};

namespace replyStylesForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(lumora::ReplyStyles)
QML_NAMED_ELEMENT(ReplyStyles)
} // namespace replyStylesForeign

} // namespace lumora
