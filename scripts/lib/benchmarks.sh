# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash

# What scripts/bench does, step by step. Wants say.sh and libllama.sh.

bench_build=build/release

# Prints the folder in which the engine's own benchmark lies, fetched with the engine's packages of the same version.
llama_tools() {
    local cached
    for cached in "$(libllama_cache)/$(dpkg --print-architecture)"-*; do
        if [ -x "$cached/usr/bin/llama-bench" ] && libllama_is_complete "$cached"; then
            echo "$cached"
            return
        fi
    done
    say "Fetching the engine's own benchmark, once, into $(libllama_cache)"
    # shellcheck disable=SC2154 # set by libllama.sh
    libllama_fetch libllama_works "${libllama_packages[@]}" llama.cpp-tools
}

# run_benchmark RESULTS NAME: each measure five times, in random order, so that what else happens hits all alike.
run_benchmark() {
    "$bench_build/bench/$2" --benchmark_repetitions=5 --benchmark_enable_random_interleaving=true \
        --benchmark_report_aggregates_only=true --benchmark_out_format=json --benchmark_out="$1/$2.json" >/dev/null 2>&1 ||
        fail "$2 failed."
}

# measure_replies RESULTS PREFIX TOOLS: a chat through the program, and llama-bench with the same file, threads and lengths.
measure_replies() {
    local libraries loader model results=$1/reply.json
    model=$PWD/$bench_build/bench.gguf
    [ -f "$model" ] || "$bench_build/bin/lumora-tiny-model" "$model" --size bench
    "$bench_build/bench/bench_reply" "$PWD/$bench_build/bin/lumora-model" "$model" >"$results"
    libraries=$(dirname "$(compgen -G "$3/usr/lib/*/libllama.so.0")")
    loader=$(compgen -G "$libraries/ld-linux*.so.*")
    # It looks for the processor's backends in the folder in which it is started.
    (cd "$libraries"/ggml/backends* && "$loader" --library-path "$libraries:$libraries/llama" \
        "$3/usr/bin/llama-bench" -m "$model" -p 0 -d "$(jq .promptTokens "$results")" -n "$(jq .replyTokens "$results")" \
        -r 9 -t "$(physical_cores)" -o json) >"$1/llama.json" 2>/dev/null ||
        fail "llama-bench failed."
}

# measure_window RESULTS: its start on a display of its own, and its frames. A desktop's settings do not count.
measure_window() {
    env -u DBUS_SESSION_BUS_ADDRESS -u WAYLAND_DISPLAY tests/ui/withdisplay.sh "$bench_build/bench/bench_start" \
        >"$1/start.json" 2>/dev/null || fail "bench_start failed."
    env -u DBUS_SESSION_BUS_ADDRESS QT_QPA_PLATFORM=offscreen "$bench_build/bench/bench_frames" \
        >"$1/frames.json" 2>/dev/null || fail "bench_frames failed."
}

# As many threads as the model service takes.
physical_cores() { cat /sys/devices/system/cpu/cpu*/topology/thread_siblings_list | sort -u | wc -l; }

# print_table RESULTS
print_table() {
    jq -rn --slurpfile history "$1/bench_history.json" --slurpfile store "$1/bench_store.json" \
        --slurpfile pdf "$1/bench_pdf.json" --slurpfile vision "$1/bench_vision.json" \
        --slurpfile search "$1/bench_search.json" \
        --slurpfile reply "$1/reply.json" --slurpfile llama "$1/llama.json" \
        --slurpfile start "$1/start.json" --slurpfile frames "$1/frames.json" -f scripts/lib/table.jq
}
