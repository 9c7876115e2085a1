#!/usr/bin/env bash
# What is installed, taken away again, and what Homebrew is told: packaging.sh BUILD-DIRECTORY
set -euo pipefail
build=$1 sources=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
  echo "$1" >&2
  exit 1
}
# same WHAT EXPECTED ACTUAL
same() { [ "$2" = "$3" ] || fail "$1: \"$3\" in place of \"$2\""; }

# A program within a bundle, and pages beside it, as the release for macOS has them.
stage="$work/stage [x]"
support=$stage/bundle/Zelto.app/Contents/SharedSupport
DESTDIR=$stage cmake --install "$build" --prefix /bundle --component Unspecified >/dev/null
"$stage/bundle/bin/zelto" --help | grep -q '^OVERVIEW: ' || fail 'the link does not lead to the program'
mkdir -p "$support"
cp -R "$stage/bundle/share" "$support"
cp "$stage/bundle/bin/ZeltoCLI" "$support"
(cd "$stage/bundle" && cmake -E tar cf "$work/app.zip" --format=zip Zelto.app)
rm -r "$stage/bundle/Zelto.app"

touch "$stage/bundle/share/zelto/of-others"
DESTDIR=$stage cmake -D MANIFEST="$build/install_manifest_Unspecified.txt" \
  -D OWN='share/doc/zelto/docs;share/doc/zelto;share/zelto/completion;share/zelto' -P "$sources/packaging/uninstall.cmake" >/dev/null
same 'left after uninstalling' './share/zelto ./share/zelto/of-others ' \
  "$(cd "$stage/bundle" && find . \( ! -type d -o -name zelto -o -name completion \) | sort | tr '\n' ' ')"

version=$(sed -n 's/^project(zelto VERSION \([0-9.]*\) .*/\1/p' "$sources/CMakeLists.txt")
mkdir "$work/zelto-$version"
cp "$sources/CMakeLists.txt" "$work/zelto-$version"
name=zelto-$version.tar.gz
(cd "$work" && cmake -E tar czf "$name" "zelto-$version")
url="https://example.com/a?b&c=/$name"
"$sources/script/homebrew" formula "$url" "$work/$name" >"$work/formula.rb"
"$sources/script/homebrew" cask https://example.com/app.zip "$work/app.zip" 4.5.6 >"$work/cask.rb"
! grep -E '@[A-Z0-9]+@' "$work"/*.rb || fail 'not filled in'
same 'the URL' "  url \"$url\"" "$(grep -F "$name" "$work/formula.rb")"
same 'the version' '  version "4.5.6"' "$(grep version "$work/cask.rb")"
for each in "formula.rb $name" 'cask.rb app.zip'; do
  sum=$(cmake -E sha256sum "$work/${each#* }")
  same 'the checksum' "  sha256 \"${sum%% *}\"" "$(grep sha256 "$work/${each% *}")"
done
same 'pages in the cask' $(($(find "$build/packaging" -maxdepth 1 -name 'zelto*.[17]' | wc -l))) \
  "$(grep -c '^  manpage ' "$work/cask.rb")"
! "$sources/script/homebrew" formula "$url" "$work/app.zip" 2>/dev/null || fail 'a formula of other sources'
! "$sources/script/homebrew" cask "$url" "$work/$name" 1 2>/dev/null || fail 'a cask without the program'
