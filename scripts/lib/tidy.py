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
            lines += [f"#define main main{number}", f'#include "{root / source}"', "#undef main"]
        self.source.write_text("\n".join(lines) + "\n")
        options = dict.fromkeys(option for source in sources for option in self._options(commands[source]["command"]))
        entry = {
            "directory": commands[sources[0]]["directory"],
            "file": str(self.source),
            "command": shlex.join(["c++", *(word for option in options for word in option), "-c", str(self.source)]),
        }
        (folder / "compile_commands.json").write_text(json.dumps([entry]))

    @staticmethod
    def _options(command):
        """What a compile command has between the compiler and the output, each with its value."""
        words = shlex.split(command)
        words = words[next(i for i, word in enumerate(words) if word.startswith("-")) : words.index("-o")]
        while words:
            length = 2 if words[0] in ("-isystem", "-include") else 1
            # Where a test lies is no matter here, and differs.
            if not words[0].startswith("-DQT_TESTCASE_"):
                yield tuple(words[:length])
            words = words[length:]

    def is_clean(self, root):
        """Whether nothing is wrong with any of the sources. What they hide from each other is no fault of theirs."""
        folders = (root / self.sources[0]).parents
        configuration = next(folder / ".clang-tidy" for folder in folders if (folder / ".clang-tidy").exists())
        more = [
            f"--config-file={configuration}",
            f"--header-filter=^{root}{OWN_FILES}",
            "--checks=-bugprone-suspicious-include",  # which is what such a file is made of
            "--extra-arg=-Wno-shadow",
            '--extra-arg=-DQT_TESTCASE_BUILDDIR=""',
            '--extra-arg=-DQT_TESTCASE_SOURCEDIR=""',
        ]
        return not complaints(self.folder, self.source, [root / source for source in self.sources], more)


def complaints(commands, source, files, more=()):
    """What is wrong with a translation unit that consists of some files of ours; empty where nothing is."""
    run = subprocess.run([TOOL, "--quiet", "-p", commands, *EXTRA, *more, source], capture_output=True, text=True)
    found = run.stdout if run.returncode == 0 else run.stdout + run.stderr
    awaiting = [file for file in files if re.search(r"\bco_(await|return|yield)\b", file.read_text())]
    if awaiting and not found.strip():
        asked = CAPTURING_COROUTINE.format("|".join(map(str, awaiting)))
        arguments = [argument for argument in more if argument.startswith("--extra-arg")]
        query = subprocess.run(
            [QUERY, "-p", commands, *EXTRA, *arguments, "-c", "set output diag", "-c", asked, source],
            capture_output=True,
            text=True,
        )
        if query.stdout.splitlines()[-1:] != ["0 matches."]:
            found = f"{source}: a coroutine must not be a capturing lambda\n{query.stdout}{query.stderr}"
    return found if run.returncode != 0 or found.strip() else ""


def groups(sources):
    """The sources of each top folder, in even parts of neighbours that are not too large."""
    folders = {}
    for source in sorted(sources):
        folders.setdefault(source.split("/")[0], []).append(source)
    for folder in folders.values():
        parts = -(-len(folder) // LARGEST_GROUP)
        edges = [len(folder) * part // parts for part in range(parts + 1)]
        yield from (folder[start:end] for start, end in zip(edges, edges[1:]))


def main():
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
