// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace lumora {

/// How a service process came to its end.
struct ServiceEnd
{
    enum class Kind {
        notStarted, ///< there is no such program, or the system cannot run it
        exited,     ///< by itself; number: its exit code
        signalled,  ///< number: the signal
        garbled,    ///< it sent what is no message, and was ended for that
        hung,       ///< it did not answer, and was ended for that
    };

    Kind kind = Kind::exited;
    int number = 0;
    bool isOutOfMemory = false; ///< since the latest message, the system has killed for lack of memory
    bool hasAnswered = false;   ///< anything at all
    QString lastWords;          ///< the end of its error output, for the log

    /// Whether starting it again would end the same way: this program or this processor cannot run it.
    bool isHopeless() const;

    /// Whether it was killed from outside, as the system does where memory is short.
    bool isKill() const;

    /// What happened and what helps, as whole sentences for the user.
    QString description() const;
};

} // namespace lumora
