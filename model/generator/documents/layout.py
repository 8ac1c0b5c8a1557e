# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""How the sentences of a document are put on the page."""

import random
from textwrap import wrap


def lay_out(chance: random.Random, sentences: list[str], heading: str) -> str:
    """As prose, as lines or as a list."""
    body = _body(chance, sentences)
    if not heading:
        return body
    return chance.choice(("", "", "# ", "## ")) + heading + chance.choice(("\n\n", "\n")) + body


def _body(chance: random.Random, sentences: list[str]) -> str:
    draw = chance.random()
    if draw < 0.5:
        return _prose(chance, [sentence if sentence[-1] in ".!?" else sentence + "." for sentence in sentences])
    if draw < 0.64:
        return "\n".join(sentences)
    if draw < 0.82:
        mark = chance.choice(("- ", "* ", "• ", "– "))
        return "\n".join(mark + sentence for sentence in sentences)
    if draw < 0.9:
        return "\n".join(f"{number}. {sentence}" for number, sentence in enumerate(sentences, 1))
    return "\n\n".join(sentences)


def _prose(chance: random.Random, sentences: list[str]) -> str:
    """Paragraphs, one time in four with lines of a fixed width, as in the text of a PDF."""
    paragraphs, rest = [], list(sentences)
    while rest:
        length = chance.randint(1, 5)
        paragraphs.append(" ".join(rest[:length]))
        rest = rest[length:]
    if chance.random() < 0.25:
        width = chance.randint(44, 90)
        paragraphs = [
            "\n".join(wrap(text, width, break_long_words=False, break_on_hyphens=False)) for text in paragraphs
        ]
    return chance.choice(("\n\n", "\n\n", "\n")).join(paragraphs)
