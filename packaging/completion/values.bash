# shellcheck shell=bash
# Values of arguments for bash, on top of the completion script that zelto generates. README.md tells how to load it.

declare -F _zelto >/dev/null || eval "$(zelto --generate-completion-script bash)"
__zelto_values_script=$(CDPATH='' cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)/values.sh

# __zelto_quote TEXT: sets "quoted" to the text as a word. Any character may have a backslash, so none is forgotten;
# printf %q differs from version to version, and leaves ":", "=" and "@", at which the line editor cuts words.
__zelto_quote() {
  quoted=$1
  [[ $1 == *[!A-Za-z0-9_./-]* ]] || return 0
  local -i i
  local character
  quoted=
  for ((i = 0; i < ${#1}; i++)); do
    character=${1:i:1}
    [[ $character == [[:alnum:]_./-] ]] || character=\\$character
    quoted+=$character
  done
}

# __zelto_unquote TEXT: sets "plain" to the text without backslashes. No eval: what is typed is not run.
__zelto_unquote() {
  local rest=$1
  plain=
  while [[ $rest == *\\?* ]]; do
    plain+=${rest%%\\*} rest=${rest#*\\}
    plain+=${rest:0:1} rest=${rest:1}
  done
  plain+=${rest%\\}
}

__zelto_values() {
  _zelto "$@"
  local quote='' plain=$2 quoted value description offers
  case ${COMP_WORDS[COMP_CWORD]} in
  \'*) quote="*'*" plain=${2#\'} ;;
  \"*) quote='*["$`\\!]*' && __zelto_unquote "${2#\"}" ;;
  *) __zelto_unquote "$2" ;;
  esac
  offers=$(sh "$__zelto_values_script" "${COMP_WORDS[@]::COMP_CWORD}" "$plain" 2>/dev/null)
  if (($? == 3)); then
    __zelto_files
    return
  fi

  local -a matches=() described=()
  while IFS=$'\t' read -r value description; do
    [[ -n $value && $value == "$plain"* ]] || continue
    # Between quotes only what can stand there as it is.
    # shellcheck disable=SC2053  # a pattern
    if [[ -n $quote ]]; then
      [[ $value != $quote ]] || continue
      quoted=$value
    else
      __zelto_quote "$value"
    fi
    matches+=("$quoted")
    described+=("$quoted${description:+  ($description)}")
  done <<<"$offers"
  ((${#matches[@]} > 0)) || return 0
  # bash has no descriptions, but where it only lists what there is (?, ! and @), nothing of them gets onto the line:
  # what it adds is what all offers begin with, and no two values are the same.
  case ${COMP_TYPE:-9} in
  63 | 33 | 64) ((${#matches[@]} == 1)) || matches=("${described[@]}") ;;
  esac
  COMPREPLY=("${matches[@]}")
}

# Names of files; bash itself quotes them and ends directories with "/", except before version 4.
__zelto_files() {
  local raw=
  compopt -o filenames 2>/dev/null && raw=1
  while IFS= read -r value; do
    quoted=$value
    [[ -n $raw$quote ]] || __zelto_quote "$value"
    COMPREPLY+=("$quoted")
  done < <(compgen -f -- "$plain")
}

# Not "-o filenames", which the generated script has: a group called like a directory would get a "/".
complete -F __zelto_values zelto
