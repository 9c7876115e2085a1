#!/usr/bin/env bash
# What the compiler and the linker were to build into the shipped program: hardened.sh PROGRAM
set -euo pipefail
facts=$(readelf -W --file-header --dynamic --segments --dyn-syms "$1")

# holds WHAT PATTERN: some line of readelf matches.
holds() {
  grep -qE "$2" <<<"$facts" || { echo "$1: no line matches $2" >&2 && exit 1; }
}

holds 'loaded anywhere' '^ *Type: +DYN '
holds 'all symbols bound before main' 'FLAGS_1.*\<NOW\>'
holds 'the table of symbols read-only from then on' '^ *GNU_RELRO '
holds 'no code on the stack' '^ *GNU_STACK .* RW +0x'
holds 'stacks guarded' '__stack_chk_fail'
holds 'sizes checked' '__[a-z]+_chk@'
