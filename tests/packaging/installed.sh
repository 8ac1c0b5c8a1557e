#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later

# installed.sh SOURCES BUILD VERSION: configures the packaging's files with and without screenshots, as a packager does,
# and looks at what would be installed.
set -euo pipefail
sources=$1 build=$2 version=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
application=org.lumora.Lumora
metainfo=$sources/packaging/$application.metainfo.xml.in

fault() { printf '%s\n' "$@" >&2 && exit 1; }

desktop-file-validate "$sources/packaging/$application.desktop"

appstreamcli validate --no-net "$build/packaging/$application.metainfo.xml"
cat >"$scratch/screenshots.cmake" <<END
set(LUMORA_SCREENSHOTS_URL https://example.org/pictures)
configure_file($sources/packaging/screenshots.xml.in $scratch/screenshots.xml @ONLY)
file(READ $scratch/screenshots.xml LUMORA_SCREENSHOTS)
configure_file($metainfo $scratch/$application.metainfo.xml @ONLY)
END
cmake -P "$scratch/screenshots.cmake"
appstreamcli validate --no-net "$scratch/$application.metainfo.xml"
while read -r picture; do
    [ -f "$sources/docs/images/$picture" ] || fault "The metainfo shows docs/images/$picture, which is not there."
done < <(sed -n 's#.*https://example.org/pictures/\(.*\)</image>.*#\1#p' "$scratch/$application.metainfo.xml")

# In the sandbox there is no network, and nothing of the user's files.
manifest=$sources/packaging/flatpak/$application.yml
grep -q '^finish-args:' "$manifest" || fault "The Flatpak's permissions are not where they should be."
sed '1,/^finish-args:/d; /^[a-z]/,$d' "$manifest" >"$scratch/permissions"
grep -qe '--socket=wayland' "$scratch/permissions" || fault "The Flatpak's permissions could not be read."
! grep -vE '^ *- --(socket=(wayland|fallback-x11)|share=ipc|device=dri)( +#.*)?$' "$scratch/permissions" | grep -E '^ *-' ||
    fault "The Flatpak asks for the permissions above."

# One version, told in three places.
[ "$(sed -n 's/.*<release version="\([^"]*\)".*/\1/p' "$metainfo" | head -n 1)" = "$version" ] ||
    fault "The newest release in the metainfo is not $version, the project's version."
[ "$(sed -n 's/^## \([^ ]*\) .*/\1/p' "$sources/CHANGELOG.md" | head -n 1)" = "$version" ] ||
    fault "The newest version in CHANGELOG.md is not $version, the project's version."
