# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Names, places, things and invented words, divided between the splits."""

import random

from .splits import TRAIN, members, split_of
from .textfiles import FOLDER, word_lists

LISTS = word_lists(FOLDER / "words" / "words.txt")

# Beginnings, vowels and ends of the syllables of invented words, in the manner of several languages.
_ONSETS = "b bl br c ch d dr f fl g gr h j k kr l m m n n p pl pr qu r r s sh sk st t t th tr v w z".split()
_VOWELS = "a a a e e e i i i o o o u u ai ea ee oo ou au ie y".split()
_ENDS = "ck d g k l l m n n nd ng nt p r r rk rn s s sh st t th x v ll tz".split()


class Words:
    """Picks words of one split."""

    def __init__(self, chance: random.Random, split: str):
        self._chance = chance
        self._split = split
        self._lists: dict[str, list[str]] = {}

    def pick(self, name: str) -> str:
        """A word of the list of this name. Lists that have nothing of the split give what is for training."""
        words = self._lists.get(name)
        if words is None:
            words = members(LISTS[name], self._split) or members(LISTS[name], TRAIN)
            self._lists[name] = words
        return words[int(self._chance.random() * len(words))]

    def invented(self, syllables: int = 0) -> str:
        """A word that does not exist, in small letters."""
        chance = self._chance
        while True:
            word = ""
            for _ in range(syllables or chance.choice((1, 2, 2, 2, 2, 3, 3))):
                word += chance.choice(_ONSETS) + chance.choice(_VOWELS)
                if chance.random() < 0.4:
                    word += chance.choice(_ENDS)
            if len(word) > 2 and split_of(word) == self._split:
                return word
