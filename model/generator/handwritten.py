# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Examples that were written by hand, without the grammar: what somebody might ask on a first day."""

import random

from .documents.search import output
from .documents.writing import Document
from .example import Example
from .program import BARCODES, DATE, OUTPUTS, SEARCH, TEXT
from .speech import PHRASES
from .textfiles import FOLDER, sections

_EXPECTED = ("contains", "exact", "cites", "argument_contains")
_LISTS = ("contains", "argument_contains")


class _Case:
    """The lines of a section: KEY VALUE, and text behind "|", which belongs to the key before it."""

    def __init__(self, lines: list[str]):
        self.entries: list[list[str]] = []
        for line in lines:
            if line[0] == "|":
                entry = self.entries[-1]
                entry[1] += ("\n" if entry[1] else "") + line[1:].removeprefix(" ")
            else:
                key, _, value = line.partition(" ")
                self.entries.append([key, value])

    def all(self, key: str) -> list[str]:
        return [entry[1] for entry in self.entries if entry[0] == key]

    def one(self, key: str) -> str:
        return self.all(key)[0]


def _documents(texts: list[str]) -> list[Document]:
    """Each begins with its title in a line of its own."""
    parts = (text.partition("\n") for text in texts)
    return [Document(title.strip(), None, [], text, "", []) for title, _, text in parts]


def _example(task: str, case: _Case, library: list[Document]) -> Example:
    example = Example(task, case.one("typed"))
    for question, answer in zip(case.all("asked"), case.all("answered")):
        example.chat.add(question, answer)
    example.chat.has_image = any(case.all(key) for key in ("image", "code", "picture"))
    if case.all("library") or case.all("search"):
        example.chat.documents = [document.title for document in library]
    if case.all("now"):
        example.calls(DATE, case.one("now"), question=example.typed)
    elif case.all("search"):
        phrase = case.one("search")
        chosen = [document for document in library if document.title in case.one("found").split("; ")]
        example.calls(SEARCH, output(chosen, phrase), query=phrase)
    elif case.all("image"):
        example.calls(TEXT, case.one("image") or OUTPUTS[TEXT])
    elif case.all("code"):
        example.calls(BARCODES, case.one("code") or OUTPUTS[BARCODES])
    expect = {key: case.all(key) if key in _LISTS else case.one(key) for key in _EXPECTED if case.all(key)}
    if case.all("refuses"):
        expect["refuses"] = True
    return example.replies(_reply(case), **expect)


def _reply(case: _Case) -> str:
    """As it was written; or one of the model's own."""
    if case.all("reply"):
        return case.one("reply")
    text = case.one("image") if case.all("image") else ""
    return PHRASES[f"reply.{case.one('says')}"].pick_any(random.Random(0)).format(text=text)


def examples() -> list[Example]:
    found, library = [], []
    for task, lines in sections(FOLDER / "words" / "handwritten.txt"):
        case = _Case(lines)
        if task == "library":
            library = _documents(case.all("document"))
        else:
            found.append(_example(task, case, library))
    return found
