# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Phrasings that are composed from alternatives.

A line of the grammar is a text with alternatives in brackets, which nest, and with slots in braces:

    [Could|Can] you [please |]tell me the [phone |]number of {person}?

A backslash makes a sign of the grammar one of the text, and \\n a line break. A phrasing is a line with its
alternatives chosen; its slots are filled later, with values.
"""

import random
import re
from bisect import bisect
from itertools import accumulate

from .splits import DEVELOPMENT, FINAL, TRAIN, place_of, split_of

_BLANKS = re.compile(r" {2,}")
_BEFORE_SIGN = re.compile(r" ([?.!](?: |$))")
MOST_TRIES = 400
WHOLE_LINES_HELD_OUT = 0.05
FEWEST_DIVIDED = 3  # one is held out, for the one split or the other
FEWEST_FOR_BOTH = 5
MANY = 60


def parse(line: str) -> list:
    """A line as a sequence of texts (str) and choices (tuple of sequences)."""
    sequence, rest = _sequence(line, 0, nested=False)
    if rest != len(line):
        raise ValueError(f"a bracket that nothing opened: {line}")
    return sequence


def _sequence(line: str, at: int, nested: bool) -> tuple[list, int]:
    parts: list = []
    text = ""
    while at < len(line):
        sign = line[at]
        if sign == "\\":
            text += {"n": "\n", "t": "\t"}.get(line[at + 1], line[at + 1])
            at += 2
        elif sign == "[":
            choice, at = _choice(line, at + 1)
            parts += [text, choice] if text else [choice]
            text = ""
        elif nested and sign in "|]":
            break
        elif sign == "]":
            raise ValueError(f"a bracket that nothing opened: {line}")
        else:
            text += sign
            at += 1
    return (parts + [text] if text else parts), at


def _choice(line: str, at: int) -> tuple[tuple, int]:
    alternatives = []
    while True:
        sequence, at = _sequence(line, at, nested=True)
        alternatives.append(sequence)
        if at >= len(line):
            raise ValueError(f"a bracket that nothing closes: {line}")
        at += 1
        if line[at - 1] == "]":
            return tuple(alternatives), at


def expand(sequence: list, chance: random.Random) -> str:
    """The sequence with a choice made wherever there is one."""
    if len(sequence) == 1 and isinstance(sequence[0], str):
        return sequence[0]
    return "".join(
        part if isinstance(part, str) else expand(part[int(chance.random() * len(part))], chance) for part in sequence
    )


def tidy(text: str) -> str:
    """Without the blanks that alternatives leave which stand for nothing."""
    if "  " in text or text[:1] == " " or text[-1:] == " ":
        text = _BLANKS.sub(" ", text).strip(" ")
    return _BEFORE_SIGN.sub(r"\1", text) if " ?" in text or " ." in text or " !" in text else text


def count(sequence: list) -> int:
    """How many texts a sequence stands for."""
    product = 1
    for part in sequence:
        if not isinstance(part, str):
            product *= sum(count(alternative) for alternative in part)
    return product


def phrasings_of(sequence: list) -> list[str]:
    """Every phrasing of a line."""
    return [tidy(text) for text in all_of(sequence)]


def all_of(sequence: list) -> list[str]:
    """Every text that a sequence stands for."""
    texts = [""]
    for part in sequence:
        ends = [part] if isinstance(part, str) else [text for alternative in part for text in all_of(alternative)]
        texts = [text + end for text in texts for end in ends]
    return texts


class Phrases:
    """The phrasings of one intent, each of which belongs to one split.

    Of many phrasings, a twentieth of the lines is held out as a whole for each of the held-out splits, and each
    phrasing of the other lines has its own place. Of few, the first by their hashes are held out; of very few, none.
    """

    def __init__(self, lines: list[str], name: str = ""):
        self.name = name
        self._sequences = [parse(line) for line in lines]
        self._owners = [TRAIN for _ in lines]
        self._held_out: dict[str, str] | None = None
        self._reserved: set[str] = set()
        number = len(self)
        if number >= MANY:
            self._owners = [split_of(line, WHOLE_LINES_HELD_OUT) for line in lines]
            held_lines = (seq for seq, owner in zip(self._sequences, self._owners) if owner != TRAIN)
            self._reserved = {phrase for sequence in held_lines for phrase in phrasings_of(sequence)}
        else:
            self._held_out = _first_by_hash(self._sequences, name) if number >= FEWEST_DIVIDED else {}
        self._of_split: dict[str, tuple[list, list[float]]] = {}

    def __len__(self) -> int:
        return sum(count(sequence) for sequence in self._sequences)

    def has(self, split: str) -> bool:
        """Whether there is any phrasing of this split."""
        return bool(self._lines_of(split)[0])

    def pick(self, chance: random.Random, split: str) -> str:
        """A phrasing of this split, its slots still open."""
        lines, weights = self._lines_of(split)
        for _ in range(MOST_TRIES if lines else 0):
            sequence, owner = lines[bisect(weights, chance.random() * weights[-1])]
            phrase = tidy(expand(sequence, chance))
            if owner == split != TRAIN or self._split_of(phrase) == split:
                return phrase
        raise LookupError(f"no phrasing of {self.name} is found for {split}")

    def pick_or_seen(self, chance: random.Random, split: str) -> str:
        """A phrasing of this split or, where there is none, one that is for training."""
        return self.pick(chance, split if self.has(split) else TRAIN)

    def pick_any(self, chance: random.Random) -> str:
        return tidy(expand(self._sequences[int(chance.random() * len(self._sequences))], chance))

    def _split_of(self, phrase: str) -> str | None:
        """The split of a phrasing of an open line; none where a held-out line has it, too."""
        if phrase in self._reserved:
            return None
        return split_of(phrase) if self._held_out is None else self._held_out.get(phrase, TRAIN)

    def _lines_of(self, split: str) -> tuple[list, list[float]]:
        """Only lines that have a phrasing there, so that few tries are in vain; and their weights, each added to those
        before it. A line of many phrasings counts for more, but not as many times as it has phrasings."""
        if split not in self._of_split:
            lines = [
                (sequence, owner)
                for sequence, owner in zip(self._sequences, self._owners)
                if (owner == split != TRAIN) or (owner == TRAIN and self._occurs(sequence, split))
            ]
            weights = list(accumulate(count(sequence) ** 0.5 for sequence, _ in lines))
            self._of_split[split] = lines, weights
        return self._of_split[split]

    def _occurs(self, sequence: list, split: str) -> bool:
        if count(sequence) < MANY:
            return any(self._split_of(phrase) == split for phrase in phrasings_of(sequence))
        chance = random.Random(0)
        return any(self._split_of(tidy(expand(sequence, chance))) == split for _ in range(MANY))


def _first_by_hash(sequences: list, name: str) -> dict[str, str]:
    phrases = sorted({phrase for sequence in sequences for phrase in phrasings_of(sequence)}, key=place_of)
    each = max(len(phrases) // 8, len(phrases) >= FEWEST_FOR_BOTH)
    if not each:
        return {phrases[0]: DEVELOPMENT if place_of(name) < 0.5 else FINAL}
    return {phrase: DEVELOPMENT for phrase in phrases[:each]} | {phrase: FINAL for phrase in phrases[each : 2 * each]}
