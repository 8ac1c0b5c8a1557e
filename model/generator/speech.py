# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""How people type: politely or not, with errors, in small letters, without punctuation."""

import random
import re

from .grammar import Phrases
from .textfiles import FOLDER, sections
from .values import Slots, Values, fill, put

_NEIGHBOURS = {
    "a": "sq", "b": "vn", "c": "xv", "d": "sf", "e": "wr", "f": "dg", "g": "fh", "h": "gj", "i": "uo", "j": "hk",
    "k": "jl", "l": "k", "m": "n", "n": "bm", "o": "ip", "p": "o", "q": "w", "r": "et", "s": "ad", "t": "ry",
    "u": "yi", "v": "cb", "w": "qe", "x": "zc", "y": "tu", "z": "x",
}  # fmt: skip
_WORD = re.compile(r"(?<![\w{’'])[a-z]{4,}(?![\w}’'])")
_SLOT = re.compile(r"\{\w+\}")
_WITH_ADDRESS = 0.1


def load(folder: str = "phrases") -> dict[str, Phrases]:
    """Every intent's phrasings, by its name."""
    phrases: dict[str, Phrases] = {}
    for path in sorted((FOLDER / folder).glob("*.txt")):
        for name, lines in sections(path):
            if name in phrases:
                raise ValueError(f"{path.name}: {name} stands in two places")
            phrases[name] = Phrases(lines, name)
    return phrases


PHRASES = load()


def misspelt(word: str, chance: random.Random) -> str:
    at = int(chance.random() * (len(word) - 1))
    kind = int(chance.random() * 4)
    if kind == 0:
        return word[:at] + word[at + 1] + word[at] + word[at + 2 :]
    if kind == 1:
        return word[:at] + word[at + 1 :]
    if kind == 2:
        return word[: at + 1] + word[at:]
    return word[:at] + chance.choice(_NEIGHBOURS[word[at]]) + word[at + 1 :]


def small(phrase: str) -> str:
    """In small letters, but for the names of slots."""
    end = 0
    text = ""
    for slot in _SLOT.finditer(phrase):
        text += phrase[end : slot.start()].lower() + slot.group()
        end = slot.end()
    return text + phrase[end:].lower()


class Speaker:
    """Says things in the words of one split."""

    def __init__(self, chance: random.Random, split: str):
        self.chance = chance
        self.split = split
        self.values = Values(chance, split)

    def slots(self, **known: str) -> Slots:
        return Slots(self.values, **known)

    def phrase(self, intent: str) -> str:
        """A phrasing of an intent, its slots still open; sometimes with a word before or after it."""
        phrase = PHRASES[intent].pick(self.chance, self.split)
        if "{text}" in phrase or intent.startswith("talk.") or self.chance.random() > _WITH_ADDRESS:
            return phrase
        if self.chance.random() < 0.7:
            before = PHRASES["say.before"].pick(self.chance, self.split)
            return f"{before} {phrase if phrase[0] in '{[' else phrase[0].lower() + phrase[1:]}"
        return f"{phrase} {PHRASES['say.after'].pick(self.chance, self.split)}"

    def phrase_or_seen(self, intent: str) -> str:
        """The same; where the split has none, one that is for training."""
        return PHRASES[intent].pick_or_seen(self.chance, self.split)

    def fixed(self, intent: str) -> str:
        """One of the texts of an intent that is not divided between the splits: what the model says."""
        return PHRASES[intent].pick_any(self.chance)

    def reply(self, intent: str, **values: str) -> str:
        """The same, of what is found."""
        return put(self.fixed(f"reply.{intent}"), values)

    def typed(self, phrase: str, slots: Slots) -> str:
        """The phrasing as somebody types it. What is in its slots stays as it is."""
        return fill(self.roughened(phrase), slots)

    def ask(self, intent: str, **known: str) -> str:
        return self.typed(self.phrase(intent), self.slots(**known))

    def roughened(self, phrase: str) -> str:
        chance = self.chance
        draw = chance.random()
        if draw < 0.5:
            return phrase
        if draw < 0.62:
            phrase = phrase.rstrip("?.!")
        if draw < 0.8:
            phrase = small(phrase)
        if 0.72 < draw < 0.84:
            phrase = phrase.rstrip("?.!")
        if draw > 0.84:
            phrase = self.with_slips(phrase)
        return phrase

    def with_slips(self, phrase: str) -> str:
        words = list(_WORD.finditer(phrase))
        if not words:
            return phrase
        found = self.chance.choice(words)
        return phrase[: found.start()] + misspelt(found.group(), self.chance) + phrase[found.end() :]
