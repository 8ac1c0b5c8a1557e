# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Tests of the training data's generator. Argument: the folder model/."""

import json
import os
import random
import re
import subprocess
import sys
import unittest
from datetime import datetime, timedelta, timezone

MODEL_FOLDER = sys.argv.pop()
sys.path.insert(0, MODEL_FOLDER)

from generator import dates, handwritten, mix, program  # noqa: E402
from generator.documents import search, writing  # noqa: E402
from generator.grammar import Phrases  # noqa: E402
from generator.speech import PHRASES, Speaker  # noqa: E402
from generator.splits import SPLITS, TRAIN  # noqa: E402
from generator.values import put  # noqa: E402

OPEN_SLOT = re.compile(r"\{\w+\}|\[[^\]\n]*\|[^\[\n]*\]")


def flat(text: str) -> str:
    return " ".join(text.split())


def drawn(split: str, count: int, tasks: list[str] | None = None) -> list[dict]:
    source = mix.Mix("test", split, "all", tasks)
    return [json.loads(source.draw().as_json(whole=True)) for _ in range(count)]


class ExamplesTest(unittest.TestCase):
    """Every example can be answered from what the model is given, in the form that the program takes."""

    @classmethod
    def setUpClass(cls):
        cls.examples = [example for split in SPLITS for example in drawn(split, 1000)]
        for task in mix.TASKS:  # also those that the mix draws rarely
            cls.examples += drawn(TRAIN, 60, [task])
        cls.examples += [json.loads(example.as_json(whole=True)) for example in handwritten.examples()]

    def check_each(self, check):
        for example in self.examples:
            with self.subTest(task=example["task"], prompt=example["request"]["prompt"]):
                check(example, example["expect"], example["turns"][-1]["text"])

    def source(self, example: dict) -> str:
        outputs = [turn["output"] for turn in example["turns"] if turn["role"] == "tool"]
        return flat("\n".join([example["request"]["prompt"], *outputs]))

    def test_calls_fit_an_offered_tool(self):
        def check(example, expect, _):
            offered = {tool["name"]: json.loads(tool["schema"]) for tool in example["request"]["tools"]}
            calls = [turn["text"] for turn in example["turns"][:-1] if turn["role"] == "model"]
            calls = [text for text in calls if text.startswith('{"tool"')]
            called = [json.loads(text) for text in calls]
            self.assertEqual(called[0]["tool"] if called else None, expect["tool"])
            for text, call in zip(calls, called):
                self.assertEqual(list(call), ["tool", "arguments"])
                self.assertEqual(list(call["arguments"]), list(offered[call["tool"]]["properties"]))
                self.assertEqual(text, json.dumps(call, ensure_ascii=False))
                for part in expect.get("argument_contains", []):
                    self.assertIn(part.lower(), " ".join(call["arguments"].values()).lower())

        self.check_each(check)

    def test_replies_meet_what_is_expected_of_them(self):
        def check(example, expect, reply):
            for part in expect.get("contains", []):
                self.assertIn(flat(part), flat(reply))
            self.assertEqual(flat(expect.get("exact", reply)), flat(reply))
            if "cites" in expect:
                self.assertIn(expect["cites"], reply)
                self.assertIn("Document: " + expect["cites"] + " Excerpt: ", self.source(example))

        self.check_each(check)

    def test_answers_stand_in_their_source(self):
        quoting = "search.answer search.sumup text.answer image.text image.line barcode extract copy recall".split()

        def check(example, expect, _):
            if example["task"] in quoting and not expect.get("refuses"):
                for part in expect.get("contains", []):
                    # A line of a list gets the full stop that it lacks where sentences are strung together.
                    self.assertIn(flat(part).removesuffix("."), self.source(example))

        self.check_each(check)

    def test_drills_in_reading_find_what_stands_there(self):
        def check(example, *_):
            if example["task"] == "drill.read":
                for turn in example["turns"]:
                    if turn["role"] == "model" and turn["text"] != "The text does not say that.":
                        self.assertIn(turn["text"].removesuffix("."), self.source(example))

        self.check_each(check)

    def test_two_full_stops_never_meet(self):
        self.assertEqual(put("{a}. {b}. {c}", {"a": "11:16 a.m.", "b": "noon", "c": "a."}), "11:16 a.m. noon. a.")

    def test_cards_are_drawn_from_their_source(self):
        def check(example, _, reply):
            if example["request"]["schema"] is None:
                return
            card = json.loads(reply)
            self.assertEqual(list(card), ["title", "summary", "keyPoints", "nextSteps"])
            self.assertEqual(reply, json.dumps(card, ensure_ascii=False))
            if example["task"] in ("card.text", "card.search.answer", "card.search.sumup"):
                for part in [card["summary"], *card["keyPoints"], *card["nextSteps"]]:
                    self.assertIn(flat(part).removeprefix("Source: ").removesuffix("."), self.source(example))

        self.check_each(check)

    def test_no_slot_is_left_open(self):
        def check(example, _, reply):
            if not example["task"].startswith(("copy", "drill")):  # which may have such signs of their own
                self.assertNotRegex(example["request"]["prompt"].replace(program.ANSWER_SCHEMA, ""), OPEN_SLOT)
                self.assertNotRegex(reply, OPEN_SLOT)

        self.check_each(check)


class SplitsTest(unittest.TestCase):
    """What is held out never occurs in training."""

    def assert_disjoint(self, of_split: dict[str, set], name: str):
        for one in SPLITS:
            for other in SPLITS:
                if one < other:
                    self.assertEqual(of_split[one] & of_split[other], set(), name)

    def phrasings(self, phrases: Phrases, split: str) -> set[str]:
        chance = random.Random(7)
        return {phrases.pick(chance, split) for _ in range(150)} if phrases.has(split) else set()

    def test_phrasings(self):
        for name, phrases in PHRASES.items():
            if not name.startswith("reply."):
                of_split = {split: self.phrasings(phrases, split) for split in SPLITS}
                self.assert_disjoint(of_split, name)
                self.assertTrue(all(of_split.values()) or name == "extract.sentences", name)

    def test_questions_about_facts(self):
        for kind in writing.OF_SPLIT[TRAIN]:
            for fact in kind.facts:
                self.assert_disjoint({split: self.phrasings(fact.questions, split) for split in SPLITS}, fact.name)

    def test_words_and_kinds(self):
        invented, kinds = {}, {}
        for split in SPLITS:
            speaker = Speaker(random.Random(1), split)
            invented[split] = {speaker.values.words.invented() for _ in range(3000)}
            kinds[split] = {writing.some_kind(speaker).name for _ in range(300)}
        self.assert_disjoint(invented, "invented words")
        for name in ("first names", "last names", "cities", "streets", "things"):
            of_split = {}
            for split in SPLITS:
                speaker = Speaker(random.Random(2), split)
                of_split[split] = {speaker.values.words.pick(name) for _ in range(400)}
            self.assert_disjoint(of_split, name)
        for split in set(SPLITS) - {TRAIN}:
            self.assertTrue(kinds[split] - kinds[TRAIN], "no kinds of documents are held out")


class ProgramTest(unittest.TestCase):
    """The generator knows the program's rules."""

    def test_dates_are_those_of_the_date_tool(self):
        with open(os.path.join(MODEL_FOLDER, "requests.json"), encoding="utf-8") as file:
            samples = json.load(file)["dates"]
        self.assertEqual({sample["locale"] for sample in samples}, set(dates.LOCALES))
        for sample in samples:
            utc = datetime.fromtimestamp(sample["milliseconds"] / 1000, timezone.utc)
            local = utc + timedelta(hours=2 if utc.month == 6 else 1)
            locale = dates.LOCALES[sample["locale"]]
            second = local.hour * 3600 + local.minute * 60 + local.second
            told = [locale.at(local.date(), second, zone).text for zone in locale.zones]
            self.assertIn(sample["text"], told)

    def test_excerpts_begin_before_the_first_word_that_occurs(self):
        text = "x" * 500 + " Lamp " + "y" * 1500
        self.assertEqual(search.excerpt(text, "of rent lamp"), text[301:1301])
        self.assertEqual(search.excerpt(text, "of an"), text[:1000])
        self.assertEqual(search.excerpt("the lamp", "LAMP"), "the lamp")

    def test_the_same_arguments_make_the_same_examples(self):
        command = [sys.executable, "-m", "generator", "--count", "300", "--seed", "5"]
        told = [
            subprocess.run(command, cwd=MODEL_FOLDER, env=os.environ | {"PYTHONHASHSEED": seed}, capture_output=True)
            for seed in ("1", "2")
        ]
        self.assertEqual(told[0].stdout.count(b"\n"), 300)
        self.assertEqual(told[0].stdout, told[1].stdout)


if __name__ == "__main__":
    unittest.main()
