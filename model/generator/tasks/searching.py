# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Questions about documents, which the search tool looks up."""

from ..documents.asking import ended, flat, slots_in, with_question
from ..documents.cases import Case, case
from ..documents.search import excerpt, output, results, search_phrase, words_of
from ..documents.writing import Document, Told, Writer, some_kind
from ..example import Example
from ..program import SEARCH, selected_tools
from ..speech import Speaker
from ..values import Slots, fill

_UNANSWERED = 0.3
_TITLED = 0.12
_MOST_SENTENCES = 3
_PARTS = (0,) * 10 + (1, 2, 4, 8)  # of other kinds in the documents, which makes some of them long
_NAMES = ("person", "company", "item", "city", "name")


def _typed(speaker: Speaker, phrase: str, slots: Slots, titles: list[str]) -> tuple[str, str]:
    """The phrase as it is typed, and the search phrase that it calls for. It keeps a word that offers the search."""
    meant = fill(phrase, slots)
    names = [slots[slot] for slot in slots_in(phrase)]
    for _ in range(8):
        typed = speaker.typed(phrase, slots)
        if SEARCH in selected_tools(typed, False, titles) and len(typed.split()) == len(meant.split()):
            return typed, search_phrase(meant, typed, names)
    return meant, search_phrase(meant, meant, names)


def _library(speaker: Speaker, parts: int) -> tuple[Case, list[Document]]:
    """A case among documents about other things, some of the same kind. Nothing else answers its question."""
    writer, chance = Writer(speaker), speaker.chance
    while True:
        made = case(speaker, _UNANSWERED, parts)
        question, kind = made.question, made.document.kind
        documents = [made.document]
        for _ in range(chance.choice((1, 2, 2, 3) if parts > 2 else (0, 1, 1, 2, 2, 3))):
            if chance.random() < (0.7 if parts > 2 else 0.4):
                other = writer.write(kind, 4, without="" if question.names else question.told.fact.name)
            else:
                other = writer.write(some_kind(speaker), 4)
            documents.append(writer.lengthened(other, parts) if parts else other)
        others = [told for document in documents[1:] for told in document.told]
        if any(question.is_answered_by(told) or question.is_ambiguous_beside(told) for told in others):
            continue
        if len({document.title for document in documents}) == len(documents):
            chance.shuffle(documents)
            return made, documents


def answer(speaker: Speaker) -> Example:
    """A fact that a document states; or, near to it, one that none states."""
    parts = speaker.chance.choice(_PARTS)
    while True:
        made, documents = _library(speaker, parts)
        told = made.question.told
        told.slots["title"] = made.document.title
        titles = [document.title for document in documents]
        wrap = speaker.phrase("search.titled" if speaker.chance.random() < _TITLED else "search.wrap")
        typed, phrase = _typed(speaker, with_question(wrap, made.question.bare), told.slots, titles)
        found = results(documents, phrase, speaker.chance)
        sentence = flat(told.sentence)
        holder = next((document for document in found if sentence in flat(excerpt(document.text, phrase))), None)
        if made.is_answered == (holder is not None):
            break
    example = Example("search.answer" if holder else "search.nothing", typed, subject=phrase)
    example.chat.documents = titles
    example.calls(SEARCH, output(found, phrase), query=phrase)
    example.expect["argument_contains"] = made.question.key_words
    if holder is None:
        return example.replies(speaker.fixed("reply.notfound"), refuses=True, contains=["nothing about that"])
    return _cited(speaker, example, [sentence], holder)


def _cited(speaker: Speaker, example: Example, sentences: list[str], holder: Document) -> Example:
    example.points = sentences
    reply = speaker.reply("found", sentence=" ".join(sentences), title=holder.title)
    return example.replies(reply, contains=sentences, cites=holder.title)


def sum_up(speaker: Speaker) -> Example:
    """What a document that is named says: its first statements."""
    writer = Writer(speaker)
    while True:
        subject = writer.write(some_kind(speaker))
        number = speaker.chance.choice((0, 1, 1, 2))
        documents = [subject] + [writer.write(some_kind(speaker), 3) for _ in range(number)]
        slots = Slots(speaker.values, title=subject.title)
        titles = [document.title for document in documents]
        typed, phrase = _typed(speaker, speaker.phrase("search.sumup"), slots, titles)
        found = results(documents, phrase, speaker.chance)
        if found and found[0] is subject:
            break
    shown = flat(excerpt(subject.text, phrase))
    sentences = [flat(sentence) for sentence in subject.sentences if flat(sentence) in shown][:_MOST_SENTENCES]
    example = Example("search.sumup", typed, subject=subject.title)
    example.chat.documents = titles
    example.calls(SEARCH, output(found, phrase), query=phrase)
    example.expect["argument_contains"] = words_of(subject.title.rpartition(".")[0])[:1]
    return _cited(speaker, example, [ended(sentence) for sentence in sentences], subject)


def mention(speaker: Speaker) -> Example:
    """What the documents say of somebody or something: the one sentence in which it is named."""
    writer, chance = Writer(speaker), speaker.chance
    while True:
        documents = [writer.write(some_kind(speaker), 5) for _ in range(chance.choice((1, 2, 2, 3)))]
        titles = [document.title for document in documents]
        named = _named_once(documents)
        if not named or len(set(titles)) < len(titles):
            continue
        entity, told = chance.choice(named)
        is_known = chance.random() > _UNANSWERED
        slots = Slots(speaker.values, entity=entity if is_known else speaker.values.near("person", entity))
        typed, phrase = _typed(speaker, speaker.phrase("search.mention"), slots, titles)
        found = results(documents, phrase, chance)
        sentence = flat(told.sentence)
        holder = next((document for document in found if sentence in flat(excerpt(document.text, phrase))), None)
        if holder or not is_known:
            break
    example = Example("search.answer" if is_known else "search.nothing", typed, subject=slots["entity"])
    example.chat.documents = titles
    example.calls(SEARCH, output(found, phrase), query=phrase)
    example.expect["argument_contains"] = words_of(slots["entity"])
    if not is_known:
        return example.replies(speaker.fixed("reply.notfound"), refuses=True, contains=["nothing about that"])
    return _cited(speaker, example, [sentence], holder)


def _named_once(documents: list[Document]) -> list[tuple[str, Told]]:
    """Names that stand in one sentence of all, and the statement."""
    whole = flat("\n".join(document.text for document in documents)).lower()
    named = []
    for document in documents:
        for told in document.told:
            for slot in sorted(told.fact.slots):
                kind = document.kind.slots.get(slot, slot.rstrip("0123456789"))
                if kind in _NAMES and whole.count(told.slots[slot].lower()) == 1 and told.slots[slot] in told.sentence:
                    named.append((told.slots[slot], told))
    return named


TASKS = {"search": ((answer, 8), (sum_up, 1), (mention, 1.5))}
