# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""What fills the slots of phrasings: people, amounts, dates, codes, and so on.

A slot names its kind: {person}, {money}, {date}. A number behind it makes it another one of the kind, {person2}; a
capital letter at its beginning begins its value with one. {verb_ed} is the participle of {verb}.
"""

import random
import re

from .words import Words

MONTHS = "January February March April May June July August September October November December".split()
WEEKDAYS = "Monday Tuesday Wednesday Thursday Friday Saturday Sunday".split()
_LETTERS = "ABCDEFGHJKLMNPQRSTUVWXYZ"
_SIGNS = "abcdefghijkmnopqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789"
_WORD_LISTS = {
    "thing": "things", "quality": "qualities", "place": "places", "done": "done", "team": "teams", "colour": "colours",
    "food": "foods", "ingredient": "ingredients", "animal": "animals", "job": "jobs", "event": "events",
    "paper": "papers", "fee": "fees", "codename": "codes", "unit": "units", "hobby": "hobbies",
    "instrument": "instruments", "country": "countries", "subject": "subjects",
    "bodypart": "parts of the body", "material": "materials", "plant": "plants", "verb": "verbs", "spouse": "spouses",
    "offspring": "offspring", "role": "roles", "vehicle": "vehicles",
}  # fmt: skip


def capital(text: str) -> str:
    return text[:1].upper() + text[1:]


class Values:
    """Makes values of one split."""

    def __init__(self, chance: random.Random, split: str):
        self.chance = chance
        self.words = Words(chance, split)

    def make(self, kind: str) -> str:
        """A value of this kind. Throws KeyError where there is no such kind."""
        words = _WORD_LISTS.get(kind)
        if words:
            return self.words.pick(words)
        maker = getattr(self, kind, None)
        if maker is None or kind in ("make", "words", "chance"):
            raise KeyError(f"there is no kind of value that is called {kind}")
        return maker()

    def near(self, kind: str, value: str) -> str:
        """Another value of the kind; of two words, mostly one is the same."""
        words = value.split(" ")
        for _ in range(20):
            other = self.make(kind)
            new = other.split(" ")
            if len(words) == len(new) == 2 and self._below(0.7):
                other = f"{words[0]} {new[1]}" if self._below(0.5) else f"{new[0]} {words[1]}"
            if other != value:
                return other
        return self.name()

    def _below(self, share: float) -> bool:
        return self.chance.random() < share

    def digits(self, fewest: int, most: int) -> str:
        length = self.chance.randint(fewest, most)
        return str(self.chance.randint(10 ** (length - 1), 10**length - 1))

    # Names

    def first(self) -> str:
        return self.words.pick("first names") if self._below(0.7) else capital(self.words.invented())

    def last(self) -> str:
        return self.words.pick("last names") if self._below(0.6) else capital(self.words.invented())

    def person(self) -> str:
        return f"{self.first()} {self.last()}"

    def username(self) -> str:
        """As people introduce themselves."""
        return self.first() if self._below(0.5) else self.person()

    def titled(self) -> str:
        return f"{self.chance.choice(('Mr', 'Ms', 'Dr', 'Mrs', 'Professor'))} {self.last()}"

    def city(self) -> str:
        return self.words.pick("cities") if self._below(0.6) else capital(self.words.invented())

    def street(self) -> str:
        if self._below(0.7):
            return self.words.pick("streets")
        return capital(self.words.invented()) + self.chance.choice((" Street", " Road", " Lane", " Avenue", "straße"))

    def address(self) -> str:
        return f"{self.chance.randint(1, 240)} {self.street()}"

    def fulladdress(self) -> str:
        return f"{self.address()}, {self.city()}"

    def company(self) -> str:
        first = self.words.pick("company words") if self._below(0.5) else capital(self.words.invented())
        return f"{first} {self.words.pick('company ends')}"

    def invented(self) -> str:
        return self.words.invented()

    def name(self) -> str:
        """An invented name."""
        return capital(self.words.invented())

    def item(self) -> str:
        """A thing, mostly with a quality that tells it from others."""
        draw = self.chance.random()
        if draw < 0.6:
            return f"{self.words.pick('qualities')} {self.words.pick('things')}"
        if draw < 0.8:
            return self.words.pick("things")
        return f"{self.words.invented()} {self.words.pick('things')}"

    # Numbers

    def number(self) -> str:
        return self.digits(1, 4)

    def small(self) -> str:
        return str(self.chance.randint(2, 30))

    def goals(self) -> str:
        return str(self.chance.randint(0, 5))

    def count(self) -> str:
        return str(self.chance.randint(2, 900))

    def year(self) -> str:
        return str(self.chance.randint(1890, 2039))

    def percent(self) -> str:
        return self.chance.choice(("{}%", "{} percent", "{} %")).format(self.chance.randint(1, 95))

    def money(self) -> str:
        amount = self.chance.randint(1, 9999)
        text = f"{amount:,}" if self._below(0.3) else str(amount)
        if self._below(0.4):
            text += f".{self.chance.randint(0, 99):02d}"
        form = self.chance.choice(("${}", "€{}", "£{}", "{} euros", "{} dollars", "{} EUR", "{} pounds", "{} CHF"))
        return form.format(text)

    def price(self) -> str:
        """As it stands on a receipt."""
        amount = f"{self.chance.randint(0, 60)}.{self.chance.choice(('00', '50', '90', '95', '99', self.digits(2, 2)))}"
        return self.chance.choice(("{}", "{}", "${}", "{} €", "£{}", "{} EUR")).format(amount)

    def bigprice(self) -> str:
        amount = f"{self.chance.randint(4, 2400)}.{self.chance.randint(0, 99):02d}"
        return self.chance.choice(("{}", "{}", "${}", "{} €", "£{}", "{} EUR", "CHF {}")).format(amount)

    def iban(self) -> str:
        country = self.chance.choice(("DE", "FR", "GB", "NL", "ES", "IT", "CH", "AT"))
        return " ".join((country + self.digits(2, 2), self.digits(4, 4), self.digits(4, 4), self.digits(4, 4)))

    def phone(self) -> str:
        draw = self.chance.random()
        if draw < 0.3:
            return f"{self.digits(3, 3)}-{self.digits(3, 3)}-{self.digits(4, 4)}"
        if draw < 0.6:
            return f"+{self.digits(2, 2)} {self.digits(2, 3)} {self.digits(6, 7)}"
        if draw < 0.8:
            return f"0{self.digits(2, 4)} {self.digits(5, 7)}"
        return self.digits(6, 10)

    def code(self) -> str:
        chance = self.chance
        draw = chance.random()
        if draw < 0.35:
            letters = "".join(chance.choice(_LETTERS) for _ in range(chance.randint(1, 4)))
            return letters + chance.choice(("-", "-", "", " ", "/")) + self.digits(2, 6)
        if draw < 0.55:
            return self.digits(4, 10)
        if draw < 0.7:
            return f"{self.digits(2, 4)}-{self.digits(2, 5)}"
        if draw < 0.85:
            return self.words.invented() + self.digits(1, 3)
        return "".join(chance.choice(_SIGNS) for _ in range(chance.randint(5, 10)))

    # Dates and times

    def medicine(self) -> str:
        return capital(self.words.invented(2)) + self.chance.choice(("in", "ol", "ex", "um", "an"))

    def weekday(self) -> str:
        return self.chance.choice(WEEKDAYS)

    def month(self) -> str:
        return self.chance.choice(MONTHS)

    def day(self) -> str:
        day, month = self.chance.randint(1, 28), self.month()
        return self.chance.choice((f"{month} {day}", f"{day} {month}"))

    def date(self) -> str:
        day, month, year = self.chance.randint(1, 28), self.month(), self.chance.randint(1975, 2039)
        draw = self.chance.random()
        if draw < 0.45:
            return f"{month} {day}, {year}"
        if draw < 0.75:
            return f"{day} {month} {year}"
        number = MONTHS.index(month) + 1
        forms = (f"{year}-{number:02d}-{day:02d}", f"{day:02d}.{number:02d}.{year}", f"{number}/{day}/{year}")
        return self.chance.choice(forms)

    def gate(self) -> str:
        return self.chance.choice("ABCDEFGH") + str(self.chance.randint(1, 60))

    def shortdate(self) -> str:
        day, month, year = self.chance.randint(1, 28), self.chance.randint(1, 12), self.chance.randint(2015, 2039)
        forms = (f"{day:02d}.{month:02d}.{year}", f"{month:02d}/{day:02d}/{year}", f"{year}-{month:02d}-{day:02d}",
                 f"{day:02d}/{month:02d}/{year % 100}", f"{day} {MONTHS[month - 1][:3]} {year}")  # fmt: skip
        return self.chance.choice(forms)

    def time(self) -> str:
        hour, minute = self.chance.randint(1, 12), self.chance.choice((0, 15, 30, 45, self.chance.randint(0, 59)))
        draw = self.chance.random()
        if draw < 0.4:
            return f"{hour}:{minute:02d} {self.chance.choice(('AM', 'PM', 'am', 'pm', 'a.m.', 'p.m.'))}"
        if draw < 0.85:
            return f"{self.chance.randint(0, 23)}:{minute:02d}"
        return f"{hour} {self.chance.choice(('am', 'pm', 'o’clock'))}"

    def period(self) -> str:
        unit = self.chance.choice(("days", "weeks", "months", "hours", "minutes", "years"))
        return f"{self.chance.randint(2, 60)} {unit}"

    # The net

    def mail(self) -> str:
        user = self.first().lower() if self._below(0.5) else self.words.invented()
        if self._below(0.5):
            user += self.chance.choice((".", "_", "-", "")) + self.words.invented(1)
        return f"{_plain(user)}@{self.domain()}"

    def domain(self) -> str:
        end = self.chance.choice(("com", "org", "net", "de", "io", "co.uk", "example", "info", "eu"))
        return f"{_plain(self.words.invented())}.{end}"

    def link(self) -> str:
        return f"https://{self.chance.choice(('', 'www.'))}{self.domain()}/{_plain(self.words.invented())}"


def _plain(text: str) -> str:
    return "".join(sign for sign in text if sign.isascii() and (sign.isalnum() or sign in ".-_"))


class Slots(dict):
    """Values by the name of their slot, made when they are first asked for. For str.format_map.

    kinds: what kind of value a slot holds whose name does not say it.
    """

    def __init__(self, values: Values, kinds: dict[str, str] | None = None, **known: str):
        super().__init__(known)
        self._values = values
        self._kinds = kinds or {}

    def __missing__(self, slot: str) -> str:
        if slot[0].isupper():
            return capital(self[slot[0].lower() + slot[1:]])
        if slot.startswith("verb"):
            return self._verb(slot.removesuffix("_ed"), slot.endswith("_ed"))
        value = self._values.make(self._kinds.get(slot) or slot.rstrip("0123456789"))
        self[slot] = value
        return value

    def _verb(self, slot: str, is_participle: bool) -> str:
        """Both forms of a verb, of which one is asked for: "open", and "opened" for a slot that ends in _ed."""
        self[slot], self[slot + "_ed"] = self._values.make("verb").split("/")
        return self[slot + "_ed"] if is_participle else self[slot]


_BEFORE_STOP = re.compile(r"\{(\w+)\}\.")
_ARTICLE = re.compile(r"\b([Aa]) (?=[aeio](?!ne\b|u))")


def put(phrase: str, slots: dict[str, str]) -> str:
    """The phrasing with its slots filled, whose values stay as they are: with one full stop where two would meet."""
    phrase = _BEFORE_STOP.sub(lambda slot: slot[0][: -1 if slots[slot[1]].endswith(".") else None], phrase)
    return phrase.format_map(slots)


def fill(phrase: str, slots: Slots) -> str:
    """The same, with “an” where a value wants it. A given text, {text}, stays as it is."""
    text = put(phrase, slots)
    return text if "{text}" in phrase else _ARTICLE.sub(r"\1n ", text)
