# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Drills in finding the sentence that a question is about: a few short ones, and one question after the other.

Questions that follow the first are in training only: of what is held out, each example is one request.
"""

from ..documents.asking import Question, flat, with_question
from ..documents.layout import lay_out
from ..documents.writing import Told, Writer, some_kind
from ..example import Example
from ..speech import Speaker
from ..splits import TRAIN

_MOST_STATEMENTS = 8
_MOST_QUESTIONS = 6
_LONGEST_STATEMENT = 90  # characters
_OF_ONE_KIND = 0.5
_UNANSWERED = 0.15


def _statements(speaker: Speaker) -> list[Told]:
    """Of one kind of documents, or each of another."""
    chance, writer = speaker.chance, Writer(speaker)
    told: list[Told] = []
    kind = some_kind(speaker)
    slots = writer.new_slots(kind)
    is_of_one_kind = chance.random() < _OF_ONE_KIND
    for _ in range(chance.randint(2, _MOST_STATEMENTS)):
        if not is_of_one_kind:
            kind = some_kind(speaker)
        if kind.fresh or not is_of_one_kind:
            slots = writer.new_slots(kind)
        statement = writer.tell(chance.choice(kind.facts), slots, as_entry=chance.random() < 0.2)
        is_new = kind.fresh or all(other.fact is not statement.fact for other in told)
        if is_new and len(statement.sentence) <= _LONGEST_STATEMENT:
            told.append(statement)
    return told


def _questions(speaker: Speaker, told: list[Told]) -> list[Question]:
    """Those that one of the statements answers, and that share the most words with it."""
    found = []
    for statement in told:
        question = Question(speaker, statement)
        answers = [other for other in told if question.is_answered_by(other)]
        is_clear = len(answers) == 1 and not any(map(question.is_ambiguous_beside, told))
        if is_clear and question.points_at_its_answer(told):
            found.append(question)
    speaker.chance.shuffle(found)
    return found[: _MOST_QUESTIONS if speaker.split == TRAIN else 1]


def read(speaker: Speaker) -> Example:
    """Questions about a text, each with its sentence; some about a sentence that was left out of it."""
    chance = speaker.chance
    while True:
        told = _statements(speaker)
        if questions := _questions(speaker, told):
            break
    silent = questions[-1].told if len(told) > 1 and chance.random() < _UNANSWERED else None
    chance.shuffle(questions)
    text = lay_out(chance, [statement.sentence for statement in told if statement is not silent], "")
    first = questions[0]
    first.told.slots["text"] = text
    asked = with_question(speaker.phrase("work.ask"), first.bare)
    example = Example("drill.read", speaker.typed(asked, first.told.slots))
    for question in questions:
        if question is not first:
            wrap = speaker.phrase("work.again") if chance.random() < 0.3 else "{question}"
            example.asks(speaker.typed(with_question(wrap, question.bare), question.told.slots))
        reply = speaker.fixed("reply.textsilent") if question.told is silent else flat(question.told.sentence)
        example.replies(reply, exact=reply)
    return example


TASKS = {"drill.read": ((read, 1),)}
