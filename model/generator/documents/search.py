# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""What the search tool gives back for a phrase: the rules of its excerpts, and a stand-in for its index."""

import random
import re

from ..program import OUTPUTS, SEARCH
from ..textfiles import FOLDER, word_lists
from .writing import Document

MOST_RESULTS = 3
EXCERPT_LENGTH = 1000
LENGTH_BEFORE_MATCH = 200

_STOP_WORDS = {
    word for words in word_lists(FOLDER / "words" / "stopwords.txt").values() for line in words for word in line.split()
}
_WORD = re.compile(r"[^\W_]+")
_AROUND = "\"“”'’‘.,;:?!()[]…-–—*"


def is_stop_word(word: str) -> bool:
    return word.lower().replace("’", "'").removesuffix("'s") in _STOP_WORDS or not word


def search_phrase(meant: str, typed: str, names: list[str]) -> str:
    """The words of a question that a search is about, as they were typed.

    meant: the question without slips, word for word the same. names: in the question, whose words all count.
    """
    kept = []
    whole = {word.strip(_AROUND) for name in names for word in name.split()}
    for word, as_typed in zip(meant.split(), typed.split()):
        word, as_typed = word.strip(_AROUND), as_typed.strip(_AROUND)
        if word in whole or not is_stop_word(word):
            kept.append(as_typed.removesuffix("'s").removesuffix("’s"))
    return " ".join(kept)


def words_of(text: str) -> list[str]:
    return _WORD.findall(text)


def excerpt(text: str, phrase: str) -> str:
    """At most a thousand characters, from two hundred before the first word of the phrase that occurs at all."""
    lower = text.lower()
    start = 0
    for word in words_of(phrase):
        if len(word) > 2 and (place := lower.find(word.lower())) >= 0:
            start = max(0, place - LENGTH_BEFORE_MATCH)
            break
    return text[start : start + EXCERPT_LENGTH]


def results(documents: list[Document], phrase: str, chance: random.Random) -> list[Document]:
    """The documents in which words of the phrase occur, the most of them first, as an index would rank them."""
    wanted = {word.lower() for word in words_of(phrase) if not is_stop_word(word)}

    def rank(document: Document) -> float:
        title = {word.lower() for word in words_of(document.title)}
        own = {word.lower() for word in words_of(document.text)}
        return 2 * len(wanted & title) + len(wanted & own)

    ranked = [(rank(document) + chance.random() * 1.5, document) for document in documents if rank(document)]
    ranked.sort(key=lambda pair: -pair[0])
    return [document for _, document in ranked[:MOST_RESULTS]]


def output(found: list[Document], phrase: str) -> str:
    """The tool's answer."""
    if not found:
        return OUTPUTS[SEARCH]
    return "\n\n".join(f"Document: {document.title}\nExcerpt: {excerpt(document.text, phrase)}" for document in found)
