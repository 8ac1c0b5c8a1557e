# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Questions about documents, which the search tool looks up."""

from dataclasses import replace

from ..documents.asking import Question, ended, flat, with_question
from ..documents.search import excerpt, output, results, search_phrase, words_of
from ..documents.writing import Document, Told, Writer, some_kind
from ..example import Example
from ..program import SEARCH, selected_tools
from ..speech import Speaker
from ..values import Slots

_UNANSWERED = 0.3
_TITLED = 0.12
_MOST_SENTENCES = 3


def _typed(speaker: Speaker, phrase: str, slots: Slots, titles: list[str]) -> tuple[str, str]:
    """The phrase as it is typed, and the search phrase that it calls for. It keeps a word that offers the search."""
    meant = phrase.format_map(slots)
    title = slots["title"] if "{title}" in phrase else ""
    for _ in range(8):
        typed = speaker.typed(phrase, slots)
        if SEARCH in selected_tools(typed, False, titles) and len(typed.split()) == len(meant.split()):
            return typed, search_phrase(meant, typed, title)
    return meant, search_phrase(meant, meant, title)


def _distractors(speaker: Speaker, writer: Writer, question: Question, kind) -> list[Document]:
    """Documents about other things, some of them of the same kind."""
    documents = []
    for _ in range(speaker.chance.choice((0, 1, 1, 2, 2, 3))):
        if speaker.chance.random() < 0.4:
            without = "" if question.names_something else question.told.fact.name
            documents.append(writer.write(kind, most=4, without=without))
        else:
            documents.append(writer.write(some_kind(speaker), most=4))
    return documents


def _silent(writer: Writer, subject: Document, told: Told) -> Document:
    """A document of the same name, about the same thing, that does not state the fact."""
    if subject.kind.fresh:
        document = writer.write(subject.kind)
    else:
        document = writer.write(subject.kind, without=told.fact.name, slots=told.slots)
    return replace(document, title=subject.title)


def _library(speaker: Speaker) -> tuple[Question, list[Document], bool]:
    """A question, documents, and whether one of them answers it. No two do."""
    writer = Writer(speaker)
    while True:
        subject = writer.write(some_kind(speaker))
        told = speaker.chance.choice(subject.told)
        question = Question(speaker, told)
        told.slots["title"] = subject.title
        is_answered = speaker.chance.random() > _UNANSWERED
        documents = [subject if is_answered else _silent(writer, subject, told)]
        documents += _distractors(speaker, writer, question, subject.kind)
        speaker.chance.shuffle(documents)
        stated = [other for document in documents for other in document.told]
        answers = sum(question.is_answered_by(other) for other in stated)
        if any(question.is_ambiguous_beside(other) for other in stated):
            continue
        titles = {document.title for document in documents}
        if answers == is_answered and len(titles) == len(documents):
            return question, documents, is_answered


def answer(speaker: Speaker) -> Example:
    """A fact that a document states; or, near to it, one that none states."""
    while True:
        question, documents, is_answered = _library(speaker)
        titles = [document.title for document in documents]
        wrap = speaker.phrase("search.titled" if speaker.chance.random() < _TITLED else "search.wrap")
        typed, phrase = _typed(speaker, with_question(wrap, question.bare), question.told.slots, titles)
        found = results(documents, phrase, speaker.chance)
        sentence = flat(question.told.sentence)
        holder = next((document for document in found if sentence in flat(excerpt(document.text, phrase))), None)
        if is_answered == (holder is not None):
            break
    example = Example("search.answer" if holder else "search.nothing", typed, subject=phrase)
    example.chat.documents = titles
    example.calls(SEARCH, output(found, phrase), query=phrase)
    example.expect["argument_contains"] = question.key_words
    if holder is None:
        return example.replies(speaker.fixed("reply.notfound"), refuses=True, contains=["nothing about that"])
    return _cited(speaker, example, [sentence], holder)


def _cited(speaker: Speaker, example: Example, sentences: list[str], holder: Document) -> Example:
    example.points = sentences
    reply = speaker.fixed("reply.found").format(sentence=" ".join(sentences), title=holder.title)
    return example.replies(reply, contains=sentences, cites=holder.title)


def sum_up(speaker: Speaker) -> Example:
    """What a document that is named says: its first statements."""
    writer = Writer(speaker)
    while True:
        subject = writer.write(some_kind(speaker))
        documents = [subject] + [writer.write(some_kind(speaker), most=3) for _ in range(speaker.chance.choice((0, 1, 1, 2)))]
        slots = Slots(speaker.values, title=subject.title)
        titles = [document.title for document in documents]
        typed, phrase = _typed(speaker, speaker.phrase("search.sumup"), slots, titles)
        found = results(documents, phrase, speaker.chance)
        if found and found[0] is subject:
            break
    shown = flat(excerpt(subject.text, phrase))
    sentences = [sentence for told in subject.told if (sentence := flat(told.sentence)) in shown][:_MOST_SENTENCES]
    example = Example("search.sumup", typed, subject=subject.title)
    example.chat.documents = titles
    example.calls(SEARCH, output(found, phrase), query=phrase)
    example.expect["argument_contains"] = words_of(subject.title.rpartition(".")[0])[:1]
    return _cited(speaker, example, [ended(sentence) for sentence in sentences], subject)


TASKS = {"search": ((answer, 9), (sum_up, 1))}
