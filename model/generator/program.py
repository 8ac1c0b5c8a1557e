# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""What the program sends to its model: its fixed texts, the layout of a prompt, and when it offers which tool.

The texts come from requests.json, which a test of the program writes from the program's own code.
"""

import json
from dataclasses import dataclass, field
from pathlib import Path

_FILE = json.loads((Path(__file__).parent.parent / "requests.json").read_text(encoding="utf-8"))

INSTRUCTIONS: str = _FILE["instructions"]
ANSWER_SCHEMA: str = _FILE["schema"]
TOOLS: dict[str, dict] = {
    tool["name"]: {key: tool[key] for key in ("name", "description", "schema")} for tool in _FILE["tools"]
}
KEYWORDS: dict[str, list[str]] = {tool["name"]: tool["keywords"] for tool in _FILE["tools"]}
OUTPUTS: dict[str, str] = _FILE["outputs"]

DATE, BARCODES, TEXT, SEARCH = "currentDate", "readBarcodes", "readText", "searchDocuments"


def _layout() -> dict[str, str]:
    """The literals around the messages of the sample prompt, in which %1 to %4 stand for messages."""
    opening, rest = _FILE["prompt"].split("%1")
    answer, rest = rest.split("%2")
    question, rest = rest.split("%3")
    latest, closing = rest.split("%4")
    separator = answer[: answer.index("Assistant")]
    header, user = opening.split(separator)
    image_marker, latest = latest.split(separator)
    return {
        "header": header + separator,
        "User": user,
        "Assistant": answer.removeprefix(separator),
        "separator": separator,
        "image": image_marker,
        "latest": latest,
        "closing": closing,
        "structured": _FILE["structuredPrompt"].removeprefix(_FILE["prompt"]),
        "attached": _FILE["structuredImagePrompt"].removeprefix(_FILE["structuredPrompt"]),
    }


LAYOUT = _layout()


def selected_tools(typed: str, has_image: bool, documents: list[str]) -> list[str]:
    """The names of the tools that the program offers for a typed text."""
    text = typed.lower()

    def calls_for(tool: str) -> bool:
        return any(keyword in text for keyword in KEYWORDS[tool])

    tools = [DATE] if calls_for(DATE) else []
    if has_image and calls_for(BARCODES):
        tools.append(BARCODES)
    elif has_image and calls_for(TEXT):
        tools.append(TEXT)
    if documents and (calls_for(SEARCH) or any(name.lower() in text for name in documents)):
        tools.append(SEARCH)
    return tools


@dataclass
class Message:
    role: str  # "User" or "Assistant"
    text: str
    has_image: bool = False


@dataclass
class Chat:
    """What surrounds the latest message. has_image: this message or an earlier one came with an image."""

    history: list[Message] = field(default_factory=list)
    has_image: bool = False
    documents: list[str] = field(default_factory=list)

    def add(self, question: str, answer: str, has_image: bool = False) -> None:
        self.history += [Message("User", question, has_image), Message("Assistant", answer)]
        self.has_image = self.has_image or has_image

    def prompt(self, typed: str, structured: bool) -> str:
        text = ""
        if self.history:
            lines = (
                LAYOUT[message.role] + message.text + (LAYOUT["image"] if message.has_image else "")
                for message in self.history
            )
            text = LAYOUT["header"] + LAYOUT["separator"].join(lines) + LAYOUT["separator"]
        text += LAYOUT["latest"] + typed + LAYOUT["closing"]
        if structured:
            text += LAYOUT["structured"]
        return text + (LAYOUT["attached"] if self.has_image else "")


# What most training examples are told in place of the whole texts, which cost as many tokens as all the rest.
_SHORT_INSTRUCTIONS = "You are a helpful desktop assistant."
_SHORT_DESCRIPTIONS = {
    DATE: "Get the current local date and time.",
    BARCODES: "Barcode reader: read the barcodes and QR codes in the attached image.",
    TEXT: "OCR: read the text in the attached image.",
    SEARCH: "Search the user's imported local documents.",
}


def request(chat: Chat, typed: str, structured: bool, whole: bool) -> dict:
    """The request for the next reply. whole: with the instructions and descriptions that the program sends."""
    tools = []
    for name in selected_tools(typed, chat.has_image, chat.documents):
        tool = TOOLS[name]
        tools.append(tool if whole else {"name": name, "description": _SHORT_DESCRIPTIONS[name], "schema": "{}"})
    prompt = chat.prompt(typed, structured)
    if structured and not whole:
        prompt = prompt.replace(ANSWER_SCHEMA, "{}")
    return {
        "instructions": INSTRUCTIONS if whole else _SHORT_INSTRUCTIONS,
        "tools": tools,
        "prompt": prompt,
        "schema": ANSWER_SCHEMA if structured else None,
    }


def json_text(value) -> str:
    """JSON in the form that the service's grammars yield: one blank after each colon and comma."""
    return json.dumps(value, ensure_ascii=False)


def call(tool: str, **arguments: str) -> str:
    return json_text({"tool": tool, "arguments": arguments})
