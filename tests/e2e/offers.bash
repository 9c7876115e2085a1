# What bash offers for each line of standard input, words alone: "== line" and then one offer a line.
# offers.bash <script>...
# shellcheck source=/dev/null
for script; do source "$script"; done

while IFS= read -r COMP_LINE; do
  COMP_POINT=${#COMP_LINE} COMPREPLY=()
  read -ra COMP_WORDS <<<"$COMP_LINE"
  [[ $COMP_LINE != *' ' ]] || COMP_WORDS+=('')
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  # "complete -o filenames -F FUNCTION COMMAND"
  read -ra registered <<<"$(complete -p "${COMP_WORDS[0]}")"
  "${registered[${#registered[@]} - 2]}" "${COMP_WORDS[0]}" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
  echo "== $COMP_LINE"
  ((${#COMPREPLY[@]} == 0)) || printf '%s\n' "${COMPREPLY[@]}"
done
