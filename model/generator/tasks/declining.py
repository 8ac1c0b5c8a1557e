# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""What the model cannot do, and says so; also where the program has not offered the tool that it would take."""

from ..documents.writing import some_kind
from ..example import Example
from ..program import DATE, SEARCH, TEXT, selected_tools
from ..speech import PHRASES, Speaker
from ..values import Slots

_NEAR_TOOLS = {"refuse.date": DATE, "refuse.document": SEARCH, "refuse.image": TEXT}
_REFUSALS = [name for name in PHRASES if name.startswith("refuse.") and name not in _NEAR_TOOLS]


def refuse(speaker: Speaker) -> Example:
    """What a small model neither knows nor does."""
    example = Example("refuse", speaker.ask(speaker.chance.choice(_REFUSALS)))
    return example.replies(speaker.fixed("reply.refuse"), refuses=True, contains=["larger model"])


def refuse_near_tool(speaker: Speaker) -> Example:
    """The same, but a word of it makes the program offer a tool."""
    intent = speaker.chance.choice(list(_NEAR_TOOLS))
    example = Example("refuse.near", speaker.ask(intent))
    example.chat.has_image = _NEAR_TOOLS[intent] == TEXT
    if _NEAR_TOOLS[intent] == SEARCH:
        example.chat.documents = [speaker.values.name() + ".pdf"]
    return example.replies(speaker.fixed("reply.refuse"), refuses=True, contains=["larger model"])


def date_without_tool(speaker: Speaker) -> Example:
    """The date or the time, asked for without a word that makes the program offer its tool, or with a slip in it."""
    typed = speaker.ask("asktime")
    while DATE in selected_tools(typed, False, []):
        typed = speaker.ask("asktime")
    if speaker.chance.random() < 0.25:
        typed = _slipped_date(speaker) or typed
    example = Example("date.notool", typed)
    return example.replies(speaker.fixed("reply.askdate"), refuses=True, contains=["today's date"])


def _slipped_date(speaker: Speaker) -> str | None:
    for _ in range(12):
        typed = speaker.with_slips(speaker.phrase(speaker.chance.choice(("date.date", "date.time"))))
        if DATE not in selected_tools(typed, False, []):
            return typed
    return None


def unknown_fact(speaker: Speaker) -> Example:
    """A fact that the user never told, asked for without a word that makes the program offer the search."""
    while True:
        kind = some_kind(speaker)
        fact = speaker.chance.choice(kind.facts)
        phrase = fact.questions.pick_or_seen(speaker.chance, speaker.split)
        typed = speaker.typed(phrase, Slots(speaker.values, kind.slots))
        if not selected_tools(typed, True, ["-"]):
            break
    example = Example("unknown", typed, remembers=True)
    return example.replies(speaker.fixed("reply.nottold"), refuses=True, contains=["not told me"])


def without_documents(speaker: Speaker) -> Example:
    """A question about documents where there are none."""
    kind = some_kind(speaker)
    fact = speaker.chance.choice(kind.facts)
    bare = fact.questions.pick_or_seen(speaker.chance, speaker.split)
    wrap = speaker.phrase("search.wrap")
    phrase = wrap.replace("{question}", bare).replace("{ask}", bare if bare[0] == "{" else bare[0].lower() + bare[1:])
    example = Example("search.nodocuments", speaker.typed(phrase, Slots(speaker.values, kind.slots)))
    example.needs_no_documents = True
    return example.replies(speaker.fixed("reply.nodocuments"), refuses=True, contains=["not added a document"])


TASKS = {
    "refuse": ((refuse, 4), (refuse_near_tool, 2)),
    "notool": ((date_without_tool, 1), (without_documents, 1), (unknown_fact, 1)),
}
