# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""Runs clang-tidy over every source of ours in a build folder: tidy.py BUILD-FOLDER.

A source that was found clean is not looked at again until it, a header of ours that it includes, its compile command,
the configuration or the tool changes. The build must be complete, since the headers are known from it.

Nearly all of the time goes to the headers of Qt, so neighbouring sources are looked at as one translation unit. Where
that has any fault, be it only that two of them use a name of their own twice, each is looked at alone, and that counts.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

TOOL = "clang-tidy-16"
QUERY = "clang-query-16"
EXTRA = [
    "--extra-arg=" + argument
    for argument in (
        "-Wno-unknown-warning-option",  # what gcc knows and clang does not is no matter
        *("-Xclang", "-analyzer-config", "-Xclang", "mode=shallow"),  # half of the whole time otherwise, for Qt's inner life
    )
]
# A lambda's captures are gone once the lambda is, while its coroutine may still wait. The tool's own check for that came
# only later, so it is asked for here: a coroutine's statement inside a lambda that has captures.
CAPTURING_COROUTINE = (
    "match stmt(anyOf(coreturnStmt(), coawaitExpr(), coyieldExpr()), isExpansionInFileMatching('{}'), "
    "forFunction(cxxMethodDecl(ofClass(cxxRecordDecl(isLambda(), has(fieldDecl()))))))"
)
OWN_FILES = "/(src|model-service|model|tests|bench)/[a-z_/-]*[.](h|cpp)$"
LARGEST_GROUP = 12


def own_sources(root, build):
    """The compile command of each of our own sources, by its path from the root; a source that is built twice, once."""
    commands = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if source.is_relative_to(root) and not source.is_relative_to(root / "build"):
            commands.setdefault(str(source.relative_to(root)), entry)
    return commands


def own_includes(root, build):
    """The files of ours that went into each object, by the object's path, as ninja noted them."""
    listing = subprocess.run(["ninja", "-C", build, "-t", "deps"], check=True, capture_output=True, text=True).stdout
    includes, current = {}, None
    for line in listing.splitlines():
        if line and not line.startswith(" "):
            current = includes.setdefault(line.split(": #deps")[0], [])
        elif line:
            path = pathlib.Path(build, line.strip()).resolve()
            if path.is_relative_to(root):
                current.append(path)
    return includes


class Fingerprints:
    """Says what a source's result depends on, as one short text."""

    def __init__(self, root, build):
        self._build = build
        self._includes = own_includes(root, build)
        folders = ("src", "model", "model-service", "tests", "bench")
        self._headers = {path for folder in folders for path in (root / folder).glob("**/*.h")}
        self._digests = {}
        tool = subprocess.run([TOOL, "--version"], check=True, capture_output=True).stdout
        configurations = sorted(root.glob("**/.clang-tidy"))
        self._common = [tool, pathlib.Path(__file__).read_bytes(), *(path.read_bytes() for path in configurations)]

    def _digest(self, path):
        if path not in self._digests:
            self._digests[path] = hashlib.sha256(path.read_bytes()).digest()
        return self._digests[path]

    def of(self, entry):
        total = hashlib.sha256(b"\0".join(self._common) + entry["command"].encode())
        output = re.search(r" -o (\S+)", entry["command"])[1]
        # What is built only when asked for may include anything, as far as is known here.
        for path in sorted(self._includes.get(output, self._headers | {pathlib.Path(entry["file"])})):
            total.update(str(path).encode() + self._digest(path))
        return total.hexdigest()


class Together:
    """Some sources as one translation unit, written into a folder of its own."""

    def __init__(self, folder, sources, commands, root):
        self.sources = sources
        self.folder = folder
        self.source = folder / "together.cpp"
        folder.mkdir(parents=True, exist_ok=True)
        lines = []
        for number, source in enumerate(sources):
            lines += [f"#define main main{number}", f'#include "{root / source}"', "#undef main():
    root = pathlib.Path(__file__).resolve().parents[2]
    build = root / sys.argv[1]
    stamps = build / "tidy"
    stamps.mkdir(exist_ok=True)
    commands = own_sources(root, build)
    fingerprints = Fingerprints(root, build)
    due = {}
    for source, entry in sorted(commands.items()):
        stamp = stamps / (source.replace("/", "_") + ".clean")
        fingerprint = fingerprints.of(entry)
        if not stamp.exists() or stamp.read_text() != fingerprint:
            due[source] = (stamp, fingerprint)

    def look(number, group):
        """What is wrong with each source of a group."""
        if len(group) > 1 and Together(build / "tidy" / f"group{number}", group, commands, root).is_clean(root):
            return dict.fromkeys(group, "")
        return {source: complaints(build, root / source, [root / source]) for source in group}

    done = bad = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        running = [pool.submit(look, number, group) for number, group in enumerate(groups(due))]
        for future in concurrent.futures.as_completed(running):
            for source, found in future.result().items():
                done += 1
                print(f"    [{done}/{len(due)}] {source}", flush=True)
                if found:
                    bad += 1
                    print(found, flush=True)
                else:
                    stamp, fingerprint = due[source]
                    stamp.write_text(fingerprint)
    print(f"    {len(commands)} sources, {len(commands) - len(due)} unchanged since they were clean, {bad} with faults")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
