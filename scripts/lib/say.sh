# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash

# What the scripts tell the user. All of it goes to standard error, so that a result can stand on standard output.

say() { printf '==> %s\n' "$*" >&2; }

# Several lines may be given, one an argument. Ends the script.
fail() {
    printf '\nCould not go on: %s\n' "$1" >&2
    shift
    [ $# -eq 0 ] || printf '    %s\n' "$@" >&2
    exit 1
}

# Runs a command with its output in a file, and shows the end of that file where the command fails.
quietly() {
    local log=$1
    shift
    "$@" >"$log" 2>&1 || {
        local status=$?
        tail -n 40 "$log" >&2
        return $status
    }
}
