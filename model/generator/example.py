# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""One example: what the model is asked, what it writes, and how its reply is judged."""

from dataclasses import dataclass, field

from .program import Chat, call, json_text, request


@dataclass
class Example:
    """turns: the model's and the tools', the model's last. expect: see the README of this folder.

    needs_no_…: the reply would be wrong in a chat with an image, or with documents. remembers: it depends on
    what was told before. subject, points: what a structured answer takes its title and its key points from.
    """

    task: str
    typed: str
    turns: list[dict] = field(default_factory=list)
    expect: dict = field(default_factory=dict)
    chat: Chat = field(default_factory=Chat)
    structured: bool = False
    needs_no_image: bool = False
    needs_no_documents: bool = False
    remembers: bool = False
    subject: str = ""
    points: list[str] = field(default_factory=list)

    def calls(self, tool: str, output: str, **arguments: str) -> "Example":
        """The model calls a tool, which answers."""
        self.turns.append({"role": "model", "text": call(tool, **arguments)})
        self.turns.append({"role": "tool", "name": tool, "output": output})
        self.expect["tool"] = tool
        return self

    def asks(self, typed: str) -> "Example":
        """The user's next message, as a prompt of its own. In drills; what is expected is so of the last reply."""
        self.turns.append({"role": "user", "text": Chat().prompt(typed, structured=False)})
        return self

    def replies(self, text: str, **expect) -> "Example":
        self.turns.append({"role": "model", "text": text})
        self.expect.setdefault("tool", None)
        self.expect.update(expect)
        return self

    def answers(self, card: dict, **expect) -> "Example":
        """The reply is a structured answer."""
        self.structured = True
        return self.replies(json_text(card), structured=expect)

    def take_reply_back(self) -> str:
        """Makes room for a reply in another form; the one that was there."""
        self.expect = {key: self.expect[key] for key in ("tool", "argument_contains", "refuses") if key in self.expect}
        self.task = "card." + self.task
        return self.turns.pop()["text"]

    @property
    def is_drill(self) -> bool:
        return self.task.startswith("drill.")

    @property
    def reply(self) -> str:
        return self.turns[-1]["text"]

    def length(self) -> int:
        """Characters of what differs from one example to the other."""
        return (
            len(self.typed)
            + sum(len(message.text) for message in self.chat.history)
            + sum(len(turn.get("text") or turn["output"]) for turn in self.turns)
        )

    def as_json(self, whole: bool) -> str:
        return json_text(
            {
                "task": self.task,
                "request": request(self.chat, self.typed, self.structured, whole),
                "turns": self.turns,
                "expect": self.expect,
            }
        )
