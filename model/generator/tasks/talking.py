# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Talk: greetings and thanks, and questions about the program itself."""

from ..example import Example
from ..speech import PHRASES, Speaker

_TALKS = [name for name in PHRASES if name.startswith("talk.")]
_HELPS = [name for name in PHRASES if name.startswith("help.")]


def _replied(speaker: Speaker, task: str, intent: str) -> Example:
    reply = speaker.fixed("reply." + intent.partition(".")[2])
    return Example(task, speaker.ask(intent)).replies(reply, exact=reply)


def talk(speaker: Speaker) -> Example:
    return _replied(speaker, "talk", speaker.chance.choice(_TALKS))


def explain(speaker: Speaker) -> Example:
    return _replied(speaker, "help", speaker.chance.choice(_HELPS))


TASKS = {"talk": ((talk, 1),), "help": ((explain, 1),)}
