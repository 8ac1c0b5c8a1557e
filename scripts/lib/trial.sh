# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2154

# What scripts/try-package does, step by step. Wants say.sh and demonstration.sh.

trial_user=1000

# in_bare_system COMMAND…
in_bare_system() { chroot "$bare" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive "$@"; }

# open_bare_system [FOLDER]
open_bare_system() {
    trial=$(mktemp -d)
    trap close_bare_system EXIT
    bare=${1:-$trial/system}
    if [ -z "$1" ]; then
        say "Making a bare system"
        quietly "$trial/debootstrap.log" debootstrap --variant=minbase bookworm "$bare" || fail "debootstrap failed."
    fi
    mount -t proc proc "$bare/proc"
    mount --rbind /dev "$bare/dev"
    mount --make-rslave "$bare/dev"
    cp /etc/resolv.conf "$bare/etc/resolv.conf"
    in_bare_system id -u lumora-trial >/dev/null 2>&1 ||
        in_bare_system useradd --create-home --uid "$trial_user" lumora-trial
    in_bare_system apt-get -q update >"$trial/update.log" 2>&1 || fail "apt in the bare system finds no archive."
}

close_bare_system() {
    end_demonstration
    umount "$bare/proc" 2>/dev/null || true
    umount -R "$bare/dev" 2>/dev/null || true
    rm -rf "$trial"
}

# Every file but those of users, and what apt and dpkg keep of any package that was there.
list_bare_system() {
    (cd "$bare" && find . -xdev \( -path ./home -o -path ./proc -o -path ./dev -o -path ./tmp -o -path ./var/lib/apt \
        -o -path ./var/lib/dpkg -o -path ./var/cache -o -path ./var/log \) -prune -o -print | sort)
}

# install_package PACKAGE: its dependencies first, with which the system is compared after the removal.
install_package() {
    say "Installing what $(basename "$1") depends on"
    cp "$1" "$bare/tmp/lumora.deb"
    quietly "$trial/depends.log" in_bare_system apt-get -q -y --no-install-recommends satisfy \
        "$(dpkg-deb -f "$1" Depends)" || fail "the package depends on what Debian 12 has not got."
    list_bare_system >"$trial/before"
    say "Installing it"
    quietly "$trial/install.log" in_bare_system apt-get -q -y --no-install-recommends install /tmp/lumora.deb ||
        fail "the package could not be installed."
    in_bare_system dpkg -s lumora | grep -E '^(Version|Installed-Size):' >&2
}

# A start of the installed program by a user of the bare system, on our display.
write_start() {
    cat >"$trial/start" <<END
#!/bin/sh
exec chroot --userspec=$trial_user:$trial_user "$bare" /usr/bin/env -i DISPLAY="\$DISPLAY" HOME=/home/lumora-trial \
    PATH=/usr/bin:/bin LANG=C.UTF-8 QT_QUICK_BACKEND=software /usr/bin/lumora
END
    chmod +x "$trial/start"
}

chat_in_bare_system() {
    export XDG_DATA_HOME=$bare/home/lumora-trial/.local/share
    write_start
    demonstrate "$trial/start" "$PWD/build/packaged-window.png"
}

second_question="Tell me a long story."

second_question_is_saved() { jq -e --arg text "$second_question" 'any(.[].messages[]; .text == $text)' "$history" >/dev/null; }

# Asks once more, and ends the program as a session does, before the reply has ended: the service is held up.
end_in_a_reply() {
    local service
    say "Asking again, and ending the program as a session does, in the middle of the reply"
    service=$(pgrep -P "$window_process")
    xdotool type --delay 30 "$second_question"
    kill -STOP "$service"
    xdotool key Return
    wait_until 60 second_question_is_saved || fail "the second question was not sent."
    kill -TERM "$window_process"
    wait "$window_process" || fail "the program did not end in order ($?)."
    ! kill -0 "$service" 2>/dev/null || fail "the model service lives on."
    jq -e 'all(.[].messages[-1]; .outputTokens == null)' "$history" >/dev/null || fail "the reply was over before."
    say "The program ended in order, and the model service with it"
}

remove_package() {
    say "Removing the package"
    quietly "$trial/remove.log" in_bare_system apt-get -q -y purge "$1" || fail "the package could not be removed."
    rm -f "$bare/tmp/lumora.deb"
}

check_nothing_is_left() {
    local left
    left=$(comm -13 "$trial/before" "$trial/after")
    [ -z "$left" ] || fail "the package left this behind:" "$left"
    [ -s "$history" ] || fail "the user's chats are gone."
    say "Nothing is left of the package, and the user's chats are there"
}
