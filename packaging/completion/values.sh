# shellcheck shell=sh
# What can stand at the end of a command line: values.sh zelto <word>..., to the word being completed, which may be
# empty. Prints one offer a line: the value, a tab, and its description. Ends with status 3 where a file is wanted. The
# completions of the three shells ask here, so that they offer the same.
set -u
export LC_ALL=C  # bytes, whatever they are; and the same messages everywhere

# Runs zelto for a fifth of a second at most, or for $ZELTO_COMPLETION_SECONDS. It waits for whole seconds itself, and not every system has "timeout".
# A zelto that is killed leaves half an answer at most, which has no end and is dropped. What zelto reads is file 3,
# since a shell gives nothing to commands in the background.
exec 3</dev/null
briefly() {
  zelto "$@" <&3 2>/dev/null &
  asked=$!
  { sleep "${ZELTO_COMPLETION_SECONDS:-0.2}" && kill -KILL "$asked"; } </dev/null >/dev/null 2>&1 &
  clock=$!
  wait "$asked" 2>/dev/null
  kill "$clock" 2>/dev/null
}

# from_application TOOL INDENT VALUE DESCRIPTION: from each object of the answer, two members. INDENT is that of the
# members, so that those of objects within don't count.
# The application is asked as an agent asks it. Unlike the other commands, "zelto mcp serve" never starts it, and there
# is no moment between looking whether it runs and asking. The answer is JSON, the only output in which a name can't
# pass for something else: a string inside the line, itself text with a member a line.
from_application() {
  printf '{"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":"%s","arguments":{}}}\n' "$1" |
    briefly mcp serve 3<&0 |
    awk 'sub(/^.*"content":\[\{"text":"/, "") && sub(/","type":"text"\}\]\}\}$/, "") {
           # Backslashes first become a byte that JSON never holds, so that "\\n" is no end of line.
           gsub(/\\\\/, "\001"); gsub(/\\n/, "\n"); gsub(/\\"/, "\""); gsub(/\001/, "\\"); print
         }' | members "$2" "$3" "$4"
}

# members INDENT VALUE DESCRIPTION: the same from JSON with a member a line: from the list that it is, or from the list
# of trigger types in it.
# Control characters and those that turn the direction of writing become question marks in descriptions. Values with
# them are left out, as are those that the program would take for options.
members() {
  awk -v indent="$1" -v value="$2" -v description="$3" '
    function text() {
      gsub(/\\\\/, "\001"); gsub(/\\"/, "\""); gsub(/\\u[0-9a-f][0-9a-f][0-9a-f][0-9a-f]|\\[bfnrt]/, "?" bad)
      gsub(/\177|\302[\200-\237]|\330\234|\342\200[\216\217\252-\256]|\342\201[\246-\251]/, "?" bad)
      gsub(/\001/, "\\")
    }
    function finish() {
      if (offer != "" && offer !~ bad && offer !~ /^-/) print offer "\t" told
      offer = told = ""
    }
    BEGIN { bad = "\002"; start = sprintf("%" indent "s\"", "") }
    /^  "/ { other = !/^  "triggerTypes"/ }
    other { next }
    index($0, start) != 1 { if (length($0) <= indent) finish(); next }
    !/": ".*",?$/ { next }
    {
      key = substr($0, length(start) + 1); key = substr(key, 1, index(key, "\"") - 1)
      sub(/^[^:]*: "/, ""); sub(/",?$/, ""); text()
      if (key == value) offer = $0
      if (key == description) { gsub(bad, ""); told = $0 }
    }'
}

agents() {
  printf 'all\tEvery agent found on this machine\n'
  briefly mcp clients --json | members 4 id name
}

# subcommands WORD...: from the list in a help text, in which descriptions of that width stay on one line.
subcommands() {
  COLUMNS=1000 briefly help "$@" |
    awk '/^SUBCOMMANDS:/ { on = 1; next }
         !NF { on = 0 }
         on { name = $1; sub(/^ *[^ ]+( \(default\))? */, ""); print name "\t" $0 }'
}

# Which value is it? "path" is the commands, "number" counts the arguments after them, "option" waits for its value.
[ $# -eq 0 ] || shift
path='' number=1 option='' ended=''
while [ $# -gt 1 ]; do
  if [ -n "$option" ]; then
    option=''
  elif [ -n "$ended" ]; then
    number=$((number + 1))
  else
    case $1 in
    --) ended=1 ;;
    --scope | -g | --group | -t | --timeout | --trigger | --sub | --name | --action | --set | --icon | -c | --count | \
      --since | --only | --runner | --value | --kind) option=$1 ;;
    -*) ;;
    *)
      case $path in
      '' | rules | groups | profiles | script | shortcuts | api | mcp) path="${path:+$path }$1" ;;
      help*) path="$path $1" ;;
      *) number=$((number + 1)) ;;
      esac
      ;;
    esac
  fi
  shift
done
[ -n "$option$ended" ] || case ${1-} in -*) exit 0 ;; esac

case "$path ${option:-$number}" in
'rules --scope' | 'rules list --scope') printf 'all\tEvery rule\nvisible\tThose that the active profile leaves on\n' ;;
'rules '*' --action')
  printf '%s\n' none notification shortcuts shellScript appleScript launchApp openURL openFile
  ;;
'watch --only') printf '%s\n' events actions ;;
'prompt --kind') printf '%s\n' shell trigger applescript ;;
'docs 1') printf '%s\n' context trigger-context applescript-context ;;
'rules show 1' | 'rules set 1' | 'rules fire 1' | 'rules rm '[0-9]* | 'rules enable '[0-9]* | 'rules disable '[0-9]*)
  from_application zelto_list_rules 4 id name
  ;;
'rules --group' | 'rules -g' | 'rules list --group' | 'rules list -g' | 'rules add --group' | 'groups enable 1' | \
  'groups disable 1' | 'groups rename 1') from_application zelto_list_groups 4 name '' ;;
'profiles activate 1') from_application zelto_list_profiles 4 id name ;;
'schema 1' | 'rules add --trigger') from_application zelto_schema 6 type displayName ;;
'mcp install 1' | 'mcp remove 1') agents ;;
'script test 1') exit 3 ;;
'help 1') subcommands ;;
'help '*' 1')
  path=${path#help }
  # shellcheck disable=SC2086  # the commands, one word each
  set -f && subcommands $path
  ;;
esac
exit 0
