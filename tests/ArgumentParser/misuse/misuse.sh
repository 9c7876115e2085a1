#!/usr/bin/env bash
# Whether the compiler stops at each mistake of misuse.cpp with its sentence: misuse.sh COMPILER INCLUDE-DIRECTORY
set -euo pipefail
source=$(dirname "$0")/misuse.cpp
compile() { "$1" -std=c++20 -fsyntax-only "-I$2" "-DMISTAKE=$3" "$source" 2>&1; }

compile "$1" "$2" 0
count=0
while IFS='|' read -r number sentence; do
  said=$(compile "$1" "$2" "$number") && { echo "mistake $number compiles" >&2; exit 1; }
  [[ $said == *"$sentence"* ]] || { printf 'mistake %s says\n%s\n' "$number" "$said" >&2; exit 1; }
  count=$((count + 1))
done < <(sed -n 's/^#[a-z]*if MISTAKE == \([0-9]*\)  \/\/ /\1|/p' "$source")
[ "$count" -gt 0 ] && echo "$count mistakes"
