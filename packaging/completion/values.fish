# Values of arguments for fish, on top of the completion script that zelto generates. README.md tells how to load it.

set -g __zelto_values_script (path resolve (status filename) | path dirname)/values.sh

function __zelto_values
    sh $__zelto_values_script (__zelto_values_tokens) (commandline -ct) 2>/dev/null
    test $status -eq 3 && __fish_complete_path (commandline -ct)
end

# The words before the one at the cursor, as they are typed.
function __zelto_values_tokens
    if test (string split -m 1 -f 1 -- . $FISH_VERSION) -gt 3
        commandline -pc --tokens-raw
    else
        commandline -pco
    end
end

# Whether one of these options waits for its value. Where it doesn't, the entries below would offer the option itself.
function __zelto_values_after
    contains -- (__zelto_values_tokens)[-1] $argv
end

complete -c zelto -fa '(__zelto_values)'
for option in scope trigger action only kind
    complete -c zelto -n "__zelto_values_after --$option" -l $option -xa '(__zelto_values)'
end
complete -c zelto -n '__zelto_values_after --group -g' -s g -l group -xa '(__zelto_values)'
