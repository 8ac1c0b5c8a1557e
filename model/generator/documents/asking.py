# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Questions about a fact."""

import re

from ..speech import Speaker
from .search import is_stop_word, words_of
from .writing import Told

_SLOT = re.compile(r"\{(\w+)\}")
_SPACE = re.compile(r"\s+")
_STEM = 5  # letters by which words are taken for the same


def slots_in(phrase: str) -> list[str]:
    """The slots of a phrasing, each once, without their capitals."""
    return list(dict.fromkeys(name[0].lower() + name[1:] for name in _SLOT.findall(phrase)))


def flat(text: str) -> str:
    """The text with one blank for every run of white space."""
    return _SPACE.sub(" ", text)


def ended(sentence: str) -> str:
    return sentence if sentence[-1] in ".!?" else sentence + "."


def with_question(phrase: str, bare: str) -> str:
    """A phrasing around a question, whose own slots stay open."""
    small = bare if bare[0] == "{" else bare[0].lower() + bare[1:]
    return phrase.replace("{question}", bare).replace("{ask}", small)


def _stems(text: str) -> set[str]:
    return {word.lower()[:_STEM] for word in words_of(text) if not is_stop_word(word)}


class Question:
    """Asks for a fact. bare: the question without what people say around it, its slots open. names: of these slots."""

    def __init__(self, speaker: Speaker, told: Told):
        self.told = told
        self.bare = told.fact.questions.pick_or_seen(speaker.chance, speaker.split)
        self.names = slots_in(self.bare)

    @property
    def key_words(self) -> list[str]:
        """What a search for it must contain: the words that tell it from other questions of the kind."""
        return [word for name in self.names for word in words_of(self.told.slots[name]) if not is_stop_word(word)]

    def points_at_its_answer(self, others: list[Told]) -> bool:
        """Whether it has more words of the statement that answers it than of any other one."""
        asked = _stems(self.bare.format_map(self.told.slots))

        def shared(told: Told) -> int:
            return len(asked & _stems(told.sentence))

        most = max((shared(told) for told in others if told.sentence != self.told.sentence), default=0)
        return shared(self.told) > most

    def is_answered_by(self, other: Told) -> bool:
        """Whether another statement would answer it as well."""
        if other.fact is not self.told.fact:
            return False
        return all(other.slots[name] == self.told.slots[name] for name in self.names)

    def is_ambiguous_beside(self, other: Told) -> bool:
        """Whether another kind of document states such a thing, too, and the question does not say which is meant."""
        fact = self.told.fact
        return not self.names and other.fact is not fact and other.fact.topic == fact.topic
