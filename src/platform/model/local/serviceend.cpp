// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/local/serviceend.h"

#include <QCoreApplication>

#include <csignal>

namespace lumora {

namespace {

QString signalDescription(const ServiceEnd &end)
{
    switch (end.number) {
    case SIGKILL:
        if (end.isOutOfMemory)
            return QCoreApplication::translate(
                "LanguageModel", "The computer ran out of memory and stopped the language model. Close other "
                                 "programs or use a smaller model file, then send the message again.");
        return QCoreApplication::translate(
            "LanguageModel", "The language model was killed from outside, perhaps because memory was short. It is "
                             "starting again; send the message again.");
    case SIGTERM:
    case SIGINT:
    case SIGHUP:
        return QCoreApplication::translate(
            "LanguageModel",
            "The language model was stopped from outside. It is starting again; send the message again.");
    case SIGILL:
        return QCoreApplication::translate(
            "LanguageModel", "The language model uses instructions that this computer's processor does not have.");
    default:
        return QCoreApplication::translate(
                   "LanguageModel",
                   "The language model crashed (signal %1). It is starting again; send the message again. "
                   "If it keeps crashing, try another model file.")
            .arg(end.number);
    }
}

} // namespace

bool ServiceEnd::isHopeless() const
{
    // 126 and 127: the loader found no program or no library to go with it.
    const bool isIncomplete = kind == Kind::exited && !hasAnswered && (number == 126 || number == 127);
    return kind == Kind::notStarted || isIncomplete || (kind == Kind::signalled && number == SIGILL);
}

bool ServiceEnd::isKill() const
{
    return kind == Kind::signalled && number == SIGKILL;
}

QString ServiceEnd::description() const
{
    switch (kind) {
    case Kind::notStarted:
        break;
    case Kind::signalled:
        return signalDescription(*this);
    case Kind::garbled:
        return QCoreApplication::translate(
            "LanguageModel", "The language model sent an answer that makes no sense and was ended. It is starting "
                             "again; send the message again.");
    case Kind::hung:
        return QCoreApplication::translate(
            "LanguageModel", "The language model no longer answered and was ended. It is starting again; send the "
                             "message again.");
    case Kind::exited:
        if (!isHopeless())
            return QCoreApplication::translate(
                       "LanguageModel",
                       "The language model ended by itself (exit code %1). It is starting again; send the "
                       "message again. If it keeps ending, try another model file.")
                .arg(number);
        break;
    }
    return QCoreApplication::translate(
        "LanguageModel", "The part of Lumora that runs the language model cannot be started. Install Lumora again.");
}

} // namespace lumora
