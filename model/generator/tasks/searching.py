# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Questions about documents, which the search tool looks up."""

import re

from ..documents.search import excerpt, is_stop_word, output, results, search_phrase, words_of
from ..documents.writing import Document, Told, Writer, some_kind
from ..example import Example
from ..program import SEARCH, selected_tools
from ..speech import Speaker

_SPACE = re.compile(r"\s+")


class Question:
    """A question that is asked of a library. typed: as it was written; meant: without its slips."""

    def __init__(self, speaker: Speaker, told: Told, titles: list[str], title: str):
        self.speaker = speaker
        bare = told.fact.questions.pick(speaker.chance, speaker.split)
        titled = speaker.chance.random() < 0.12
        phrase = _wrapped(speaker, bare, titled)
        told.slots["title"] = title
        self.meant = phrase.format_map(told.slots)
        self.typed = self.meant
        self.words = [
            word for slot in re.findall(r"\{(\w+)\}", bare) for word in words_of(told.slots[slot]) if not is_stop_word(word)
        ]
        for _ in range(8):
            typed = speaker.typed(phrase, told.slots)
            if SEARCH in selected_tools(typed, False, titles) and len(typed.split()) == len(self.meant.split()):
                self.typed = typed
                break
        self.search = search_phrase(self.meant, self.typed)


def _wrapped(speaker: Speaker, bare: str, titled: bool) -> str:
    wrap = speaker.phrase("search.titled" if titled else "search.wrap")
    return wrap.replace("{question}", bare).replace("{ask}", bare if bare.startswith("{") else bare[0].lower() + bare[1:])


def _library(speaker: Speaker, writer: Writer, subject: Document, told: Told) -> list[Document]:
    """The document and others, some of the same kind about something else."""
    documents = [subject]
    for _ in range(speaker.chance.choice((0, 1, 1, 2, 2, 3))):
        same = speaker.chance.random() < 0.4
        kind = subject.kind if same else some_kind(speaker)
        documents.append(writer.write(kind, most=4, without=told.fact.name if same else ""))
    speaker.chance.shuffle(documents)
    return documents


def flat(text: str) -> str:
    return _SPACE.sub(" ", text)


def answer(speaker: Speaker) -> Example:
    """A fact that a document states; or, near to it, one that none states."""
    writer = Writer(speaker)
    subject = writer.write(some_kind(speaker))
    told = speaker.chance.choice(subject.told)
    documents = _library(speaker, writer, subject, told)
    question = Question(speaker, told, [document.title for document in documents], subject.title)
    if speaker.chance.random() < 0.3:
        documents = _without(writer, documents, subject, told)
    found = results(documents, question.search, speaker.chance)
    example = Example("search.answer", question.typed)
    example.chat.documents = [document.title for document in documents]
    example.calls(SEARCH, output(found, question.search), query=question.search)
    example.expect["argument_contains"] = question.words
    sentence = flat(told.sentence)
    holder = next((doc for doc in found if sentence in flat(excerpt(doc.text, question.search))), None)
    if holder is None:
        example.task = "search.nothing"
        return example.replies(speaker.fixed("reply.notfound"), refuses=True, contains=["nothing about that"])
    reply = speaker.fixed("reply.found").format(sentence=sentence, title=holder.title)
    return example.replies(reply, contains=[sentence], cites=holder.title)


def _without(writer: Writer, documents: list[Document], subject: Document, told: Told) -> list[Document]:
    """The same library, but the fact stands nowhere in it."""
    others = [document for document in documents if document is not subject]
    slots = None if subject.kind.fresh else told.slots
    if len(subject.kind.facts) > 1:
        others.append(writer.write(subject.kind, without=told.fact.name, slots=slots))
    return others


TASKS = {"search": ((answer, 1),)}
