#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

# withdisplay.sh COMMAND…: runs the command on a virtual display, with a folder of its own for the session's sockets.
set -euo pipefail

scratch=$(mktemp -d)
display=''
trap '[ -z "$display" ] || kill "$display"; rm -rf "$scratch"' EXIT
mkfifo "$scratch/number"
Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3>"$scratch/number" 2>"$scratch/log" &
display=$!
read -r -t 30 number <"$scratch/number" || { cat "$scratch/log" >&2; exit 1; }
mkdir -m 700 "$scratch/runtime"
DISPLAY=:$number XDG_RUNTIME_DIR=$scratch/runtime "$@"
