function __greenhouse_should_offer_completions_for_flags_or_options -a expected_commands
    set -l non_repeating_flags_or_options $argv[2..]
    set -l non_repeating_flags_or_options_absent 0
    set -l positional_index 0
    set -l commands
    __greenhouse_parse_tokens
    test "$commands" = "$expected_commands"; and return $non_repeating_flags_or_options_absent
end

function __greenhouse_should_offer_completions_for_positional -a expected_commands positional_index_comparison expected_positional_index
    set -l non_repeating_flags_or_options
    set -l non_repeating_flags_or_options_absent 0
    set -l positional_index 0
    set -l commands
    __greenhouse_parse_tokens
    test "$commands" = "$expected_commands" -a \( "$positional_index" "$positional_index_comparison" "$expected_positional_index" \)
end

function __greenhouse_parse_tokens -S
    set -l unparsed_tokens (__greenhouse_tokens -pc)
    switch $unparsed_tokens[1]
    case 'greenhouse'
        __greenhouse_parse_subcommand 0 version h/help
        switch $unparsed_tokens[1]
        case 'water'
            __greenhouse_parse_subcommand -r 1 l/litres= fan no-fan drip steady flood json v version h/help
        case 'beds'
            __greenhouse_parse_subcommand 0 version h/help
            switch $unparsed_tokens[1]
            case 'list'
                __greenhouse_parse_subcommand 0 sort= since= json v version h/help
            case 'add'
                __greenhouse_parse_subcommand 1 crop=+ set=+ label=+ photo= notes= plan= store= neighbour= like= offset= version h/help
            end
        case 'during'
            __greenhouse_parse_subcommand -r 2 version h/help
        case 'help'
            __greenhouse_parse_subcommand -r 1 version
        end
    end
end

function __greenhouse_tokens
    if test (string split -m 1 -f 1 -- . "$FISH_VERSION") -gt 3
        commandline --tokens-raw $argv
    else
        commandline -o $argv
    end
end

function __greenhouse_parse_subcommand -S -a positional_count
    argparse -s r -- $argv
    set -l option_specs $argv[2..]
    set -l is_repeating_positional $_flag_r
    set -el _flag_r
    set -a commands $unparsed_tokens[1]
    set positional_index 0
    while true
        set -e unparsed_tokens[1]
        argparse -sn "$commands" $option_specs -- $unparsed_tokens 2> /dev/null
        set unparsed_tokens $argv
        set positional_index (math $positional_index + 1)
        for non_repeating_flag_or_option in $non_repeating_flags_or_options
            if set -ql "_flag_$(string replace -a - _ -- $non_repeating_flag_or_option)"
                set non_repeating_flags_or_options_absent 1
                break
            end
        end
        test (count $unparsed_tokens) -eq 0 -o \( -z "$is_repeating_positional" -a "$positional_index" -gt "$positional_count" \) && break
    end
end

function __greenhouse_complete_directories
    set -l token (commandline -t)
    string match -- '*/' $token
    set -l subdirs $token*/
    printf %s\n $subdirs
end

function __greenhouse_custom_completion
    set -x SAP_SHELL fish
    set -x SAP_SHELL_VERSION $FISH_VERSION
    set -l tokens (__greenhouse_tokens -p)
    if test -z "$(__greenhouse_tokens -t)"
        set -l index (count (__greenhouse_tokens -pc))
        set tokens $tokens[..$index] \'\' $tokens[(math $index + 1)..]
    end
    command $tokens[1] $argv $tokens
end

complete -c 'greenhouse' -f
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse" -eq 1' -fa 'water' -d 'Water beds: the "thirsty" [or all], it\'s quick'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse" -eq 1' -fa 'beds' -d 'The beds'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse" -eq 1' -fa 'during' -d 'Run something for a season'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse" -eq 1' -fa 'help' -d 'Show subcommand help information.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse" version' -l 'version' -d 'Show the version.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse" h help' -s 'h' -l 'help' -d 'Show help information.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse water" l litres' -s 'l' -l 'litres' -d 'Litres for each' -rf
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse water" fan no-fan' -l 'fan' -l 'no-fan' -d 'Run the fan: [off] isn\'t "still" \\ air'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse water" drip steady flood' -l 'drip' -l 'steady' -l 'flood' -d 'How fast it runs'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse water" json' -l 'json' -d 'Print JSON: one object a line'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse water"' -s 'v' -d 'Say more; give it again for still more'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse water" version' -l 'version' -d 'Show the version.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse water" h help' -s 'h' -l 'help' -d 'Show help information.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse water" -ge 1' -d 'Beds to water: it\'s [all] if none is given' -fka '(__greenhouse_custom_completion ---completion water -- positional@0 (count (__greenhouse_tokens -pc)) (__greenhouse_tokens -tC))'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse beds" -eq 1' -fa 'list' -d 'List beds'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse beds" -eq 1' -fa 'add' -d 'Add a bed'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds" version' -l 'version' -d 'Show the version.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds" h help' -s 'h' -l 'help' -d 'Show help information.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds list" sort' -l 'sort' -d 'What to go by' -rfka 'name size'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds list" since' -l 'since' -d 'Only those planted since' -rf
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds list" json' -l 'json' -d 'Print JSON: one object a line'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds list"' -s 'v' -d 'Say more; give it again for still more'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds list" version' -l 'version' -d 'Show the version.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds list" h help' -s 'h' -l 'help' -d 'Show help information.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add"' -l 'crop' -d 'What grows in it' -rfka 'beans peas \'lady\\\'s mantle\' a:b \'1\\\\2\''
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add"' -l 'set' -d 'A field: name=value' -rf
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add"' -l 'label' -d 'Its labels' -rf
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add" photo' -l 'photo' -d 'A picture' -rfa '(set -l exts png jpg;for p in (string match -e -- \'*/\' (commandline -t);or printf \\n)*.{$exts};printf %s\\n $p;end;__fish_complete_directories (commandline -t) \'\')'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add" notes' -l 'notes' -d 'Its notes' -rfa '(for p in (string match -e -- \'*/\' (commandline -t);or printf \\n)*.\'md\';printf %s\\n $p;end;__fish_complete_directories (commandline -t) \'\')'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add" plan' -l 'plan' -d 'Its plan' -rF
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add" store' -l 'store' -d 'Where to keep it' -rfa '(__greenhouse_complete_directories)'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add" neighbour' -l 'neighbour' -d 'The bed beside it' -rfka '(printf \'%s\\n\' bed:1 \'bed 2\' | tr : -)'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add" like' -l 'like' -d 'A bed to copy' -rfka '(__greenhouse_custom_completion ---completion beds add -- --like)'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add" offset' -l 'offset' -d 'Steps to the side, -5 as well' -rf
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add"' -l 'shade.net' -d 'Its net' -rf
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add" version' -l 'version' -d 'Show the version.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse beds add" h help' -s 'h' -l 'help' -d 'Show help information.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse beds add" -eq 1' -d 'What to call it'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse during" version' -l 'version' -d 'Show the version.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse during" h help' -s 'h' -l 'help' -d 'Show help information.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse during" -eq 1' -d 'When' -fka 'spring summer'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse during" -ge 2' -d 'What to run'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_flags_or_options "greenhouse help" version' -l 'version' -d 'Show the version.'
complete -c 'greenhouse' -n '__greenhouse_should_offer_completions_for_positional "greenhouse help" -ge 1' -d ''
