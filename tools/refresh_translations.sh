#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Updates apps/kvgamut/desktop/language/translations/*.ts from the texts of the window and the sentences of
# problems:
#
#   tools/refresh_translations.sh [LANGUAGE ...]      a new language, such as "fr"
#
# New texts are added as unfinished, for Qt Linguist or an editor; texts that are no longer used are removed.
# Then build: the translations are compiled into the program.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
desktop="$root/apps/kvgamut/desktop"
sources=("$desktop" "$root/apps/kvgamut/model/problems/ProblemText.cpp" "$root/platform/core/Problem.cpp")
lupdate=$(command -v lupdate || true)
[[ -x /usr/lib/qt6/bin/lupdate ]] && lupdate=/usr/lib/qt6/bin/lupdate
if [[ -z $lupdate ]]; then
    echo "lupdate is not installed (Debian, Ubuntu: apt-get install qt6-l10n-tools)" >&2
    exit 1
fi

refresh() { # LANGUAGE FILE
    "$lupdate" -silent -no-obsolete -locations none -source-language en -target-language "$1" \
        -extensions cpp,h "${sources[@]}" -ts "$2"
    echo "$2: $(grep -c 'type="unfinished"' "$2" || true) texts to translate"
}

for language in "$@"; do
    refresh "$language" "$desktop/language/translations/kvgamut_$language.ts"
done
for file in "$desktop"/language/translations/kvgamut_*.ts; do
    language=${file##*/kvgamut_}
    [[ " $* " == *" ${language%.ts} "* ]] || refresh "${language%.ts}" "$file"
done
