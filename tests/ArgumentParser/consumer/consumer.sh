#!/usr/bin/env bash
# Builds and runs the first program of the library's README as somebody else's project would:
# consumer.sh find_package|FetchContent BUILD-DIRECTORY COMPILER
set -euo pipefail
way=$1 build=$2 compiler=$3
sources=$(cd "$(dirname "$0")/../../.." && pwd)
# The same directory each time, so that a compiler cache knows what it has seen; but a new build.
work=$build/consumer/$way
rm -rf "$work"
mkdir -p "$work"

awk '/^```cpp/ { on = 1; next } /^```/ { if (on) exit } on' "$sources/src/ArgumentParser/README.md" >"$work/repeat.cpp"
{
  echo 'cmake_minimum_required(VERSION 3.25)'
  echo 'project(outside LANGUAGES CXX)'
  if [ "$way" = find_package ]; then
    cmake --install "$build" --prefix "$work/prefix" --component ArgumentParser >/dev/null
    # Nothing in the package may lead back to where it was built.
    if grep -rlF --include='*.cmake' --include='*.h' "$sources" "$work/prefix"; then exit 1; fi
    echo 'find_package(ArgumentParser REQUIRED)'
  else
    echo 'include(FetchContent)'
    echo "FetchContent_Declare(ArgumentParser SOURCE_DIR $sources)"
    echo 'FetchContent_MakeAvailable(ArgumentParser)'
  fi
  echo 'add_executable(repeat repeat.cpp)'
  echo 'target_link_libraries(repeat PRIVATE ArgumentParser::ArgumentParser)'
  echo 'argument_parser_manual(TARGET repeat DATE 2026-11-23)'
  echo 'install(TARGETS repeat)'
} >"$work/CMakeLists.txt"

build_it() {
  cmake -S "$work" -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_CXX_COMPILER="$compiler" &&
    cmake --build "$work/build"
}
build_it >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
# The README's session with it, to the letter.
awk '/^```console/ { on = 1; next } /^```/ { on = 0 } on' "$sources/src/ArgumentParser/README.md" >"$work/session"
shown=$(cd "$work/build" && grep '^\$ ' "$work/session" |
  while read -r _ line; do echo "\$ $line"; bash -c "$line" 2>&1 || :; done)
diff "$work/session" - <<<"$shown"
grep -q '^\.Nd Say it again$' "$work/build/repeat.1"
# The program is all that its project installs and all that it builds, besides the library and its tool.
cmake --install "$work/build" --prefix "$work/installed" >/dev/null
[ "$(cd "$work/installed" && find . -type f)" = ./bin/repeat ]
[ -z "$(find "$work/build" -name 'ZeltoCLI*')" ]
