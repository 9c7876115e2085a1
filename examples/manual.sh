#!/usr/bin/env bash
# Whether mandoc has nothing to say against the pages of a dump, in one and in one for each command, and whether they
# tell what they should: manual.sh MANDOC GENERATOR DUMP TEXTS
set -euo pipefail
mandoc=$1 generator=$2 dump=$3 texts=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/one" "$work/each"
"$generator" "$dump" --texts "$texts" --date 2026-11-23 --output "$work/one"
"$generator" "$dump" --texts "$texts" --date 2026-11-23 --output "$work/each" --each
"$generator" "$dump" --texts "$texts" --markdown --output "$work/one"

# That a manual is not installed here is no fault of the page.
"$mandoc" -T lint "$work"/one/*.1 "$work"/each/*.1 2>/dev/null | grep -v 'referenced manual not found' && exit 1
(cd "$work/each" && [ "$(echo *)" = "greenhouse-beds-add.1 greenhouse-beds-list.1 greenhouse-beds.1 greenhouse-during.1 \
greenhouse-help.1 greenhouse-water.1 greenhouse.1" ])

# holds TEXT FILE: whether a text stands in a file, however it is broken into lines.
holds() {
  tr -s ' \n' ' ' <"$2" | grep -qF -- "$1" || { echo "not in $2: $1" >&2; exit 1; }
}
"$mandoc" -T ascii -O width=100 "$work/one/greenhouse.1" | col -bx >"$work/page"
holds 'greenhouse - Look after a greenhouse' "$work/page"
holds 'greenhouse water [beds ...] [--litres litres] [--fan]' "$work/page"
holds "Water beds: the \"thirsty\" [or all], it's quick" "$work/page"
holds "Run the fan: [off] isn't \"still\" \\ air (default: --fan)" "$work/page"
holds '-l, --litres litres Litres for each (default: 2.5)' "$work/page"
holds 'size The largest first' "$work/page"
holds '3 The compost was asked for. It is not for visitors.' "$work/page"
holds 'SEE ALSO col(1)' "$work/page"
holds 'greenhouse water ferns herbs --no-fan' "$work/page"
# shellcheck disable=SC2016 # the backquotes are Markdown's
holds '- `-l, --litres <litres>`: Litres for each (default: 2.5)' "$work/one/greenhouse.md"
if grep -qi -e secret -e 'compost --' "$work/page" "$work/one/greenhouse.md"; then exit 1; fi
