# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Talk: greetings and thanks, and questions about the program itself."""

import re

from ..example import Example
from ..speech import PHRASES, Speaker

_TALKS = [name for name in PHRASES if name.startswith("talk.")]
_HELPS = [name for name in PHRASES if name.startswith("help.")]


_TODAY = 0.08
_LAST_SIGN = re.compile(r"([?.!]*)$")


def _replied(speaker: Speaker, task: str, intent: str) -> Example:
    """Now and then with a word for which the date tool is offered, and should be left alone."""
    reply = speaker.fixed("reply." + intent.partition(".")[2])
    typed = speaker.ask(intent)
    if speaker.chance.random() < _TODAY:
        typed = _LAST_SIGN.sub(r" today\1", typed, count=1)
    return Example(task, typed).replies(reply, exact=reply)


def talk(speaker: Speaker) -> Example:
    return _replied(speaker, "talk", speaker.chance.choice(_TALKS))


def explain(speaker: Speaker) -> Example:
    return _replied(speaker, "help", speaker.chance.choice(_HELPS))


TASKS = {"talk": ((talk, 1),), "help": ((explain, 1),)}
