# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Questions about an attached image, whose text or barcodes a tool reads."""

from ..documents.asking import flat, with_question
from ..documents.cases import case
from ..example import Example
from ..pictures import MARKS, Picture, barcode, picture
from ..program import BARCODES, OUTPUTS, TEXT, selected_tools
from ..speech import PHRASES, Speaker

_ASKED = sorted(mark for mark in MARKS if f"image.ask.{mark}" in PHRASES)
_UNANSWERED = 0.25
# Of these a text has at most one, and it is marked, so that a text without the mark does not tell.
_CLEAR = ("phone", "mail", "website", "seat", "password", "tracking", "dose", "weight", "expiry", "invoice", "table")


def _example(task: str, typed: str) -> Example:
    example = Example(task, typed)
    example.chat.has_image = True
    return example


def _asked(speaker: Speaker, phrase: str, tool: str) -> str:
    for _ in range(20):
        typed = speaker.typed(phrase, speaker.slots())
        if tool in selected_tools(typed, True, []):
            return typed
    return phrase.format_map(speaker.slots())


def _question(speaker: Speaker, mark: str) -> str:
    bare = speaker.phrase(f"image.ask.{mark}")
    return _asked(speaker, with_question(speaker.phrase("image.wrap"), bare), TEXT)


def read_all(speaker: Speaker) -> Example:
    """The whole text of the image; or that there is none."""
    typed = _asked(speaker, speaker.phrase("image.all"), TEXT)
    draw = speaker.chance.random()
    if draw < 0.1:
        example = _example("image.nothing", typed).calls(TEXT, OUTPUTS[TEXT])
        return example.replies(speaker.fixed("reply.imagenothing"), refuses=True, contains=["no text"])
    if draw < 0.13:
        example = _example("image.nothing", typed).calls(TEXT, OUTPUTS["unreadable"])
        return example.replies(speaker.fixed("reply.unreadable"), refuses=True, contains=["could not read the image"])
    text = picture(speaker).text
    reply = speaker.reply("imagetext", text=text)
    return _example("image.text", typed).calls(TEXT, text).replies(reply, contains=[text])


def read_line(speaker: Speaker) -> Example:
    """The line that was asked for; or that there is no such line."""
    image = picture(speaker)
    if speaker.chance.random() < 0.2:
        return _missing(speaker, image)
    known = [mark for mark in image.marked if mark in _ASKED]
    if not known:
        return read_all(speaker)
    mark = speaker.chance.choice(known)
    answer = image.marked[mark]
    example = _example("image.line", _question(speaker, mark)).calls(TEXT, image.text)
    return example.replies(answer, contains=[answer])


def read_fact(speaker: Speaker) -> Example:
    """A fact on a page that was photographed; or one that it does not state."""
    made = case(speaker, _UNANSWERED)
    slots = made.question.told.slots
    for _ in range(20):
        typed = speaker.typed(with_question(speaker.phrase("image.wrap"), made.question.bare), slots)
        if selected_tools(typed, True, []) == [TEXT]:
            break
    else:
        return read_fact(speaker)
    example = _example("image.fact" if made.is_answered else "image.unknown", typed)
    example.calls(TEXT, made.document.text)
    if not made.is_answered:
        return example.replies(speaker.fixed("reply.imageunknown"), refuses=True, contains=["nothing about that"])
    sentence = flat(made.question.told.sentence)
    return example.replies(sentence, contains=[sentence])


def _missing(speaker: Speaker, image: Picture) -> Example:
    mark = speaker.chance.choice([mark for mark in _CLEAR if mark not in image.marked])
    example = _example("image.unknown", _question(speaker, mark)).calls(TEXT, image.text)
    return example.replies(speaker.fixed("reply.imageunknown"), refuses=True, contains=["nothing about that"])


def read_codes(speaker: Speaker) -> Example:
    """What a barcode holds, or of which type it is; or that there is none."""
    chance = speaker.chance
    asks_kind = chance.random() < 0.15
    typed = _asked(speaker, speaker.phrase("code.kind" if asks_kind else "code.what"), BARCODES)
    draw = chance.random()
    if draw < 0.12:
        example = _example("barcode.nothing", typed).calls(BARCODES, OUTPUTS[BARCODES])
        return example.replies(speaker.fixed("reply.nocode"), refuses=True, contains=["no barcode"])
    codes = [barcode(chance, speaker.values) for _ in range(1 if draw < 0.85 or asks_kind else chance.randint(2, 4))]
    lines = "\n".join(f"{kind}:\n{text}" if "\n" in text else f"{kind}: {text}" for kind, text in codes)
    example = _example("barcode", typed).calls(BARCODES, lines)
    kind, content = codes[0]
    if asks_kind:
        return example.replies(speaker.reply("codekind", type=kind), contains=[kind])
    if len(codes) > 1:
        reply = speaker.reply("codes", count=str(len(codes)), lines=lines)
    else:
        reply = speaker.reply("longcode" if "\n" in content else "code", type=kind, content=content)
    return example.replies(reply, contains=[text for _, text in codes])


def look(speaker: Speaker) -> Example:
    """What no tool of the program can do: see what a picture shows. Or a line of it, without a word for its tool."""
    asks_for_line = speaker.chance.random() < 0.25
    while True:
        typed = speaker.ask(f"image.ask.{speaker.chance.choice(_ASKED)}" if asks_for_line else "image.look")
        if not selected_tools(typed, True, []):
            break
    example = _example("image.look", typed)
    return example.replies(speaker.fixed("reply.cannotsee"), refuses=True, contains=["cannot see what a picture shows"])


def follow_up(speaker: Speaker) -> Example:
    """A line of an image whose text was read before."""
    while True:
        image = picture(speaker)
        known = [mark for mark in image.marked if mark in _ASKED]
        if not known:
            continue
        mark = speaker.chance.choice(known)
        typed = speaker.ask(f"image.ask.{mark}")
        if not selected_tools(typed, True, []):
            break
    example = Example("followup", typed, remembers=True)
    question = _asked(speaker, speaker.phrase("image.all"), TEXT)
    example.chat.add(question, speaker.reply("imagetext", text=image.text), has_image=True)
    return example.replies(image.marked[mark], contains=[image.marked[mark]])


def no_image(speaker: Speaker) -> Example:
    """A question about an image where none is attached."""
    example = Example("image.none", speaker.ask("image.none"))
    example.needs_no_image = True
    return example.replies(speaker.fixed("reply.noimage"), refuses=True, contains=["no image in this chat"])


TASKS = {
    "image": ((read_all, 4), (read_line, 6), (read_fact, 3)),
    "barcode": ((read_codes, 1),),
    "image.look": ((look, 3), (no_image, 2)),
    "followup": ((follow_up, 1),),
}
