# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""A question and a document that answers it; or one near to it that does not."""

from dataclasses import dataclass

from ..speech import Speaker
from .asking import Question
from .writing import Document, Writer, some_kind

_WITH_NEAR_FACT = 0.3
_IN_OTHER_WORDS = 0.1  # of the questions that a text answers


@dataclass
class Case:
    question: Question
    document: Document
    is_answered: bool


def case(speaker: Speaker, unanswered: float, parts: int = 0) -> Case:
    """unanswered: the share of cases in which the document says other things of what is asked about, or the same of
    something else. parts: of other kinds that the document has as well."""
    while True:
        made = _try(speaker, unanswered, parts)
        question, told = made.question, made.document.told
        answers = {fact.sentence for fact in told if question.is_answered_by(fact)}
        if len(answers) != made.is_answered or any(map(question.is_ambiguous_beside, told)):
            continue
        if not made.is_answered or question.points_at_its_answer(told) or speaker.chance.random() < _IN_OTHER_WORDS:
            return made


def _try(speaker: Speaker, unanswered: float, parts: int) -> Case:
    writer, chance = Writer(speaker), speaker.chance
    kind = some_kind(speaker)
    slots = writer.new_slots(kind)
    told = writer.tell(chance.choice(kind.facts), slots, as_entry=chance.random() < 0.25)
    question = Question(speaker, told)
    is_answered = chance.random() > unanswered
    must = [told] if is_answered else []
    about = {name: slots[name] for name in question.names if not name.startswith("verb")}
    if kind.fresh and about and chance.random() < _WITH_NEAR_FACT:
        must.append(writer.tell(told.fact, writer.near_slots(kind, about)))
    document = writer.write(kind, slots=slots, without=told.fact.name, must=tuple(must), about=about)
    if parts:
        document = writer.lengthened(document, parts)
    return Case(question, document, is_answered)
