# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""How often each task is drawn, and the stages of the curriculum."""

import random
from collections.abc import Callable

from .example import Example
from .speech import Speaker
from .surroundings import surround
from .tasks import copying, dating, declining, recalling, searching, seeing, structuring, talking, working

Maker = Callable[[Speaker], Example]

TASKS: dict[str, tuple[tuple[Maker, float], ...]] = {}
for module in (copying, dating, declining, recalling, searching, seeing, structuring, talking, working):
    TASKS |= module.TASKS

# Shares of the whole mix; they need not add up to anything.
ALL = {
    "copy": 5, "drill.copy": 2, "drill.lookup": 3, "date": 9, "search": 28, "recall": 11, "image": 15, "barcode": 6,
    "image.look": 3, "talk": 3, "help": 5,
    "refuse": 10, "notool": 3, "text": 9, "extract": 4, "shorten": 2, "list": 5, "followup": 3,
    "card": 12,
}  # fmt: skip
COPY = {"copy": 3, "drill.copy": 5, "drill.lookup": 4}
SHORT = {
    "copy": 4, "drill.copy": 3, "drill.lookup": 3, "date": 10, "recall": 10, "search": 6, "image": 8, "barcode": 6,
    "image.look": 2, "talk": 2, "help": 3,
    "refuse": 6, "notool": 2, "text": 5, "extract": 4, "shorten": 2, "list": 5,
}  # fmt: skip
STAGES = {"copy": COPY, "short": SHORT, "all": ALL}

LONGEST = 4200  # characters of an example, without the fixed texts
LONGEST_OF_STAGE = {"copy": 700, "short": 1100, "all": LONGEST}


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
            if self._has_surroundings:
                surround(self.speaker, example, self._make)
            if example.length() <= self._longest:
                return example

    def _make(self, task: str) -> Example:
        makers = TASKS[task]
        if len(makers) == 1:
            return makers[0][0](self.speaker)
        return self.speaker.chance.choices(makers, [weight for _, weight in makers])[0][0](self.speaker)
