# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Questions about the date and the time, which the date tool answers."""

from ..dates import ENGLISH, Moment, moment
from ..example import Example
from ..program import DATE, selected_tools
from ..speech import Speaker
from ..values import WEEKDAYS

_PARTS = ("date", "date", "date", "time", "time", "time", "weekday", "weekday", "year", "month", "both", "zone")


def _asked(speaker: Speaker, intent: str, **known: str) -> str:
    """A question for which the tool is offered: slips must leave its words whole."""
    for _ in range(20):
        typed = speaker.ask(intent, **known)
        if DATE in selected_tools(typed, False, []):
            return typed
    return "What is today's date and the current time?"


def part(speaker: Speaker) -> Example:
    """The date or a part of it, as the tool's output has it."""
    wanted = speaker.chance.choice(_PARTS)
    now = moment(speaker.chance)
    while wanted == "month" and now.month not in now.text:
        now = moment(speaker.chance)
    typed = _asked(speaker, f"date.{wanted}")
    example = Example("date", typed).calls(DATE, now.text, question=typed)
    reply = speaker.reply(wanted, **vars(now))
    return example.replies(reply, contains=_proof(now, wanted))


def _proof(now: Moment, wanted: str) -> list[str]:
    return [now.date, now.time] if wanted == "both" else [getattr(now, wanted)]


def is_it(speaker: Speaker) -> Example:
    """Whether today is a certain weekday."""
    now = speaker.chance.choice(ENGLISH).moment(speaker.chance)
    asked = now.weekday if speaker.chance.random() < 0.4 else speaker.chance.choice(WEEKDAYS)
    typed = _asked(speaker, "date.isit", day=asked)
    reply = speaker.reply("isday" if asked == now.weekday else "isnotday", weekday=now.weekday)
    example = Example("date", typed).calls(DATE, now.text, question=typed)
    return example.replies(reply, contains=[reply.split(",")[0], now.weekday])


def next_to(speaker: Speaker) -> Example:
    """The weekday of tomorrow or yesterday."""
    now = speaker.chance.choice(ENGLISH).moment(speaker.chance)
    intent, step = speaker.chance.choice((("tomorrow", 1), ("yesterday", -1)))
    other = WEEKDAYS[(WEEKDAYS.index(now.weekday) + step) % 7]
    typed = _asked(speaker, f"date.{intent}")
    example = Example("date", typed).calls(DATE, now.text, question=typed)
    reply = speaker.reply(intent, weekday=now.weekday, other=other)
    return example.replies(reply, contains=[other])


TASKS = {"date": ((part, 8), (is_it, 1), (next_to, 1))}
