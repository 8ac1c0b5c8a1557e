# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Writes documents of a kind: which facts, in which words, laid out how."""

import random
from dataclasses import dataclass
from textwrap import wrap

from ..splits import TRAIN
from ..speech import Speaker
from ..values import Slots, capital
from .kinds import COMMON, OF_SPLIT, Fact, Kind

_ENDS = (".txt", ".md", ".pdf", ".pdf", ".txt", ".md", ".text")


@dataclass
class Told:
    """A fact as a document states it. sentence: as it stands there, but for line breaks."""

    fact: Fact
    slots: Slots
    sentence: str


@dataclass
class Document:
    title: str
    kind: Kind
    told: list[Told]
    text: str
    heading: str
    steps: list[str]


def some_kind(speaker: Speaker) -> Kind:
    """Half of what the held-out splits write is of kinds that training never sees."""
    own = OF_SPLIT[speaker.split]
    if speaker.split != TRAIN and (not own or speaker.chance.random() < 0.5):
        own = OF_SPLIT[TRAIN]
    return speaker.chance.choice(own)


def file_name(speaker: Speaker, kind: Kind, slots: Slots) -> str:
    titles = kind.text("title")
    name = titles.pick_or_seen(speaker.chance, speaker.split).format_map(slots)
    draw = speaker.chance.random()
    if draw < 0.2:
        name = name.replace(" ", speaker.chance.choice("_-"))
    if draw > 0.85:
        name = name.lower()
    return name.replace("/", "-") + speaker.chance.choice(_ENDS)


class Writer:
    def __init__(self, speaker: Speaker):
        self.speaker = speaker
        self.chance: random.Random = speaker.chance

    def new_slots(self, kind: Kind) -> Slots:
        return Slots(self.speaker.values, kind.slots)

    def tell(self, fact: Fact, slots: Slots, as_entry: bool) -> Told:
        phrases = fact.entries if as_entry and fact.entries else fact.statements
        phrase = phrases.pick_or_seen(self.chance, self.speaker.split)
        return Told(fact, slots, capital(phrase.format_map(slots)))

    def some_facts(self, kind: Kind, slots: Slots, most: int, without: str) -> list[Told]:
        """In the order of the kind, or mixed."""
        known = [fact for fact in kind.facts if fact.name != without]
        if kind.fresh:
            chosen = [self.chance.choice(known) for _ in range(self.chance.randint(1, most))]
        else:
            number = min(len(known), self.chance.randint(1, most))
            chosen = [known[place] for place in sorted(self.chance.sample(range(len(known)), number))]
            if self.chance.random() < 0.3:
                self.chance.shuffle(chosen)
        as_entries = self.chance.random() < 0.25
        return [self.tell(fact, self.new_slots(kind) if kind.fresh else slots, as_entries) for fact in chosen]

    def filler(self, kind: Kind, slots: Slots, section: str = "filler") -> str | None:
        phrases = kind.text(section) or COMMON.get(section)
        return phrases and capital(phrases.pick_or_seen(self.chance, self.speaker.split).format_map(slots))

    def write(
        self, kind: Kind, most: int = 6, without: str = "", slots: Slots | None = None, with_steps: bool = False
    ) -> Document:
        """A document with up to this many facts. without: a fact that is not to stand in it."""
        slots = slots if slots is not None else self.new_slots(kind)
        told = self.some_facts(kind, slots, most, without)
        sentences = [fact.sentence for fact in told]
        for _ in range(self.chance.choice((0, 0, 1, 1, 2))):
            text = self.filler(kind, slots)
            if text and text not in sentences:
                sentences.insert(self.chance.randint(0, len(sentences)), text)
        steps = self.some_steps(kind, slots) if with_steps or self.chance.random() < 0.15 else []
        heading = ""
        if self.chance.random() < 0.6:
            heading = self.filler(kind, slots, "heading") or ""
        text = self.lay_out(sentences + steps, heading)
        return Document(file_name(self.speaker, kind, slots), kind, told, text, heading, steps)

    def some_steps(self, kind: Kind, slots: Slots) -> list[str]:
        """Up to two sentences that ask the reader to do something."""
        steps = (self.filler(kind, slots, "step") for _ in range(self.chance.choice((0, 1, 1, 2))))
        return list(dict.fromkeys(step for step in steps if step))

    def lay_out(self, sentences: list[str], heading: str) -> str:
        """As prose, as lines or as a list."""
        body = self._body(sentences)
        if not heading:
            return body
        return self.chance.choice(("", "", "# ", "## ")) + heading + self.chance.choice(("\n\n", "\n")) + body

    def _body(self, sentences: list[str]) -> str:
        chance = self.chance
        draw = chance.random()
        if draw < 0.5:
            return self.prose([sentence if sentence[-1] in ".!?" else sentence + "." for sentence in sentences])
        if draw < 0.64:
            return "\n".join(sentences)
        if draw < 0.82:
            mark = chance.choice(("- ", "* ", "• ", "– "))
            return "\n".join(mark + sentence for sentence in sentences)
        if draw < 0.9:
            return "\n".join(f"{number}. {sentence}" for number, sentence in enumerate(sentences, 1))
        return "\n\n".join(sentences)

    def prose(self, sentences: list[str]) -> str:
        paragraphs, rest = [], list(sentences)
        while rest:
            length = self.chance.randint(1, 5)
            paragraphs.append(" ".join(rest[:length]))
            rest = rest[length:]
        if self.chance.random() < 0.25:
            width = self.chance.randint(44, 90)
            paragraphs = [
                "\n".join(wrap(text, width, break_long_words=False, break_on_hyphens=False)) for text in paragraphs
            ]
        return self.chance.choice(("\n\n", "\n\n", "\n")).join(paragraphs)
