# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""How often each task is drawn, and the stages of the curriculum."""

import random
from collections.abc import Callable

from .example import Example
from .speech import Speaker
from .surroundings import surround
from .tasks import copying, dating, declining, reading, recalling, searching, seeing, structuring, talking, working

Maker = Callable[[Speaker], Example]

TASKS: dict[str, tuple[tuple[Maker, float], ...]] = {}
for module in (copying, dating, declining, reading, recalling, searching, seeing, structuring, talking, working):
    TASKS |= module.TASKS

# Shares of the whole mix; they need not add up to anything.
ALL = {
    "copy": 3, "drill.copy": 1, "drill.lookup": 4, "drill.read": 8, "date": 9, "search": 28, "recall": 12, "image": 18,
    "barcode": 4,
    "image.look": 3, "talk": 4, "help": 8,
    "refuse": 12, "notool": 3, "text": 9, "extract": 7, "shorten": 2, "list": 5, "followup": 4,
    "card": 13,
}  # fmt: skip
COPY = {"copy": 3, "drill.copy": 5, "drill.lookup": 4}
READING = {
    "drill.lookup": 8, "drill.read": 40, "date": 6, "search": 20, "recall": 8, "image": 6, "barcode": 2,
    "image.look": 1, "talk": 1, "help": 2,
    "refuse": 3, "notool": 1, "text": 12, "extract": 4, "shorten": 2, "list": 4, "followup": 1,
    "card": 6,
}  # fmt: skip
SHORT = {
    "copy": 4, "drill.copy": 3, "drill.lookup": 3, "date": 10, "recall": 10, "search": 6, "image": 8, "barcode": 6,
    "image.look": 2, "talk": 2, "help": 3,
    "refuse": 6, "notool": 2, "text": 5, "extract": 4, "shorten": 2, "list": 5,
}  # fmt: skip
STAGES = {"copy": COPY, "short": SHORT, "reading": READING, "all": ALL}

LONGEST = 4200  # characters of an example, without the fixed texts
LONGEST_OF_STAGE = {"copy": 700, "short": 1100, "reading": 1200, "all": LONGEST}


class Mix:
    """Draws examples of one split. tasks: only these, evenly."""

    def __init__(self, seed: str, split: str, stage: str, tasks: list[str] | None = None):
        self.speaker = Speaker(random.Random(seed), split)
        shares = {task: 1 for task in tasks} if tasks else STAGES[stage]
        self._names = list(shares)
        self._weights = list(shares.values())
        self._longest = LONGEST_OF_STAGE[stage]
        self._has_surroundings = stage != "copy"

    def draw(self) -> Example:
        """An example that is not too long."""
        while True:
            example = self._make(self.speaker.chance.choices(self._names, self._weights)[0])
            if self._has_surroundings and not example.is_drill:
                surround(self.speaker, example, self._make)
            if example.length() <= self._longest:
                return example

    def _make(self, task: str) -> Example:
        makers = TASKS[task]
        if len(makers) == 1:
            return makers[0][0](self.speaker)
        return self.speaker.chance.choices(makers, [weight for _, weight in makers])[0][0](self.speaker)
