# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Longer sentences: with an opening or an end that says nothing more, or of two statements."""

import random

from ..textfiles import FOLDER, sections

_PARTS = dict(sections(FOLDER / "words" / "openings.txt"))
_SMALL_WORDS = set(
    "The A An In On At For From It We You Every Each They There If Who With To Up Between Please Only No Nobody All "
    "After Before By During Since Then Most Some Many Our Your My His Her Their This That These Those Last Next As "
    "Children Guests Members Whoever Both Either Never Always One Two Three".split()
)
_LONGEST = 150  # characters of a statement that is joined to another


def small_beginning(sentence: str) -> str:
    """The sentence as it goes on behind an opening: names keep their capitals."""
    word = sentence.split(" ", 1)[0]
    return sentence[0].lower() + sentence[1:] if word in _SMALL_WORDS else sentence


def embellished(chance: random.Random, sentence: str) -> str:
    """Sometimes with an opening or an end."""
    draw = chance.random()
    if draw < 0.1:
        return f"{chance.choice(_PARTS['openings'])} {small_beginning(sentence)}"
    if draw < 0.17 and sentence.endswith("."):
        return f"{sentence[:-1]}{chance.choice(_PARTS['ends'])}."
    return sentence


def joined(chance: random.Random, first: str, second: str) -> str | None:
    """One sentence of two; nothing where they are too long or no sentences."""
    if not first.endswith(".") or not second.endswith(".") or len(first) + len(second) > _LONGEST:
        return None
    between = chance.choice((", and ", ", and ", "; ", ", while ", ", but ", " and "))
    return first[:-1] + between + small_beginning(second)
