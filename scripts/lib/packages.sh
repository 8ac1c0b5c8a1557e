# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash

# Installs what scripts/packages.txt lists and the system has not got. Wants say.sh.

package_installed() {
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# missing_packages USE…: the listed packages that are not installed, one a line.
missing_packages() {
    local use package
    while read -r use package; do
        [[ " $* " != *" $use "* ]] || package_installed "$package" || echo "$package"
    done < <(grep -v '^#' scripts/packages.txt)
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo -- "$@"; fi
}

# Whether as_root can work: we are root, or sudo takes us, asking for a password only where someone can type it.
can_be_root() {
    [ "$(id -u)" -eq 0 ] && return
    command -v sudo >/dev/null || return 1
    sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v; }
}

# Shows apt's own account of its progress, read from standard input: one line that changes, or, where the output is no
# terminal, a line for each fifth of the way.
apt_progress() {
    local kind percent text step=-1
    while IFS=: read -r kind _ percent text; do
        percent=${percent%%[.,]*}
        case $kind in
            dlstatus) text="downloading" ;;
            pmstatus) text="installing" ;;
            *) continue ;;
        esac
        if [ -t 2 ]; then
            printf '\r    %s %3d %%  ' "$text" "$percent" >&2
        elif [ "$kind-$((percent / 20))" != "$step" ]; then
            step="$kind-$((percent / 20))"
            printf '    %s %3d %%\n' "$text" "$percent" >&2
        fi
    done
    [ ! -t 2 ] || printf '\r%30s\r' '' >&2
}

apt_install() {
    local log=$1
    shift
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 \
        -o APT::Status-Fd=3 --no-install-recommends install "$@" 3>&1 >"$log" 2>&1 | apt_progress
}

# ensure_packages USE…
ensure_packages() {
    command -v apt-get >/dev/null ||
        fail "this system has no apt. The scripts set up Debian 12." \
            "Elsewhere, install what scripts/packages.txt lists and build by hand, as README.md says."
    local missing log
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    can_be_root || fail "packages are missing, and installing them needs root or sudo. As root, run:" \
        "apt-get update && apt-get install --no-install-recommends ${missing[*]}" "Then start this again."

    log=$(mktemp)
    say "Installing ${#missing[@]} packages with apt"
    # An update can fail in part, for a source that is not needed here; so what counts is the installation.
    quietly "$log.update" as_root apt-get -q -o APT::Update::Error-Mode=any update || true
    apt_install "$log" "${missing[@]}" || {
        grep -hE '^(E|Err|W):' "$log" | head -n 12 >&2
        fail "apt could not install these packages: ${missing[*]}" "Its output is in $log." \
            "Where the network is away, try again later; all that was downloaded is kept."
    }
    rm -f "$log" "$log.update"
}
