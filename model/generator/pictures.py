# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Images as the text recognition reads them, and the contents of barcodes."""

import random
import re
from dataclasses import dataclass

from .grammar import expand, parse
from .splits import SPLITS, TRAIN, split_of
from .speech import Speaker
from .textfiles import FOLDER, sections
from .values import Slots, Values

_MARK = re.compile(r"<(\w+)>\s*")


@dataclass
class Line:
    mark: str
    is_optional: bool
    is_repeated: bool
    words: list  # a sequence of the grammar


@dataclass
class Picture:
    """text: as it was read. marked: what can be asked for, by its name, as it stands there."""

    kind: str
    text: str
    marked: dict[str, str]


def _line(text: str) -> Line:
    mark = _MARK.match(text)
    text = text[mark.end() :] if mark else text
    sign = text[0] if text[:2] in ("? ", "* ") else ""
    return Line(mark[1] if mark else "", sign == "?", sign == "*", parse(text[2:] if sign else text))


KINDS = {
    name.removeprefix("image "): [_line(text) for text in lines]
    for name, lines in sections(FOLDER / "words" / "images.txt")
}
OF_SPLIT = {split: [kind for kind in KINDS if split_of(f"image {kind}") == split] for split in SPLITS}
MARKS = {line.mark for lines in KINDS.values() for line in lines if line.mark}


def picture(speaker: Speaker) -> Picture:
    """An image with text. Half of those of the held-out splits are of kinds that training never sees."""
    chance = speaker.chance
    kinds = OF_SPLIT[speaker.split]
    if speaker.split != TRAIN and (not kinds or chance.random() < 0.5):
        kinds = OF_SPLIT[TRAIN]
    kind = chance.choice(kinds)
    slots = speaker.slots()
    lines: list[tuple[str, str]] = []
    for line in KINDS[kind]:
        if line.is_optional and chance.random() < 0.5:
            continue
        for _ in range(chance.randint(1, 5) if line.is_repeated else 1):
            values = speaker.slots() if line.is_repeated else slots
            lines.append((line.mark, expand(line.words, chance).format_map(values)))
    return _as_read(chance, kind, lines)


def _as_read(chance: random.Random, kind: str, lines: list[tuple[str, str]]) -> Picture:
    """With the errors of a recognition, one image in three, and in capitals or with gaps between paragraphs."""
    mistakes = 0.02 if chance.random() < 0.35 else 0.0
    draw = chance.random()
    marked: dict[str, str] = {}
    text = ""
    for mark, line in lines:
        line = line.replace("\t", chance.choice((" ", "  ", " . . . ")))
        if draw < 0.06:
            line = line.upper()
        line = misread(line, chance, mistakes)
        if mark:
            marked[mark] = f"{marked[mark]}\n{line}" if mark in marked else line
        goes_on = mark and "\n" in marked[mark]
        between = "\n\n" if 0.06 < draw < 0.4 and not goes_on and chance.random() < 0.3 else "\n"
        text += between + line if text else line
    return Picture(kind, text, marked)


_CONFUSED = {
    "0": "O", "O": "0", "1": "l", "l": "1", "I": "l", "5": "S", "S": "5", "8": "B", "m": "rn", "e": "c", "a": "o",
}  # fmt: skip


def misread(text: str, chance: random.Random, share: float) -> str:
    if not share:
        return text
    return "".join(_CONFUSED[sign] if sign in _CONFUSED and chance.random() < share else sign for sign in text)


def barcode(chance: random.Random, values: Values) -> tuple[str, str]:
    """The type of a code, as the reader names it, and its content."""
    draw = chance.random()
    if draw < 0.5:
        kind = "QR Code" if draw < 0.42 else chance.choice(("Aztec", "Data Matrix", "PDF417", "Micro QR Code"))
        return kind, _square_content(chance, values)
    kind = chance.choice(("EAN-13", "EAN-13", "EAN-8", "UPC-A", "UPC-E", "Code 39", "Code 93", "Code 128", "ITF"))
    lengths = {"EAN-13": 13, "EAN-8": 8, "UPC-A": 12, "UPC-E": 8, "ITF": 14}
    if kind in lengths:
        return kind, values.digits(lengths[kind], lengths[kind])
    return kind, values.code()


def _square_content(chance: random.Random, values: Values) -> str:
    draw = chance.random()
    if draw < 0.4:
        return values.link()
    if draw < 0.55:
        return f"WIFI:S:{values.name()}-{values.digits(2, 4)};T:WPA;P:{values.code()};;"
    if draw < 0.7:
        return f"BEGIN:VCARD\nVERSION:3.0\nFN:{values.person()}\nTEL:{values.phone()}\nEMAIL:{values.mail()}\nEND:VCARD"
    if draw < 0.8:
        return chance.choice(("mailto:" + values.mail(), "tel:" + values.phone().replace(" ", "")))
    if draw < 0.9:
        return values.code()
    notes = ("Ticket {code}", "Room {number}, {person}", "Order {code}", "{person}, {code}", "{item} {code}")
    return chance.choice(notes).format_map(Slots(values))
