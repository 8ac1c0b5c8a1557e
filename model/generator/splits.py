# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Which phrasings, words and kinds of documents are for training, and which are held out.

The division is a hash of the text itself, so that it never changes as the lists grow.
"""

from zlib import crc32

TRAIN = "train"
DEVELOPMENT = "development"
FINAL = "final"
SPLITS = (TRAIN, DEVELOPMENT, FINAL)


def place_of(text: str) -> float:
    """Where a text lies between 0 and 1, whatever its case."""
    return crc32(text.lower().encode()) % 10_000 / 10_000


def split_of(text: str, held_out: float = 0.12) -> str:
    """The one split that a text belongs to. held_out: the share of development, and of final."""
    place = place_of(text)
    if place < held_out:
        return DEVELOPMENT
    return FINAL if place < 2 * held_out else TRAIN


def members(texts: list[str], split: str) -> list[str]:
    """The texts of a list that belong to a split, in their order."""
    return [text for text in texts if split_of(text) == split]
