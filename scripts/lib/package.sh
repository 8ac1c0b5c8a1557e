# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash

# What scripts/package does beside building. Wants say.sh.

# What the program finds at run time and does not link: plugins of the toolkit, QML modules, data of the engines.
package_plugins=(libqt6svg6 qt6-wayland qt6-xdgdesktopportal-platformtheme qt6-image-formats-plugins
    qml6-module-qtcore qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
    qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-dialogs qml6-module-qtquick-layouts
    qml6-module-qtquick-templates qml6-module-qtquick-window qml6-module-qt-labs-folderlistmodel
    poppler-data tesseract-ocr-eng tesseract-ocr-osd)

# linked_packages BUILD: the packages of what the program and its helpers link, as Depends wants them. The service's own
# libraries are not asked: they come with it.
linked_packages() {
    local work programs=() name
    for name in lumora lumora-pdf-text lumora-image-reader; do programs+=("$PWD/$1/bin/$name"); done
    if [ ! -e "$1/bin/lumora-model.bin" ]; then programs+=("$PWD/$1/bin/lumora-model"); fi
    work=$(mktemp -d)
    mkdir "$work/debian"
    printf 'Source: lumora\n\nPackage: lumora\nArchitecture: any\n' >"$work/debian/control"
    (cd "$work" && dpkg-shlibdeps --warnings=0 -O "${programs[@]}") | sed -n 's/^shlibs:Depends=//p'
    rm -rf "$work"
}

# make_package BUILD: prints the path of the package.
make_package() {
    local linked plugins
    say "Making the package"
    linked=$(linked_packages "$1")
    [ -n "$linked" ] || fail "dpkg-shlibdeps does not say what the program links."
    plugins=$(printf ', %s' "${package_plugins[@]}")
    rm -rf "$1/packages"
    quietly "$1/package.log" cpack --config "$1/CPackConfig.cmake" -D CPACK_DEBIAN_PACKAGE_DEPENDS="$linked$plugins" ||
        fail "the package could not be made."
    compgen -G "$PWD/$1/packages/*.deb"
}
