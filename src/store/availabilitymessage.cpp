// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/availabilitymessage.h"

#include <QCoreApplication>

namespace lumora {

namespace {

const char *sentence(Availability::UnavailableReason reason)
{
    using Reason = Availability::UnavailableReason;
    switch (reason) {
    case Reason::deviceNotEligible:
        return QT_TRANSLATE_NOOP(
            "lumora::ChatStore",
            "This Mac does not support Apple Intelligence. The on-device model needs a compatible Apple silicon Mac.");
    case Reason::appleIntelligenceNotEnabled:
        return QT_TRANSLATE_NOOP("lumora::ChatStore",
                                 "Turn on Apple Intelligence in System Settings to use the on-device model.");
    case Reason::modelNotReady:
        return QT_TRANSLATE_NOOP(
            "lumora::ChatStore",
            "Apple reports that the on-device model is not ready. It may be downloading or waiting for system "
            "conditions.");
    case Reason::other:
        return QT_TRANSLATE_NOOP("lumora::ChatStore", "The on-device model is unavailable right now.");
    }
    Q_UNREACHABLE();
}

} // namespace

QString availabilityMessage(const Availability &availability)
{
    const auto reason = availability.reason();
    return reason ? QCoreApplication::translate("lumora::ChatStore", sentence(*reason)) : QString();
}

} // namespace lumora
