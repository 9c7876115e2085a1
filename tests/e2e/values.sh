#!/usr/bin/env bash
# The values that packaging/completion adds, in a real shell: values.sh bash|zsh|fish <zelto> <stand-in>
set -euo pipefail
shell=$1 here=$(cd "$(dirname "$0")" && pwd)
values=$here/../../packaging/completion/values application=$(realpath "$3")
work=$(mktemp -d)
trap 'kill -KILL $standin 2>/dev/null || :; rm -rf "$work"' EXIT
mkdir -p "$work"/{bin,home} "$work"/files/{Maintenance,scripts}
ln -s "$(realpath "$2")" "$work/bin/zelto"
export PATH=$work/bin:$PATH HOME=$work/home TERM=xterm ZELTO_CONTROL_FILE=$work/control.json
export LC_ALL=C.UTF-8
# No offer may depend on how busy the machine is.
export ZELTO_COMPLETION_SECONDS=20
# Without one of its own, fish leaves a folder in /tmp.
export XDG_RUNTIME_DIR=$work
unset XDG_CONFIG_HOME XDG_DATA_HOME
cd "$work/files"
touch 'a script.sh'
# shellcheck source=tests/e2e/offers.sh
source "$here/offers.sh"

"$application" serve >/dev/null 2>&1 &
standin=$!
for _ in {1..100}; do [[ -e $ZELTO_CONTROL_FILE ]] || sleep 0.1; done
# add GROUP NAME
add() {
  zelto rules add --trigger cron --group "$1" --name "$2" >/dev/null
}
rules=$(zelto rules --json | sed -n 's/^    "id": "\(.*\)",$/\1/p')
# Each would leave a file behind if a shell ran any of it, and ends in what splits a line of offers.
# shellcheck disable=SC2016
hostile='$(touch RUN) `touch RUN`; touch RUN
touch RUN '$'\x1b]0;x\x07\u202e\x7f\t"'"' \\n end"
# shellcheck disable=SC2016,SC1003
groups=('0$(touch RUN)' '1`touch RUN`' '2;touch RUN' '3&touch RUN|touch RUN' "4it's \"so\"" '5\n\' '6<RUN>RUN' '7* ?[a]{b,c}'
  '8~#!^(x)' '9 é:=@%,+' 'a$HOME' "b'; touch RUN; '" 'c"; touch RUN; "' 'd  two' $'eλ')
for i in "${!groups[@]}"; do add "${groups[i]}" "$hostile"; done
for group in $'f\ntouch RUN' $'g\x1b[31m' $'h\u202e'; do add "$group" x; done
ids=$(zelto rules --json | sed -n 's/^    "id": "\(.*\)",$/\1/p')

# ---- What is offered ----
zelto --generate-completion-script "$shell" >"$work/zelto.$shell"
scripts=("$work/zelto.$shell" "$values.$shell")
joined() {
  local text
  text=$(printf ' | %s' "$@")
  echo "${text:3}"
}
agents='claude-code | claude-desktop | cursor | vscode | windsurf | zed'
actions='none | notification | shortcuts | shellScript | appleScript | launchApp | openURL | openFile'
# shellcheck disable=SC2086
check 'zelto rules rm --force ' "$(joined $ids)"
check 'zelto rules set 3F2A' "${rules%%$'\n'*}"
describe 'zelto rules fire 3F2A' "${rules%%$'\n'*}" 'Morning stand-up'
check 'zelto rules set 3F2A ' ''
check 'zelto rules enable 3F2A 5C -t 3 8D' "$(grep ^8D <<<"$rules")"
check 'zelto groups rename Ma' 'Maintenance'
check 'zelto groups rename Maintenance ' ''
check 'zelto rules list -g W' 'Work'
check 'zelto rules add --trigger cron --group W' 'Work'
describe 'zelto profiles activate D9' 'D94E7A35-1C2B-4E6F-8D70-5B3A9C1E2F22' 'Focus'
check 'zelto schema s' 'screenLocked | storage | script'
describe 'zelto rules add --trigger po' 'power' 'Power'
check 'zelto rules add --action ' "$actions"
check 'zelto rules --scope ' 'all | visible'
check 'zelto watch --only ' 'events | actions'
check 'zelto mcp install ' "all | $agents"
describe 'zelto mcp remove z' 'zed' 'Zed'
describe 'zelto help rul' 'rules' 'Automation rules'
check 'zelto help mcp ' 'status | clients | install | remove | serve'
check 'zelto rules e' 'enable'
check 'zelto rules list --sc' '--scope'
check 'zelto script test ' "a$(only bash echo "\\") script.sh | Maintenance$(only fish echo /) | scripts$(only fish echo /)"
offer "${scripts[@]}"

# ---- What gets onto the line: the first character of each name, the tab key, and then the command runs ----
typed=$(for script in "${scripts[@]}"; do echo "source $script"; done)$'\n'
for group in "${groups[@]}"; do typed+="zelto groups disable ${group:0:1}"$'\t\n'; done
# Listed as well, and taken back.
typed+=$'zelto rules rm \t\t\t\x15\nzelto groups disable "Main\t\nexit\n'
case $shell in
# Its pager would take what is typed next.
bash) pty 'bash --norc --noprofile -i' $'bind "set page-completions off"\n'"$typed" ;;
zsh) pty 'zsh -f -i' "autoload -Uz compinit && compinit -u -D"$'\n'"$typed" ;;
fish) pty 'fish --no-config' "$typed" ;;
esac
off=$(zelto groups --json | awk '/"enabledCount": 0/ { getline; print }' | grep -vc Photos)
((off == ${#groups[@]} + 1)) || fail "$off groups are off" "$(cat -v "$work/screen")" "$(zelto groups)"
[[ -z $(find . -name '*RUN*') ]] || fail 'a name was run' "$(find . -name '*RUN*')"

# ---- An application that hangs, and one that is off, which stays off ----
kill -STOP "$standin"
until [[ $(ps -o stat= -p "$standin") == *T* ]]; do sleep 0.1; done
# Far less than the 15 seconds of zelto.
SECONDS=0
hung=$(ZELTO_COMPLETION_SECONDS=0.2 sh "$values.sh" zelto rules rm '') || fail "hanging: status $?"
[[ -z $hung && $SECONDS -lt 10 ]] || fail "hanging for $SECONDS s: $hung"
kill -CONT "$standin"
kill "$standin"
wait "$standin" || :
rm -f "$ZELTO_CONTROL_FILE"
check 'zelto rules rm ' ''
check 'zelto groups enable ' ''
check 'zelto mcp install c' 'claude-code | claude-desktop | cursor'
offer "${scripts[@]}"
[[ ! -e $ZELTO_CONTROL_FILE ]] || fail 'the application was started'
report
