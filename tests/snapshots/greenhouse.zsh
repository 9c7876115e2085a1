#compdef greenhouse

__greenhouse_complete() {
    local -ar non_empty_completions=("${@:#(|:*)}")
    local -ar empty_completions=("${(M)@:#(|:*)}")
    _describe -V '' non_empty_completions -- empty_completions -P $'\'\''
}


__greenhouse_custom_complete() {
    local -a completions
    completions=("${(@f)"$("${command_name}" "${@}" "${command_line[@]}")"}")
    if [[ "${#completions[@]}" -gt 1 ]]; then
        __greenhouse_complete "${completions[@]:0:-1}"
    fi
}


__greenhouse_cursor_index_in_current_word() {
    if [[ -z "${QIPREFIX}${IPREFIX}${PREFIX}" ]]; then
        printf 0
    else
        printf %s "${#${(z)LBUFFER}[-1]}"
    fi
}


_greenhouse() {
    emulate -RL zsh -G
    setopt extendedglob nullglob numericglobsort
    unsetopt aliases banghist

    local -xr SAP_SHELL=zsh
    local -x SAP_SHELL_VERSION
    SAP_SHELL_VERSION="$(builtin emulate zsh -c 'printf %s "${ZSH_VERSION}"')"
    local -r SAP_SHELL_VERSION

    local context state state_descr line
    local -A opt_args

    local -r command_name="${words[1]}"
    local -ar command_line=("${words[@]}")
    local -ir current_word_index="$((CURRENT - 1))"


    local -i ret=1
    local -ar arg_specs=(
        '--version[Show the version.]'
        '(-h --help)'{-h,--help}'[Show help information.]'
        '(-): :->command'
        '(-)*:: :->arg'
    )
    _arguments -w -s -S : "${arg_specs[@]}" && ret=0
    case "${state}" in
    command)
        local -ar subcommands=(
            'water:Water beds\: the "thirsty" [or all], it'\''s quick'
            'beds:The beds'
            'during:Run something for a season'
            'help:Show subcommand help information.'
        )
        _describe -V subcommand subcommands && ret=0
        ;;
    arg)
        case "${words[1]}" in
        water|beds|during|help)
            "_greenhouse_${words[1]}" && ret=0
            ;;
        esac
        ;;
    esac

    return "${ret}"
}

_greenhouse_water() {
    local -i ret=1
    local -ar arg_specs=(
        '*:beds:{__greenhouse_custom_complete ---completion water -- positional@0 "${current_word_index}" "$(__greenhouse_cursor_index_in_current_word)"}'
        '(-l --litres)'{-l,--litres}'[Litres for each]:litres:'
        '(--fan --no-fan)'{--fan,--no-fan}'[Run the fan\: \[off\] isn'\''t "still" \\ air]'
        '(--drip --steady --flood)'{--drip,--steady,--flood}'[How fast it runs]'
        '--json[Print JSON\: one object a line]'
        '*-v[Say more; give it again for still more]'
        '--version[Show the version.]'
        '(-h --help)'{-h,--help}'[Show help information.]'
    )
    _arguments -w -s -S : "${arg_specs[@]}" && ret=0

    return "${ret}"
}

_greenhouse_beds() {
    local -i ret=1
    local -ar arg_specs=(
        '--version[Show the version.]'
        '(-h --help)'{-h,--help}'[Show help information.]'
        '(-): :->command'
        '(-)*:: :->arg'
    )
    _arguments -w -s -S : "${arg_specs[@]}" && ret=0
    case "${state}" in
    command)
        local -ar subcommands=(
            'list:List beds'
            'add:Add a bed'
        )
        _describe -V subcommand subcommands && ret=0
        ;;
    arg)
        case "${words[1]}" in
        list|add)
            "_greenhouse_beds_${words[1]}" && ret=0
            ;;
        esac
        ;;
    esac

    return "${ret}"
}

_greenhouse_beds_list() {
    local -i ret=1
    local -ar list_1=('name' 'size')
    local -ar arg_specs=(
        '--sort[What to go by]:sort:{__greenhouse_complete "${list_1[@]}"}'
        '--since[Only those planted since]:since:'
        '--json[Print JSON\: one object a line]'
        '*-v[Say more; give it again for still more]'
        '--version[Show the version.]'
        '(-h --help)'{-h,--help}'[Show help information.]'
    )
    _arguments -w -s -S : "${arg_specs[@]}" && ret=0

    return "${ret}"
}

_greenhouse_beds_add() {
    local -i ret=1
    local -ar list_1=('beans' 'peas' 'lady'\''s mantle' 'a\:b' '1\\2')
    local -ar arg_specs=(
        ':name:'
        '*--crop[What grows in it]:crop:{__greenhouse_complete "${list_1[@]}"}'
        '*--set[A field\: name=value]:set:'
        '*--label[Its labels]:label:'
        '--photo[A picture]:photo:_files -g '\''*.(png|jpg)'\'''
        '--notes[Its notes]:notes:_files -g '\''*.md'\'''
        '--plan[Its plan]:plan:_files'
        '--store[Where to keep it]:store:_files -/'
        '--neighbour[The bed beside it]:neighbour:{local -a list;list=(${(f)"$(printf '\''%s\n'\'' bed\:1 '\''bed 2'\'' | tr \: -)"});_describe -V "" list}'
        '--like[A bed to copy]:like:{__greenhouse_custom_complete ---completion beds add -- --like}'
        '--offset[Steps to the side, -5 as well]:offset:'
        '--shade.net[Its net]:shade.net:'
        '--version[Show the version.]'
        '(-h --help)'{-h,--help}'[Show help information.]'
    )
    _arguments -w -s -S : "${arg_specs[@]}" && ret=0

    return "${ret}"
}

_greenhouse_during() {
    local -i ret=1
    local -ar list_1=('spring' 'summer')
    local -ar arg_specs=(
        ':season:{__greenhouse_complete "${list_1[@]}"}'
        '*:line:'
        '--version[Show the version.]'
        '(-h --help)'{-h,--help}'[Show help information.]'
    )
    _arguments -w -s -S : "${arg_specs[@]}" && ret=0

    return "${ret}"
}

_greenhouse_help() {
    local -i ret=1
    local -ar arg_specs=(
        '*:subcommands:'
        '--version[Show the version.]'
    )
    _arguments -w -s -S : "${arg_specs[@]}" && ret=0

    return "${ret}"
}

if [[ "${funcstack[1]}" = _greenhouse ]]; then
    _greenhouse "${@}"
else
    compdef _greenhouse greenhouse
fi
