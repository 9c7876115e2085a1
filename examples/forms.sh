#!/usr/bin/env bash
# Whether each line of code in the README's table of forms stands in forms.cpp, and the program takes some of them:
# forms.sh README FORMS
set -euo pipefail
packed=$(tr -d ' \n' <"$(dirname "$0")/forms.cpp")
count=0
# shellcheck disable=SC2016 # the backquotes are Markdown's
while IFS= read -r line; do
  [[ $packed == *"${line// /}"* ]] || { echo "not in forms.cpp: $line" >&2; exit 1; }
  count=$((count + 1))
done < <(sed -n 's/^|.*| `\(it\..*;\)` |$/\1/p' "$1")
((count > 20))
# What a command prints by other means comes first, also into a pipe.
said=$("$2" --config x all --user me -Dx --needed a --label p q --no-fan -vv --since --offset -5 --port http name 3 a b)
[ "$said" = $'printed\ntold' ]
"$2" rest6 a -b || [ $? = 2 ]
