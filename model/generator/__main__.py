# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

"""python3 -m generator: examples as JSON lines on standard output."""

import argparse
import sys

from . import handwritten
from .mix import STAGES, TASKS, Mix
from .splits import SPLITS, TRAIN

HANDWRITTEN = "handwritten"  # not made, and always the same
WHOLE_INSTRUCTIONS = 0.16  # share of the examples for training that have the program's whole instructions


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="python3 -m generator", description=__doc__)
    parser.add_argument("--split", choices=(*SPLITS, HANDWRITTEN), default=TRAIN)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=10)
    parser.add_argument("--tasks", type=lambda text: text.split(","), help="only these, evenly: " + ", ".join(TASKS))
    parser.add_argument("--curriculum", choices=STAGES, default="all", help="which mix, where no tasks are named")
    parser.add_argument(
        "--whole", type=float, default=WHOLE_INSTRUCTIONS, help="share with the whole instructions, in training"
    )
    chosen = parser.parse_args()
    if unknown := set(chosen.tasks or []) - set(TASKS):
        parser.error(f"there are no such tasks: {', '.join(sorted(unknown))}")
    return chosen


def main() -> None:
    chosen = arguments()
    if chosen.split == HANDWRITTEN:
        for example in handwritten.examples():
            sys.stdout.write(example.as_json(whole=True) + "\n")
        return
    mix = Mix(f"{chosen.split} {chosen.seed}", chosen.split, chosen.curriculum, chosen.tasks)
    for _ in range(chosen.count):
        example = mix.draw()
        whole = chosen.split != TRAIN or mix.speaker.chance.random() < chosen.whole
        sys.stdout.write(example.as_json(whole) + "\n")


if __name__ == "__main__":
    try:
        main()
    except BrokenPipeError:  # who reads has enough
        sys.stderr.close()
