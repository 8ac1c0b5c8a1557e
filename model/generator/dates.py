# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Points in time as the date tool tells them, in the full form of many locales."""

import random
from dataclasses import dataclass
from datetime import date

from .textfiles import FOLDER, sections


@dataclass
class Moment:
    """date, time, weekday, month, year: these parts of the text, as they stand in it; time: without the seconds."""

    text: str
    date: str
    time: str
    weekday: str
    month: str
    year: str
    zone: str
    is_english: bool


class Locale:
    """How one locale writes a date in full. Its patterns have slots for the parts."""

    def __init__(self, name: str, entries: dict[str, str]):
        self.name = name
        self.pattern = entries["pattern"]
        self.date = entries["date"]
        self.time = entries["time"]
        self.weekdays = entries["weekdays"].split(", ")
        self.months = entries["months"].split(", ")
        self.zones = entries["zones"].split("; ")
        self.halves = entries["halves"].split(", ")

    def moment(self, chance: random.Random) -> Moment:
        day = date(chance.randint(2024, 2039), chance.randint(1, 12), chance.randint(1, 28))
        return self.at(day, chance.randint(0, 86_399), chance.choice(self.zones))

    def at(self, day: date, second: int, zone: str) -> Moment:
        """second: of the day."""
        hour = second // 3600
        parts = {
            "weekday": self.weekdays[day.weekday()],
            "month": self.months[day.month - 1],
            "number": day.month,
            "day": day.day,
            "year": day.year,
            "hour": hour,
            "hour12": (hour + 11) % 12 + 1,
            "half": self.halves[hour // 12],
            "minute": second // 60 % 60,
        }
        whole = self.pattern.format(**parts, second=second % 60, zone=zone)
        return Moment(
            text=whole,
            date=self.date.format(**parts),
            time=self.time.format(**parts),
            weekday=parts["weekday"],
            month=parts["month"],
            year=str(day.year),
            zone=zone,
            is_english=self.name.startswith("en") or self.name == "C",
        )


def _locales() -> dict[str, Locale]:
    entries = {
        name: dict(line.split(" = ", 1) for line in lines) for name, lines in sections(FOLDER / "words" / "locales.txt")
    }
    return {name: Locale(name, entries["C"] | own) for name, own in entries.items()}


LOCALES = _locales()
ENGLISH = [locale for name, locale in LOCALES.items() if name.startswith("en") or name == "C"]


def moment(chance: random.Random) -> Moment:
    """A moment, three times out of four in an English locale."""
    locales = ENGLISH if chance.random() < 0.75 else list(LOCALES.values())
    return chance.choice(locales).moment(chance)
