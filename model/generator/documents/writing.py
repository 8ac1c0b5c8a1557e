# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Writes documents of a kind: which facts, in which words."""

import random
from dataclasses import dataclass, replace

from ..speech import Speaker
from ..splits import TRAIN
from ..values import Slots, capital, fill
from .kinds import COMMON, OF_SPLIT, Fact, Kind
from .layout import lay_out
from .sentences import embellished, joined

_ENDS = (".txt", ".md", ".pdf", ".pdf", ".txt", ".md", ".text")


@dataclass
class Told:
    """A fact as a document states it. sentence: as it stands there, but for line breaks."""

    fact: Fact
    slots: Slots
    sentence: str


@dataclass
class Document:
    """steps: its sentences that ask the reader to do something."""

    title: str
    kind: Kind
    told: list[Told]
    text: str
    heading: str
    steps: list[str]

    @property
    def sentences(self) -> list[str]:
        """Those that state its facts, each once: some state two."""
        return list(dict.fromkeys(told.sentence for told in self.told))


def some_kind(speaker: Speaker) -> Kind:
    """Half of what the held-out splits write is of kinds that training never sees."""
    own = OF_SPLIT[speaker.split]
    if speaker.split != TRAIN and (not own or speaker.chance.random() < 0.5):
        own = OF_SPLIT[TRAIN]
    return speaker.chance.choice(own)


def file_name(speaker: Speaker, kind: Kind, slots: Slots) -> str:
    chance = speaker.chance
    if chance.random() < 0.1:
        name = chance.choice(("scan", "Document", "doc", "text", "file", slots["name"])) + chance.choice("_- ")
        return name + speaker.values.digits(1, 4) + chance.choice(_ENDS)
    name = kind.texts["title"].pick_or_seen(chance, speaker.split).format_map(slots)
    draw = chance.random()
    if draw < 0.2:
        name = name.replace(" ", chance.choice("_-"))
    if draw > 0.85:
        name = name.lower()
    return name.replace("/", "-") + chance.choice(_ENDS)


class Writer:
    def __init__(self, speaker: Speaker):
        self.speaker = speaker
        self.chance: random.Random = speaker.chance

    def new_slots(self, kind: Kind, **known: str) -> Slots:
        return Slots(self.speaker.values, kind.slots, **known)

    def near_slots(self, kind: Kind, known: dict[str, str]) -> Slots:
        """Slots in which one of these values is another one, but alike."""
        known = dict(known)
        changed = self.chance.choice(list(known))
        known[changed] = self.speaker.values.near(kind.slots.get(changed, changed.rstrip("0123456789")), known[changed])
        return self.new_slots(kind, **known)

    def tell(self, fact: Fact, slots: Slots, as_entry: bool = False) -> Told:
        phrases = fact.entries if as_entry and fact.entries else fact.statements
        sentence = capital(fill(phrases.pick_or_seen(self.chance, self.speaker.split), slots))
        if phrases is fact.entries and self.chance.random() < 0.15 and ": " in sentence:
            sentence = "**" + sentence.replace(": ", ":** ", 1)
        if phrases is not fact.entries:
            sentence = embellished(self.chance, sentence)
        return Told(fact, slots, sentence)

    def write(
        self,
        kind: Kind,
        most: int = 6,
        slots: Slots | None = None,
        without: str = "",
        must: tuple[Told, ...] = (),
        about: dict[str, str] | None = None,
    ) -> Document:
        """A document with up to this many facts beside those that it must state.

        without: a fact that it does not state beside them. about: slots that some of the facts share, where each has
        its own.
        """
        slots = slots if slots is not None else self.new_slots(kind)
        told = self._some_facts(kind, slots, self.chance.randint(0 if must else 1, most), without, about or {})
        for fact in must:
            told.insert(self.chance.randint(0, len(told)), fact)
        if self.chance.random() < 0.25:
            self._join(told)
        sentences = list(dict.fromkeys(fact.sentence for fact in told))
        for _ in range(self.chance.choice((0, 0, 1, 1, 2 + most // 4))):
            text = self._common(kind, slots, "filler")
            if text not in sentences:
                sentences.insert(self.chance.randint(0, len(sentences)), text)
        steps = self._some_steps(kind, slots)
        heading = self._common(kind, slots, "heading") if self.chance.random() < 0.6 else ""
        text = lay_out(self.chance, sentences + steps, heading)
        return Document(file_name(self.speaker, kind, slots), kind, told, text, heading, steps)

    def _some_facts(self, kind: Kind, slots: Slots, number: int, without: str, about: dict[str, str]) -> list[Told]:
        """In the order of the kind, or mixed."""
        as_entries = self.chance.random() < 0.25
        if kind.fresh:
            chosen = [self.chance.choice(kind.facts) for _ in range(number)]
            return [self.tell(fact, self._own_slots(kind, fact, without, about), as_entries) for fact in chosen]
        facts = [fact for fact in kind.facts if fact.name != without]
        number = min(len(facts), number)
        chosen = [facts[place] for place in sorted(self.chance.sample(range(len(facts)), number))]
        if self.chance.random() < 0.3:
            self.chance.shuffle(chosen)
        return [self.tell(fact, slots, as_entries) for fact in chosen]

    def _own_slots(self, kind: Kind, fact: Fact, without: str, about: dict[str, str]) -> Slots:
        shares = fact.name != without and not fact.slots.isdisjoint(about) and self.chance.random() < 0.4
        return self.new_slots(kind, **about) if shares else self.new_slots(kind)

    def _join(self, told: list[Told]) -> None:
        """Makes one sentence of the first two neighbours that allow it."""
        for first, second in zip(told, told[1:]):
            if whole := joined(self.chance, first.sentence, second.sentence):
                first.sentence = second.sentence = whole
                return

    def _common(self, kind: Kind, slots: Slots, section: str) -> str:
        phrases = kind.texts.get(section) or COMMON[section]
        if kind.texts.get(section) and section in COMMON and self.chance.random() < 0.3:
            phrases = COMMON[section]
        return capital(fill(phrases.pick_or_seen(self.chance, self.speaker.split), slots))

    def _some_steps(self, kind: Kind, slots: Slots) -> list[str]:
        """Up to two sentences that ask the reader to do something, one document in four."""
        if self.chance.random() < 0.75:
            return []
        steps = (self._common(kind, slots, "step") for _ in range(self.chance.choice((1, 1, 2))))
        return list(dict.fromkeys(steps))

    def lengthened(self, document: Document, parts: int) -> Document:
        """The document with more of other kinds before and after it, in as many parts."""
        others = [self.write(some_kind(self.speaker), 7) for _ in range(parts)]
        place = self.chance.randint(0, parts)
        whole = [*others[:place], document, *others[place:]]
        return replace(
            document,
            told=[told for part in whole for told in part.told],
            text="\n\n".join(part.text for part in whole),
            steps=[step for part in whole for step in part.steps],
        )
