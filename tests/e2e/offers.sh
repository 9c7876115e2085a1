# shellcheck shell=bash disable=SC2154
# A table of command lines and what a real shell offers at their ends. Takes "shell", "here" and "work".
lines=() expectations=() failures=0 checked=0
# check LINE OFFERS: exactly these words, in any order, separated by " | ".
check() {
  lines+=("$1") expectations+=("$2")
}
# describe LINE OFFER DESCRIPTION: this word alone; bash has no descriptions.
describe() {
  local description=$'\t'$3
  [[ $shell != bash ]] || description=
  check "$1" "$2$description"
}
only() {
  [[ " $1 " != *" $shell "* ]] || "${@:2}"
}

fail() {
  printf '%s\n' "$@" >&2
  failures=$((failures + 1))
}

# pty COMMAND INPUT: a command at a terminal, with what is typed there.
pty() {
  zsh -f -c 'zmodload zsh/zpty; zpty shell $1; zpty -n -w shell $2; while zpty -r shell; do :; done' - "$@" >"$work/screen"
}
sorted() {
  LC_ALL=C sort -u
}
# offer SCRIPT...: loads these into the shell, checks the lines so far, and begins a new table.
offer() {
  # bash 3.2 takes $'\n' within quotes as it stands.
  local i expected got newline=$'\n'
  printf '%s\n' "${lines[@]}" >"$work/lines"
  case $shell in
  bash) bash "$here/offers.bash" "$@" <"$work/lines" >"$work/offers" ;;
  zsh) : >"$work/offers" && pty 'zsh -f -i' "source $here/offers.zsh $work/lines $work/offers $*"$'\n\x18' ;;
  fish) pty 'fish --no-config' "source $here/offers.fish $work/lines $work/offers $*; exit"$'\n' ;;
  esac
  for i in "${!lines[@]}"; do
    expected=$(sorted <<<"${expectations[i]// | /$newline}")
    got=$(awk -v line="== ${lines[i]}" '/^== / { on = $0 == line; next } on' "$work/offers")
    # Only where one was asked for does the description count.
    [[ $expected == *$'\t'* ]] || got=$(cut -f1 <<<"$got")
    got=$(sorted <<<"$got")
    [[ $got == "$expected" ]] || fail "$shell, '${lines[i]}': expected" "$expected" 'got' "$got"
  done
  checked=$((checked + ${#lines[@]})) lines=() expectations=()
}
report() {
  ((failures == 0)) || { echo "$failures failures in $checked lines" >&2; exit 1; }
  echo "$checked lines"
}
