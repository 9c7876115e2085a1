# Values of arguments for zsh, on top of the completion script that zelto generates. README.md tells how to load it.

(( $+functions[_zelto] )) || eval "$(zelto --generate-completion-script zsh)"
typeset -g _zelto_values_script=${${(%):-%x}:A:h}/values.sh

_zelto_values() {
  local -a found values listing listed
  found=(${(f)"$(sh $_zelto_values_script "${(@)words[1,CURRENT-1]}" "$PREFIX" 2>/dev/null; print -r -- $?)"})
  if (( found[-1] == 3 )); then
    _files
  elif (( $#found == 1 )); then
    _zelto "$@"
  else
    # Without the generated functions, which say what is wanted here: after a message nothing is inserted.
    found=("${(@)found[1,-2]}")
    values=("${(@)found%%$'\t'*}")
    listing=("${(@)${(@)found/$'\t'/  -- }%  -- }")
    [[ -z ${(M)listing:#*  -- *} ]] || listed=(-l)
    compadd -V values $listed -d listing -a values
  fi
}

compdef _zelto_values zelto
