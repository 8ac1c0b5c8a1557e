# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Structured answers: a title, a summary, key points and next steps, from the same sources as any other answer."""

import re
from collections.abc import Callable

from ..documents.asking import ended, flat
from ..documents.writing import Writer, some_kind
from ..example import Example
from ..speech import Speaker
from ..values import capital
from . import dating, declining, recalling, searching, seeing, talking, working

_LONGEST_TITLE = 7  # words
_MOST_POINTS = 4
# Where the subject of a sentence ends.
_VERB = re.compile(
    r"\b(is|are|was|were|has|have|had|must|may|can|will|should|needs?|cost|costs|ends?|expires?|starts?|begins?|takes?"
    r"|lives?|works?|runs?|leads?|manages|opens?|closes?|belongs?|broke|came|appeared|weighs|holds|pays?|makes?|made)\b"
)

_TITLES = {
    "date": "Date and time", "search.nothing": "Nothing found", "image.text": "Text of the image",
    "image.line": "From the image", "image.nothing": "No text found", "image.unknown": "Nothing found",
    "barcode": "Code in the image", "barcode.nothing": "No barcode found", "recall": "From this chat",
    "recall.unknown": "Not in this chat", "text.answer": "From your text", "text.silent": "Not in the text",
    "refuse": "More than I can do", "refuse.near": "More than I can do", "image.look": "Pictures",
    "image.none": "No image yet", "search.nodocuments": "No documents yet", "date.notool": "Date and time",
    "help": "About Lumora", "talk": "Lumora",
    "unknown": "Not in this chat", "followup": "From the image",
}  # fmt: skip
_NEXT_STEPS = {
    "search.nothing": "Ask in other words, or add the document that says it.",
    "search.nodocuments": "Add a document with the plus sign at the side.",
    "image.none": "Attach an image with the paper clip.",
    "image.look": "Ask me to read the text in the image.",
    "image.nothing": "Attach a sharper image.",
    "barcode.nothing": "Attach a sharper image.",
    "refuse": "Add a larger model to the folder ~/.local/share/Lumora/Models.",
    "refuse.near": "Add a larger model to the folder ~/.local/share/Lumora/Models.",
}


def subject_of(sentence: str) -> str:
    """What a sentence is about: its words before the verb or the colon, as a title."""
    head = re.split(r"[:,;(]", sentence)[0]
    if verb := _VERB.search(head, 1):
        head = head[: verb.start()]
    words = head.split()[:_LONGEST_TITLE]
    return capital(" ".join(words).strip(" .!?–-"))


def _card(title: str, summary: str, points: list[str], steps: list[str]) -> dict:
    return {"title": title, "summary": summary, "keyPoints": points, "nextSteps": steps}


def _fill(example: Example, card: dict) -> Example:
    return example.answers(
        card, title=card["title"], summary=[card["summary"]], points=card["keyPoints"], steps=card["nextSteps"]
    )


def paragraph(speaker: Speaker) -> Example:
    """A text that the user gives, as a card."""
    writer = Writer(speaker)
    kind = some_kind(speaker)
    slots = writer.new_slots(kind)
    document = writer.write(kind, 6, slots=slots)
    typed = speaker.ask(speaker.chance.choice(("shorten", "points", "card")), text=document.text)
    sentences = [ended(flat(sentence)) for sentence in document.sentences]
    title = document.heading or subject_of(sentences[0])
    example = Example("card.text", typed)
    return _fill(example, _card(title, sentences[0], sentences[:_MOST_POINTS], document.steps))


def document_card(speaker: Speaker) -> Example:
    """An answer from a document, or what one says."""
    example = (searching.answer if speaker.chance.random() < 0.8 else searching.sum_up)(speaker)
    if example.task == "search.nothing":
        return _plain(example)
    source = "Source: " + example.expect.pop("cites")
    example.take_reply_back()
    title = capital(example.subject)
    points = example.points + [source]
    return _fill(example, _card(title, example.points[0], points, []))


def image_card(speaker: Speaker) -> Example:
    """The text of an image: its first line, and its lines."""
    example = seeing.read_all(speaker)
    if example.task != "image.text":
        return _plain(example)
    text = example.turns[-2]["output"]
    lines = [line for line in text.split("\n") if line]
    example.take_reply_back()
    return _fill(example, _card(_TITLES["image.text"], lines[0], lines[:_MOST_POINTS], []))


def plain(speaker: Speaker) -> Example:
    """Any other answer: it is the summary."""
    makers: tuple[Callable[[Speaker], Example], ...] = (
        dating.part, dating.part, seeing.read_line, seeing.read_codes, seeing.look, seeing.no_image, recalling.recall,
        working.ask, working.ask, declining.refuse, declining.refuse, declining.refuse_near_tool,
        declining.date_without_tool, declining.without_documents, talking.explain, talking.talk,
    )  # fmt: skip
    return _plain(speaker.chance.choice(makers)(speaker))


def _plain(example: Example) -> Example:
    task = example.task
    summary = example.take_reply_back()
    steps = [_NEXT_STEPS[task]] if task in _NEXT_STEPS else []
    points = example.points[:1]
    return _fill(example, _card(_TITLES[task], summary, points, steps))


TASKS = {"card": ((paragraph, 5), (document_card, 4), (image_card, 2), (plain, 5))}
