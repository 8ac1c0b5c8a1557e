# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Texts in many scripts, without sense: to be quoted, not understood."""

import random

from .textfiles import FOLDER, word_lists
from .values import Values

_WORDS = word_lists(FOLDER / "words" / "scripts.txt")
_WITHOUT_BLANKS = ("Japanese", "Chinese", "Thai")
_LETTERS = {
    "Cyrillic": (0x430, 0x44F), "Greek": (0x3B1, 0x3C9), "Hebrew": (0x5D0, 0x5EA), "Arabic": (0x628, 0x63A),
    "Devanagari": (0x915, 0x939), "Hiragana": (0x3042, 0x3093), "Hangul": (0xAC00, 0xD7A3), "Han": (0x4E00, 0x9FA5),
    "Georgian": (0x10D0, 0x10F0), "Armenian": (0x561, 0x586), "Thai": (0xE01, 0xE2E), "Tamil": (0xB95, 0xBB9),
    "Latin": (0xE0, 0x17E), "Emoji": (0x1F600, 0x1F64F), "Symbols": (0x2190, 0x21FF),
}  # fmt: skip


def foreign_text(chance: random.Random, values: Values) -> str:
    """A few words of one language or, sometimes, letters of one script or signs of all."""
    draw = chance.random()
    if draw < 0.65:
        language = chance.choice(list(_WORDS))
        blank = "" if language in _WITHOUT_BLANKS else " "
        text = blank.join(chance.choice(_WORDS[language]) for _ in range(chance.randint(2, 9)))
        return text + chance.choice(("", "", ".", "!", "?", "…"))
    if draw < 0.9:
        first, last = chance.choice(list(_LETTERS.values()))
        words = (
            "".join(chr(chance.randint(first, last)) for _ in range(chance.randint(1, 7)))
            for _ in range(chance.randint(1, 6))
        )
        return " ".join(words)
    signs = "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~€£§°²µ·»«„“”’–—…"
    return "".join(chance.choice(signs + values.invented()) for _ in range(chance.randint(4, 24)))
