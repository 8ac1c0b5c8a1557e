# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Work on a text that the user gives, now or earlier in the chat."""

import re

from ..documents.asking import ended, flat, with_question
from ..documents.cases import Case, case
from ..documents.writing import Document, Writer, some_kind
from ..example import Example
from ..speech import Speaker
from ..values import fill

_SENTENCE_SLOTS = re.compile(r"\{(\w+)\}")
_EXTRACTED = {
    "dates": "date", "amounts": "money", "mails": "mail", "names": "person", "phones": "phone", "links": "link",
    "places": "city",
}  # fmt: skip
_CALLED = {"mails": "mail addresses", "phones": "phone numbers"}
_MOST_MAIN_SENTENCES = 3
_UNANSWERED = 0.25


def _some_text(speaker: Speaker, most: int = 5) -> Document:
    return Writer(speaker).write(some_kind(speaker), most)


def ask(speaker: Speaker) -> Example:
    """A fact that the text states; or one that it does not. The text may stand in an earlier message."""
    made = case(speaker, _UNANSWERED)
    example = _about(speaker, made, "text.answer" if made.is_answered else "text.silent")
    if not made.is_answered:
        return example.replies(speaker.fixed("reply.textsilent"), refuses=True, contains=["does not say"])
    sentence = flat(made.question.told.sentence)
    example.points = [sentence]
    return example.replies(speaker.reply("texttells", sentence=sentence), contains=[sentence])


def _about(speaker: Speaker, made: Case, task: str) -> Example:
    slots = made.question.told.slots
    slots["text"] = made.document.text
    is_from_before = speaker.chance.random() < 0.2
    wrap = speaker.phrase("work.again" if is_from_before else "work.ask")
    example = Example(task, speaker.typed(with_question(wrap, made.question.bare), slots), remembers=True)
    if is_from_before:
        example.chat.add(speaker.typed(speaker.phrase("work.give"), slots), speaker.fixed("reply.given"))
    return example


def give(speaker: Speaker) -> Example:
    """A text, and nothing that is to be done with it."""
    document = _some_text(speaker)
    typed = speaker.typed(speaker.phrase("work.give"), speaker.slots(text=document.text))
    return Example("text.given", typed).replies(speaker.fixed("reply.given"), contains=["about this text"])


def extract(speaker: Speaker) -> Example:
    """All dates, amounts, and so on, each on a line of its own, in the order of the text."""
    wanted = speaker.chance.choice(list(_EXTRACTED))
    sentences, found = [], []
    for _ in range(speaker.chance.randint(1, 6)):
        phrase = speaker.phrase_or_seen("extract.sentences")
        slots = speaker.slots()
        sentences.append(fill(phrase, slots))
        names = dict.fromkeys(_SENTENCE_SLOTS.findall(phrase))
        found += [slots[name] for name in names if name.rstrip("2") == _EXTRACTED[wanted]]
    text = speaker.chance.choice((" ", " ", "\n")).join(sentences)
    example = Example("extract", speaker.ask(f"extract.{wanted}", text=text))
    if not found:
        reply = speaker.reply("noextract", wanted=_CALLED.get(wanted, wanted))
        return example.replies(reply, refuses=True, contains=["There are no"])
    reply = "\n".join(f"- {value}" for value in dict.fromkeys(found))
    return example.replies(reply, exact=reply)


def shorten(speaker: Speaker) -> Example:
    """The first sentences that say something."""
    document = _some_text(speaker, 7)
    typed = speaker.ask("shorten", text=document.text)
    main = [ended(flat(sentence)) for sentence in document.sentences[:_MOST_MAIN_SENTENCES]]
    return Example("shorten", typed).replies(" ".join(main), contains=main[:1])


def list_points(speaker: Speaker) -> Example:
    """All that the text states, as a list."""
    document = _some_text(speaker, 7)
    reply = "\n".join("- " + flat(sentence) for sentence in document.sentences)
    return Example("points", speaker.ask("points", text=document.text)).replies(reply, exact=reply)


def list_items(speaker: Speaker) -> Example:
    """What is enumerated in a line, each on a line of its own."""
    chance, values = speaker.chance, speaker.values
    kinds = ("item", "ingredient", "person", "city", "invented", "food", "company", "hobby", "thing", "name")
    kind = chance.choice(kinds)
    items = list(dict.fromkeys(values.make(kind) for _ in range(chance.randint(2, 9))))
    last = chance.choice((" and ", ", and ", ", ", "; "))
    between = "; " if last == "; " else ", "
    text = last.join((between.join(items[:-1]), items[-1])) if len(items) > 1 else items[0]
    reply = "\n".join("- " + item for item in items)
    return Example("items", speaker.ask("items", text=text)).replies(reply, exact=reply)


def pick_sentence(speaker: Speaker) -> Example:
    """The first or the last sentence."""
    place = speaker.chance.choice(("first", "last"))
    sentences = [ended(flat(sentence)) for sentence in _some_text(speaker).sentences]
    reply = sentences[0 if place == "first" else -1]
    typed = speaker.ask(f"pick.{place}", text=" ".join(sentences))
    return Example("pick", typed).replies(reply, exact=reply)


TASKS = {
    "text": ((ask, 12), (give, 1)),
    "extract": ((extract, 1),),
    "shorten": ((shorten, 1),),
    "list": ((list_points, 3), (list_items, 3), (pick_sentence, 1)),
}
