# SPDX-FileCopyrightText: 2026 The Lumora developers
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash

# The checks of the sources that ./scripts/test makes beside the tests. Wants say.sh.

# Our own C++ files, one a line.
cpp_files() {
    local folders=()
    mapfile -t folders < <(find . -maxdepth 1 -type d -regex '\./\(src\|model-service\|model\|tests\|bench\)')
    find "${folders[@]}" -name '*.cpp' -o -name '*.h'
}

check_format() {
    say "Checking the format"
    cpp_files | xargs clang-format-16 --dry-run -Werror || fail "clang-format-16 -i FILE puts the files above right."
}

check_scripts() {
    say "Checking the scripts"
    shellcheck -x --source-path=SCRIPTDIR/.. scripts/setup scripts/run scripts/test scripts/bench scripts/train scripts/evaluate scripts/fuzz scripts/reliability scripts/package scripts/try-package scripts/lib/*.sh tests/ui/*.sh tests/packaging/*.sh .ci/run ||
        fail "shellcheck objects to the lines above."
}

# check_test_functions PRESET: whether moc has seen every test. Some literals in the bodies before it, raw texts with an
# odd number of quotes or 100'000, make this moc pass over a test without a word.
check_test_functions() {
    local source moc written seen
    say "Counting the tests"
    while read -r source; do
        moc="build/$1/${source%.cpp}_autogen/include/$(basename "$source" .cpp).moc"
        [ -e "$moc" ] || continue
        written=$(awk '/Q_SLOTS:/ {slots = 1} /^(private|protected|public):/ {slots = 0} slots' "$source" |
            grep -cE '^    void \w+\(\)' || true)
        seen=$(grep -cE '^ +[0-9]+, +0, +[0-9]+, +2, 0x1?08' "$moc" || true)
        [ "$written" = "$seen" ] || fail "$source has $written test functions, and moc sees $seen."
    done < <(grep -rl --include='*.cpp' Q_OBJECT tests)
}

# check_qml PRESET: every QML module, in its build folder.
check_qml() {
    grep -q '^build all_qmllint:' "build/$1/build.ninja" || return 0
    say "Checking the QML files"
    quietly "build/$1/qmllint.log" cmake --build --preset "$1" --target all_qmllint ||
        fail "qmllint objects to the lines above."
}

# check_code PRESET: clang-tidy, over what changed since it last found nothing.
check_code() {
    say "Checking the code with clang-tidy"
    python3 scripts/lib/tidy.py "build/$1" || fail "clang-tidy objects to the lines above."
}
