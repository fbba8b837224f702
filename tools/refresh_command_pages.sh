#!/bin/bash
# SPDX-License-Identifier: Apache-2.0
# Copies the output of --help into the "help" blocks of the pages in docs/commands/.
# refresh_command_pages.sh KVGAMUT    the built program
set -euo pipefail
[[ $# -eq 1 ]] || { echo "Usage: $0 path/to/kvgamut" >&2; exit 2; }
program=$(realpath "$1")
cd "$(dirname "$0")/../docs/commands"
for page in *.md; do
    help=$(COLUMNS=80 "$program" "${page%.md}" --help)
    HELP=$help awk '
        inside && /^```$/ { inside = 0 }
        !inside { print }
        /^```help$/ { inside = 1; print ENVIRON["HELP"] }
    ' "$page" >"$page.new"
    mv "$page.new" "$page"
done
