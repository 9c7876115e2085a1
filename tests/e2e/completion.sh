#!/usr/bin/env bash
# The completion scripts in a real shell: completion.sh bash|zsh|fish <zelto> <greenhouse>
set -euo pipefail
shell=$1 here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work"/{bin,home} "$work"/files/sub
ln -s "$(realpath "$2")" "$work/bin/zelto"
ln -s "$(realpath "$3")" "$work/bin/greenhouse"
export PATH=$work/bin:$PATH HOME=$work/home TERM=xterm
# Without one of its own, fish leaves a folder in /tmp.
export XDG_RUNTIME_DIR=$work
unset XDG_CONFIG_HOME XDG_DATA_HOME
cd "$work/files"
touch plan.png photo.jpg notes.md sub/deep.md

# shellcheck source=tests/e2e/offers.sh
source "$here/offers.sh"

# ---- Subcommands ----
all='health | rules | groups | profiles | events | history | watch | script | runners | shortcuts | schema | docs'
all+=' | prompt | api | mcp | help'
only 'zsh fish' check 'zelto ' "$all"
# bash offers the options of a command together with its subcommands.
only bash check 'zelto ' "$all | --version | -h | --help"
check 'zelto ru' 'rules | runners'
check 'zelto rules e' 'enable'
check 'zelto mcp s' 'status | serve'
check 'greenhouse c' ''
describe 'zelto rules se' 'set' 'Change fields on a rule'
describe 'greenhouse wa' 'water' "Water beds: the \"thirsty\" [or all], it's quick"
check 'zelto help ru' ''

# ---- Options ----
add='--sub | --name | --group | --action | --disabled | --json | --no-color | --timeout | --version | --help'
check 'zelto rules add --' "$add | --trigger | --set"
check 'zelto rules add --set a=1 --trigger cron --set b=2 --' "$add | --set"
check 'zelto rules add --s' '--sub | --set'
# bash takes back the name that was given, not the others of the same option.
also=$(only bash echo ' | --timeout')
check 'zelto rules rm a b c --json --force --' '--no-color | --timeout | --version | --help'
check 'zelto rules rm a --force b -t 5 --' "--json | --no-color | --version | --help$also"
check 'zelto help rules --' '--version'
check 'zelto rules add --name x -- -' ''
check 'zelto rules add -- ' ''
check 'zelto rules add --name ' ''
only 'bash zsh' check 'zelto rules add --name -' ''
check 'greenhouse water -v --l' '--litres'
check 'greenhouse water --drip -v --json herbs --j' ''
check 'greenhouse water --json -v herbs -v --s' '--steady'
describe 'greenhouse water --no' '--no-fan' "Run the fan: [off] isn't \"still\" \\ air"
describe 'greenhouse beds add --crop x --se' '--set' 'A field: name=value'
check 'greenhouse water --sec' ''

# ---- Values ----
check 'greenhouse beds list --sort ' 'name | size'
check 'greenhouse beds add --crop ' "beans | peas | lady's mantle | a:b | 1\\2"
check 'greenhouse during s' 'spring | summer'
check 'greenhouse during spring ' ''
check 'greenhouse beds add --neighbour ' 'bed-1 | bed 2'
check 'greenhouse beds add --like ' '5-words-1-empty'
check 'greenhouse water ' "ferns | herbs | tom's corner | \$HOME bed | back\\slash"
check 'greenhouse water --fan -l 3 ferns herbs ' "tom's corner | \$HOME bed | back\\slash"
check 'greenhouse water ferns he' 'herbs'
slash=$(only fish echo /)
check 'greenhouse beds add --plan ' "plan.png | photo.jpg | notes.md | sub$slash"
check 'greenhouse beds add --photo ' "plan.png | photo.jpg | sub$slash"
check 'greenhouse beds add --notes ' "notes.md | sub$slash"
check 'greenhouse beds add --notes sub/' "$(only 'bash fish' echo sub/)deep.md"
check 'greenhouse beds add --store ' "sub$slash"

# ---- The scripts themselves ----
scripts=()
for command in zelto greenhouse; do
  script=$work/$command.$shell
  "$command" --generate-completion-script "$shell" >"$script"
  scripts+=("$script")
  case $shell in
  bash) said=$(bash -u "$script" 2>&1) ;;
  zsh) said=$(zsh -f -c 'autoload -Uz compinit; compinit -u -D; source $1' - "$script" 2>&1) ;;
  fish) said=$(fish --no-config "$script" 2>&1) ;;
  esac || fail "$script: status $?"
  [[ -z $said ]] || fail "$script: $said"
done
# Left out is what the scripts do on purpose: they split the words of compgen (SC2207), restore options as they were
# (SC2064), and quote words that end in a backslash and a quote (SC1003).
[[ $shell != bash ]] || shellcheck --exclude=SC2207,SC2064,SC1003 "${scripts[@]}" || fail 'shellcheck'

offer "${scripts[@]}"
report
