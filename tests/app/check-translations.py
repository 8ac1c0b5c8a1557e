# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""check-translations.py LUPDATE ROOT: holds the catalogues against the sources and against themselves.

Prints what is wrong, a line each. Exit status: 1 where something is.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unicodedata
import xml.etree.ElementTree

FOLDER = "src/app/translations"
LANGUAGES = {"de", "es", "fr", "ja", "zh_CN"}  # at least
WIDE = ["ja", "zh_CN"]  # one character takes two columns

# What is rightly the same in these languages as in English.
SAME = {
    "%1: %2": {"de", "es", "ja"},
    "Chats": {"de", "es"},
    "Documents": {"fr"},
    "Images": {"fr"},
    "Lumora": LANGUAGES,
    "Message": {"fr"},
    "Messages": {"fr"},
}

ENDINGS = {".": ".。", ":": ":：", "?": "?？", "!": "!！", "…": "…"}


def messages(path):
    """(context, source, comment) and (whether it is finished, translation) of each message."""
    found = {}
    for context in xml.etree.ElementTree.parse(path).iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            key = context.findtext("name"), message.findtext("source"), message.findtext("comment")
            found[key] = "type" not in translation.attrib, "".join(translation.itertext())
    return found


def as_the_sources_have_them(lupdate, root, catalogue):
    """The keys that the catalogue would have, were it brought up to date."""
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / catalogue.name
        shutil.copy(catalogue, copy)
        command = [lupdate, "-silent", "-locations", "none", "-no-obsolete", "src", "-ts", str(copy)]
        subprocess.run(command, cwd=root, check=True)
        return messages(copy).keys()


def columns(text):
    return sum(2 if unicodedata.east_asian_width(each) in "WF" else 1 for each in text)


def ending(text):
    return next((kind for kind, forms in ENDINGS.items() if text.rstrip().endswith(tuple(forms))), "")


def spaces(text):
    """Those around it; a full-width colon has its own."""
    return text[: len(text) - len(text.lstrip())], " " if text.endswith("：") else text[len(text.rstrip()) :]


def faults(language, source, translation):
    """What is wrong with the translation of one text, as sentences."""
    placeholder = r"%(?:L?\d+|n)"
    if sorted(re.findall(placeholder, source)) != sorted(re.findall(placeholder, translation)):
        yield "other placeholders"
    if spaces(source) != spaces(translation):
        yield "other white space around it"
    if ending(source) != ending(translation):
        yield "another punctuation mark at its end"
    if source.count("&") != translation.count("&"):
        yield "other mnemonics"
    if (source == translation) != (language in SAME.get(source, ())):
        yield "the same as in English, or unexpectedly not"
    # Short words differ more in length; what stands in a narrow place is short.
    if columns(translation) > max(2.5 * len(source), 14) if len(source) <= 20 else columns(translation) > 2.2 * len(source):
        yield f"too long ({columns(translation)} columns for {len(source)})"
    if language == "fr" and re.search(r"(?<![\u00a0\u202f])[:;?!»]|«(?!\u00a0)", translation):
        yield "no space that does not break before a mark"
    if language in WIDE and re.search(r"[\u3040-\u9fff][,.;?!]", translation):
        yield "a punctuation mark of half width"


def check(lupdate, root, language):
    catalogue = root / FOLDER / f"lumora_{language}.ts"
    found = messages(catalogue)
    wanted = as_the_sources_have_them(lupdate, root, catalogue)
    for key in sorted(wanted ^ found.keys(), key=str):
        yield f"{key[1]!r} of {key[0]} is {'missing' if key in wanted else 'in no source'}: build update-translations"
    for (context, source, _), (is_finished, translation) in found.items():
        problems = list(faults(language, source, translation)) if is_finished else ["not translated"]
        for problem in problems:
            yield f"{source!r} of {context}: {problem}: {translation!r}"


def main():
    lupdate, root = sys.argv[1], pathlib.Path(sys.argv[2])
    there = {path.stem.removeprefix("lumora_") for path in (root / FOLDER).glob("*.ts")}
    languages = sorted(LANGUAGES | there)
    problems = [f"{language}: {problem}" for language in languages for problem in check(lupdate, root, language)]
    for problem in problems:
        print(problem)
    sys.exit(1 if problems else 0)


main()
