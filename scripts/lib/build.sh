# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash

# Configures and builds one preset. Wants say.sh.

# configure PRESET LLAMA-PREFIX: only where that was not done before; ninja itself sees what changes later.
configure() {
    local folder=build/$1
    if [ -f "$folder/build.ninja" ] && grep -qxF "LUMORA_LLAMA_PREFIX:PATH=$2" "$folder/CMakeCache.txt"; then return; fi
    say "Configuring $folder"
    mkdir -p "$folder"
    quietly "$folder/configure.log" cmake --preset "$1" -DLUMORA_LLAMA_PREFIX:PATH="$2" ||
        fail "configuring failed. All of its output is in $folder/configure.log."
}

# build PRESET TARGET…
build() {
    local preset=$1
    shift
    say "Building $* in build/$preset"
    NINJA_STATUS='    [%f/%t] ' nice cmake --build --preset "$preset" --parallel "$(nproc)" --target "$@" ||
        fail "the build failed; the messages above say where."
}
