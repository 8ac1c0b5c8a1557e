# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Copying: what nearly every answer is made of. Drills repeat a text several times, each time to be written anew."""

from ..example import Example
from ..scripts import foreign_text
from ..speech import Speaker
from ..splits import TRAIN


def _piece(speaker: Speaker) -> str:
    values, draw = speaker.values, speaker.chance.random()
    if draw < 0.35:
        return values.invented()
    if draw < 0.55:
        return values.make(speaker.chance.choice(("name", "person", "city", "company", "street")))
    if draw < 0.75:
        return values.make(speaker.chance.choice(("code", "number", "phone", "date", "money", "time")))
    if draw < 0.9:
        return values.item()
    return values.make(speaker.chance.choice(("mail", "link", "domain")))


def _text(speaker: Speaker, fewest: int, most: int) -> str:
    if speaker.chance.random() < 0.25:
        return foreign_text(speaker.chance, speaker.values)
    separator = speaker.chance.choice((" ", " ", " ", ", ", "\n", "; "))
    return separator.join(_piece(speaker) for _ in range(speaker.chance.randint(fewest, most)))


def repeat(speaker: Speaker) -> Example:
    """A text, given back unchanged."""
    text = _text(speaker, 1, 12)
    typed = speaker.ask("copy.repeat", text=text)
    return Example("copy", typed).replies(text, exact=text)


def drill(speaker: Speaker) -> Example:
    """The same text several times over."""
    text = _text(speaker, 2, 10)
    example = Example("drill.copy", speaker.ask("copy.repeat", text=text))
    for _ in range(speaker.chance.randint(2, 4)):
        example.replies(text, exact=text)
    return example


def look_up(speaker: Speaker) -> Example:
    """Values to be found by their keys: several in one reply or, in training, mostly one after the other."""
    chance = speaker.chance
    pairs = {_piece(speaker).replace("\n", " "): _piece(speaker) for _ in range(chance.randint(3, 9))}
    between = chance.choice((": ", " = ", " - ", " is ", "\t"))
    lines = [key + between + value for key, value in pairs.items()]
    wanted = chance.sample(list(pairs), chance.randint(1, len(pairs)))
    at_once = wanted if speaker.split != TRAIN or chance.random() < 0.3 else wanted[:1]
    typed = speaker.ask("copy.lookup", text="\n".join(lines), keys=", ".join(at_once))
    reply = "\n".join(pairs[key] for key in at_once)
    example = Example("drill.lookup", typed).replies(reply, exact=reply)
    for key in wanted[len(at_once) :]:
        example.asks(key).replies(pairs[key], exact=pairs[key])
    return example


TASKS = {"copy": ((repeat, 1),), "drill.copy": ((drill, 1),), "drill.lookup": ((look_up, 1),)}
