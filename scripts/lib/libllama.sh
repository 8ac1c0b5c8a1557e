# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash

# Debian 12 has no libllama, later suites have. Their packages are fetched with the C library that they want, and
# unpacked side by side into a cache outside of the clone; nothing of the system changes. apt itself checks the
# signatures of the suite and the hashes of the files. Wants say.sh and packages.sh.

libllama_packages=(libllama0 libllama-dev libggml0 libggml-dev
    libc6 libstdc++6 libgcc-s1 libgomp1 libssl3t64 zlib1g libzstd1)
libllama_suites=(forky sid)
libllama_keyring=/usr/share/keyrings/debian-archive-keyring.gpg

libllama_cache() { echo "${XDG_CACHE_HOME:-${HOME:-/root}/.cache}/lumora/libllama"; }

# Complete is a folder with its list of packages, which is written last.
libllama_is_complete() {
    local package
    for package in "${libllama_packages[@]}"; do
        grep -q "^$package " "$1/packages" 2>/dev/null || return 1
    done
}

# The newest complete folder for this machine's architecture; nothing where there is none.
libllama_cached() {
    local folder newest=
    for folder in "$(libllama_cache)/$(dpkg --print-architecture)"-*; do
        libllama_is_complete "$folder" || continue
        [[ -n $newest && ! $folder -nt $newest ]] || newest=$folder
    done
    echo "$newest"
}

# The archives that the system's own sources name for its release, the plain ones before updates and the like.
libllama_mirrors() {
    local lists=$1/system-lists
    mkdir -p "$lists/partial"
    apt-get -o Dir::State::Lists="$lists" --print-uris update 2>/dev/null |
        sed -nE "s#^'([^']+)/dists/[^/'-]+/InRelease'.*#\1#p" | awk '!seen[$0]++'
}

# libllama_apt ROOT COMMAND…: apt-get with lists, cache and sources of its own, in ROOT.
libllama_apt() {
    local root=$1
    shift
    apt-get -q -o Dir::State="$root" -o Dir::State::Lists="$root/lists" -o Dir::State::status=/dev/null \
        -o Dir::Cache="$root/cache" -o Dir::Etc::SourceList="$root/sources.list" -o Dir::Etc::SourceParts=/dev/null \
        -o Dir::Etc::Preferences=/dev/null -o Dir::Etc::PreferencesParts=/dev/null \
        -o APT::Architectures="$(dpkg --print-architecture)" -o Acquire::Languages=none \
        -o APT::Update::Error-Mode=any "$@"
}

# libllama_open_suite WORK SUITE MIRROR…: makes WORK/SUITE a root of apt's, from the first mirror that has the suite.
libllama_open_suite() {
    local work=$1 suite=$2 root=$1/$2 mirror
    shift 2
    mkdir -p "$root/lists/partial" "$root/cache/archives/partial"
    for mirror in "$@"; do
        echo "deb [signed-by=$libllama_keyring] $mirror $suite main" >"$root/sources.list"
        if [ "$(id -u)" -eq 0 ] && id _apt >/dev/null 2>&1; then # apt downloads as that user
            chown -R _apt "$work"
        fi
        libllama_apt "$root" update >>"$(libllama_cache)/fetch.log" 2>&1 && return
    done
    return 1
}

# libllama_download WORK MIRROR… -- PACKAGE…: fetches each package into WORK/debs from the first suite that has it, and
# writes "name suite" of each to WORK/origins. Fails with the names of those that no suite gave on standard output.
libllama_download() {
    local work=$1 suite package
    local mirrors=() wanted=() left=()
    shift
    while [ "$1" != -- ]; do mirrors+=("$1") && shift; done
    shift
    wanted=("$@")
    mkdir -p "$work/debs"
    for suite in "${libllama_suites[@]}"; do
        left=()
        libllama_open_suite "$work" "$suite" "${mirrors[@]}" || continue
        for package in "${wanted[@]}"; do
            if (cd "$work/debs" && libllama_apt "$work/$suite" download "$package") >>"$(libllama_cache)/fetch.log" 2>&1; then
                printf '    %s (%s)\n' "$package" "$suite" >&2
                echo "$package $suite" >>"$work/origins"
            else
                left+=("$package")
            fi
        done
        wanted=("${left[@]}")
        [ ${#wanted[@]} -gt 0 ] || return 0
    done
    echo "${wanted[*]}"
    return 1
}

# libllama_unpack WORK FOLDER: unpacks WORK/debs into FOLDER and lists there "name version suite sha256" of each.
libllama_unpack() {
    local work=$1 folder=$2 deb name
    for deb in "$work"/debs/*.deb; do
        dpkg-deb -x "$deb" "$folder" || return
        name=$(dpkg-deb -f "$deb" Package)
        echo "$name $(dpkg-deb -f "$deb" Version) $(sed -n "s/^$name //p" "$work/origins") $(sha256sum <"$deb" | cut -c1-64)"
    done >"$work/packages"
    mv "$work/packages" "$folder/packages"
}

# Whether the folder's loader finds every library and every symbol that libllama and the backends want.
libllama_works() {
    local libraries loader library report
    libraries=$(dirname "$(compgen -G "$1/usr/lib/*/libllama.so.0")") || return
    loader=$(compgen -G "$libraries/ld-linux*.so.*") || return
    for library in "$libraries"/libllama.so.0 "$libraries"/ggml/backends*/*.so; do
        report=$(LD_WARN=yes LD_BIND_NOW=yes "$loader" --library-path "$libraries" --list "$library" 2>&1) || return
        ! grep -qE 'not found|undefined symbol' <<<"$report" || return
    done
}

# What apt gave as the reason, at the last.
libllama_reason() {
    local reason
    reason=$(grep '^E: ' "$(libllama_cache)/fetch.log" | tail -n 1) && echo "apt said: ${reason#E: }" || echo "Is the network away?"
}

libllama_by_hand() {
    fail "$1" \
        "By hand: take the packages ${libllama_packages[*]}" \
        "for $(dpkg --print-architecture) from Debian's suite ${libllama_suites[0]}, or else ${libllama_suites[1]}, unpack each into one folder with" \
        "dpkg-deb -x FILE FOLDER, and start this again with LUMORA_LLAMA_PREFIX=FOLDER in the environment." \
        "What was tried is in $(libllama_cache)/fetch.log."
}

# libllama_fetch CHECK PACKAGE…: fetches the packages and unpacks them into a new folder of the cache, whose name goes to
# standard output. CHECK is called with the folder before it gets its name; an interrupted fetch leaves nothing there.
libllama_fetch() {
    local check=$1 work staging folder mirrors missing
    shift
    mkdir -p "$(libllama_cache)"
    work=$(mktemp -d)
    staging=$(mktemp -d "$(libllama_cache)/.unpacking-XXXXXX")
    # shellcheck disable=SC2064 # the names as they are now
    trap "rm -rf '$work' '$staging'" EXIT
    chmod 755 "$work" "$staging"
    : >"$(libllama_cache)/fetch.log"

    mapfile -t mirrors < <(libllama_mirrors "$work")
    [ ${#mirrors[@]} -gt 0 ] || libllama_by_hand "apt has no source of Debian packages that libllama could come from."
    missing=$(libllama_download "$work" "${mirrors[@]}" -- "$@") ||
        libllama_by_hand "these packages could not be had: $missing. $(libllama_reason)"
    libllama_unpack "$work" "$staging" || libllama_by_hand "the packages could not be unpacked. Is the disk full?"
    "$check" "$staging" || libllama_by_hand "libllama was fetched, but it does not run on this machine."

    folder=$(libllama_cache)/$(dpkg --print-architecture)-$(sha256sum <"$staging/packages" | cut -c1-12)
    mv -T "$staging" "$folder" 2>/dev/null || [ -f "$folder/packages" ] # another fetch was faster
    rm -rf "$work" "$staging"
    trap - EXIT
    echo "$folder"
}

# Prints the folder for LUMORA_LLAMA_PREFIX, fetching it where needed; nothing where the system itself has libllama.
libllama_prefix() {
    local cached
    if [ -n "${LUMORA_LLAMA_PREFIX:-}" ]; then
        echo "$LUMORA_LLAMA_PREFIX"
    elif ! package_installed libllama-dev; then
        cached=$(libllama_cached)
        if [ -z "$cached" ]; then
            say "Fetching libllama, once, into $(libllama_cache)"
            cached=$(libllama_fetch libllama_works "${libllama_packages[@]}") || return
        fi
        echo "$cached"
    fi
}
