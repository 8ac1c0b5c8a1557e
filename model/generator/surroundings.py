# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""What else there is when a question is asked: earlier messages, an image from before, documents of no concern."""

from collections.abc import Callable

from .documents.writing import Writer, file_name, some_kind
from .example import Example
from .program import Message
from .speech import Speaker

_WITH_HISTORY = 0.25
_WITH_DOCUMENTS = 0.3
_WITH_IMAGE = 0.08
_LONGEST_EARLIER = 700  # characters of an earlier question and its answer
_EARLIER = ("talk", "talk", "help", "date", "search", "search", "refuse", "copy", "image", "barcode", "recall")


def surround(speaker: Speaker, example: Example, make: Callable[[str], Example]) -> None:
    """Adds to the chat of an example what does not change its reply."""
    chance, chat = speaker.chance, example.chat
    if chance.random() < _WITH_HISTORY:
        for _ in range(chance.choice((1, 1, 2, 3))):
            _add_earlier(example, make(chance.choice(_EARLIER)))
    if not chat.has_image and not example.needs_no_image and chance.random() < _WITH_IMAGE:
        chat.history.insert(0, Message("Assistant", speaker.fixed("reply.cannotsee")))
        chat.history.insert(0, Message("User", speaker.ask("image.look"), has_image=True))
        chat.has_image = True
    if not chat.documents and not example.needs_no_documents and chance.random() < _WITH_DOCUMENTS:
        chat.documents = _titles(speaker)


def _add_earlier(example: Example, earlier: Example) -> None:
    if earlier.length() > _LONGEST_EARLIER or (earlier.chat.has_image and example.needs_no_image):
        return
    if example.remembers and earlier.task in ("tell", "recall"):
        return
    reply = "" if earlier.structured else earlier.reply
    messages = [Message("User", earlier.typed, earlier.chat.has_image), Message("Assistant", reply)]
    example.chat.history[:0] = messages
    example.chat.has_image = example.chat.has_image or earlier.chat.has_image


def _titles(speaker: Speaker) -> list[str]:
    writer = Writer(speaker)
    kinds = [some_kind(speaker) for _ in range(speaker.chance.randint(1, 3))]
    return [file_name(speaker, kind, writer.new_slots(kind)) for kind in kinds]
