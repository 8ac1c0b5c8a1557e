# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Kinds of documents: their titles, and the facts that stand in them.

A file of kinds has these sections, all but the first and the facts optional:

    @ kind NAME
    @ slots            SLOT = KIND OF VALUE, where the slot's name does not say it; "fresh" gives each fact its own
    @ title            file names, without their ends
    @ heading
    @ filler           sentences that no question is about
    @ step             sentences that ask the reader to do something
    @ fact NAME
    > how a document states it
    = how a list of entries states it
    ? how somebody asks about it
"""

import re
from dataclasses import dataclass, field

from ..grammar import FEWEST_DIVIDED, Phrases
from ..splits import SPLITS, split_of
from ..textfiles import FOLDER, sections

_SLOT = re.compile(r"\{(\w+)\}")


@dataclass
class Fact:
    name: str
    statements: Phrases
    entries: Phrases | None
    questions: Phrases
    slots: frozenset[str]

    @property
    def topic(self) -> str:
        """Facts of several kinds of documents share one where they could be meant by the same question."""
        return self.name.partition("/")[2]


@dataclass
class Kind:
    """fresh: each fact has slots of its own, so that a document can state it of several things."""

    name: str
    slots: dict[str, str] = field(default_factory=dict)
    fresh: bool = False
    texts: dict[str, Phrases] = field(default_factory=dict)
    facts: list[Fact] = field(default_factory=list)


def _fact(kind: str, name: str, lines: list[str]) -> Fact:
    def marked(mark: str) -> Phrases | None:
        own = [line[1:].strip() for line in lines if line[0] == mark]
        return Phrases(own, f"{kind}/{name} {mark}") if own else None

    statements, questions = marked(">"), marked("?")
    if statements is None or questions is None or any(line[0] not in ">=?" for line in lines):
        raise ValueError(f"the fact {name} of {kind} is not complete")
    if len(questions) < FEWEST_DIVIDED:
        raise ValueError(f"too few ways to ask for {name} of {kind}")
    slots = frozenset(slot.lower() for line in lines for slot in _SLOT.findall(line))
    return Fact(f"{kind}/{name}", statements, marked("="), questions, slots)


def read(path) -> list[Kind]:
    kinds: list[Kind] = []
    for section, lines in sections(path):
        word, _, name = section.partition(" ")
        if word == "kind":
            kinds.append(Kind(name))
        elif word == "fact":
            kinds[-1].facts.append(_fact(kinds[-1].name, name, lines))
        elif word == "slots":
            kinds[-1].fresh = "fresh" in lines
            kinds[-1].slots = dict(line.split(" = ", 1) for line in lines if line != "fresh")
        else:
            kinds[-1].texts[word] = Phrases(lines, f"{kinds[-1].name} {word}")
    return kinds


# Sections that serve kinds without such sections of their own.
COMMON = {name: Phrases(lines, name) for name, lines in sections(FOLDER / "words" / "common.txt")}
KINDS = {kind.name: kind for path in sorted((FOLDER / "kinds").glob("*.txt")) for kind in read(path)}
OF_SPLIT = {split: [kind for kind in KINDS.values() if split_of(f"kind {kind.name}") == split] for split in SPLITS}
