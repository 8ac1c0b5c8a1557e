# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""The generator's texts lie in files of their own: sections that begin with "@ name", and comments with "#"."""

from pathlib import Path

FOLDER = Path(__file__).parent


def sections(path: Path) -> list[tuple[str, list[str]]]:
    """The sections of a file, in order: the name of each, and its lines without the empty ones."""
    found: list[tuple[str, list[str]]] = []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        line = line.rstrip()
        if line.startswith("@ "):
            found.append((line[2:].strip(), []))
        elif line and not line.startswith("#"):
            if not found:
                raise ValueError(f"{path.name}:{number}: a line before the first section")
            found[-1][1].append(line)
    return found


def word_lists(path: Path) -> dict[str, list[str]]:
    """Sections whose items stand between commas."""
    lists = {}
    for name, lines in sections(path):
        lists[name] = [item for line in lines for item in (word.strip() for word in line.split(",")) if item]
    return lists
