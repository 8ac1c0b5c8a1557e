# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash

# Shows the program on a machine without a display: the real window on a virtual one, with a question typed into it.
# Wants say.sh, and end_demonstration to be called at the end.

scratch='' window_process='' display_process=''
demonstration_question="What can you help me with today?"
demonstration_seconds=300 # that the model may take to load, and again to answer

# wait_until SECONDS COMMAND…: calls the command until it succeeds; gives up when the time is over or the window is gone.
wait_until() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        [ $SECONDS -lt $deadline ] && kill -0 "$window_process" 2>/dev/null || return
        sleep 0.2
    done
}

# The id of the message that holds the question and was not there before; nothing until it is saved.
question_id() {
    jq -r --arg text "$demonstration_question" --argjson known "$known_messages" \
        '[.[].messages[] | select(.role == "user" and .text == $text) | .id] - $known | .[0] // empty' \
        "$history" 2>/dev/null
}

# Tries to send: Return does nothing while the model is not ready, and nothing once the editor is empty.
question_is_sent() {
    question=$(question_id)
    [ -z "$question" ] || return 0
    xdotool key Return
    sleep 1
    return 1
}

# The answer as it is saved, as JSON; nothing where none is there.
answer() {
    jq -c --arg id "$question" '.[].messages as $m | ($m | map(.id) | index($id)) as $i
        | select($i != null) | $m[$i + 1] // empty' "$history" 2>/dev/null
}

# A reply is saved empty when it begins and whole when it ends; one that failed with nothing said is taken away.
answer_has_ended() {
    local reply
    [ -s "$history" ] && reply=$(answer) && { [ -z "$reply" ] || jq -e '.text != "" or .card != null' <<<"$reply" >/dev/null; }
}

end_demonstration() {
    local process
    for process in "$window_process" "$display_process"; do
        [ -z "$process" ] || { kill "$process" && wait "$process"; } 2>/dev/null || true
    done
    rm -rf "$scratch"
}

start_display() {
    local number
    mkfifo "$scratch/number"
    Xvfb -displayfd 3 -screen 0 1280x860x24 -nolisten tcp 3>"$scratch/number" 2>"$scratch/xvfb.log" &
    display_process=$!
    read -r -t 30 number <"$scratch/number" || fail "the virtual display did not start." "$(cat "$scratch/xvfb.log")"
    export DISPLAY=:$number
}

start_window() {
    "$1" 2>"$scratch/window.log" &
    window_process=$!
    window=$(timeout 60 xdotool search --sync --onlyvisible --pid "$window_process" 2>/dev/null | head -n 1) ||
        fail "the window did not open." "$(cat "$scratch/window.log")"
    xdotool windowmove --sync "$window" 0 0 2>/dev/null || true
    xdotool windowfocus --sync "$window"
}

print_conversation() {
    jq -r --arg id "$question" '.[] | select(any(.messages[]; .id == $id)) | "\n" + .title, (.messages[] |
        "\n" + (if .role == "user" then "You" else "Model" end) + ": " + .text
        + (if .outputTokens then "\n(\(.inputTokens) input, \(.outputTokens) output tokens)" else "" end))' "$history"
}

# demonstrate PROGRAM PICTURE
demonstrate() {
    local picture=$2
    history=${XDG_DATA_HOME:-$HOME/.local/share}/Lumora/conversations.json
    scratch=$(mktemp -d)
    known_messages=$(jq -c '[.[].messages[].id]' "$history" 2>/dev/null) || known_messages='[]'

    say "There is no display: showing the window on a virtual one"
    start_display
    start_window "$1"
    xdotool type --delay 30 "$demonstration_question"
    say "Typed a question; sending it as soon as the model is ready"
    wait_until "$demonstration_seconds" question_is_sent ||
        demonstration_failed "$picture" "the question could not be sent."
    say "Sent; waiting for the reply to end"
    wait_until "$demonstration_seconds" answer_has_ended ||
        demonstration_failed "$picture" "the reply did not end."
    sleep 1 # for the last frame
    take_picture "$picture"
    print_conversation
    jq -e '.outputTokens != null' <<<"$(answer)" >/dev/null ||
        fail "the reply ended with an error; the picture shows it: $picture"
    say "The conversation is kept in $history"
    say "A picture of the window: $picture"
}

take_picture() { import -window "$window" "$1"; }

demonstration_failed() {
    take_picture "$1" 2>/dev/null || true
    fail "$2" "A picture of the window: $1" "$(tail -n 20 "$scratch/window.log")"
}
