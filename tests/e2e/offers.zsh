# What zsh offers: offers.zsh <lines> <offers> <script>... reads lines from one file and writes to another
# "== line" and then, one offer a line, the word, a tab and its description. For an interactive zsh alone.
lines=(${(f)"$(<$1)"}) offers=$2
autoload -Uz compinit && compinit -u -D
zstyle ':completion:*' list-grouped false  # each word with its own description
for script in ${@[3,-1]}; do source $script; done

# All offers pass through this builtin; with -A, -D or -O it only filters arrays.
compadd() {
  if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then builtin compadd "$@"; return; fi
  local -a matches shown
  local described=${@[$(( ${@[(i)-d]} + 1 ))]}
  (( ! $@[(I)-d] )) || shown=("${(@P)described}")
  builtin compadd -A matches -D shown "$@"
  local -i i
  for ((i = 1; i <= $#matches; ++i)); do
    # Shown is "word   -- description", or the word alone.
    print -r -- "${(Q)matches[i]}"$'\t'"${${(M)shown[i]:#* -- *}#* -- }" >> $offers
  done
  builtin compadd "$@"
}
offer-all() {
  for BUFFER in $lines; do
    CURSOR=$#BUFFER
    print -r -- "== $BUFFER" >> $offers
    zle list-choices
  done
  exit
}
zle -N offer-all
bindkey '^X' offer-all
