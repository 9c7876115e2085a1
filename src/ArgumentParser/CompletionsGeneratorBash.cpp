#include "ArgumentParser/CompletionScriptParts.h"
#include "ArgumentParser/CompletionsGenerator.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

using namespace completions;

constexpr std::string_view prelude = R"sh(#!/bin/bash

__TOOL_cursor_index_in_current_word() {
    local remaining="${COMP_LINE}"

    local word
    for word in "${COMP_WORDS[@]::COMP_CWORD}"; do
        remaining="${remaining##*([[:space:]])"${word}"*([[:space:]])}"
    done

    local -ir index="$((COMP_POINT - ${#COMP_LINE} + ${#remaining}))"
    if [[ "${index}" -le 0 ]]; then
        printf 0
    else
        printf %s "${index}"
    fi
}

# positional arguments:
#
# - 1: the current (sub)command's count of positional arguments
#
# required variables:
#
# - repeating_flags: the repeating flags that the current (sub)command can accept
# - non_repeating_flags: the non-repeating flags that the current (sub)command can accept
# - repeating_options: the repeating options that the current (sub)command can accept
# - non_repeating_options: the non-repeating options that the current (sub)command can accept
# - positional_number: value ignored
# - unparsed_words: unparsed words from the current command line
#
# modified variables:
#
# - non_repeating_flags: remove flags for this (sub)command that are already on the command line
# - non_repeating_options: remove options for this (sub)command that are already on the command line
# - positional_number: set to the current positional number
# - unparsed_words: remove all flags, options, and option values for this (sub)command

__TOOL_offer_flags_options() {
    local -ir positional_count="${1}"
    positional_number=0

    local was_flag_option_terminator_seen=false
    local is_parsing_option_value=false

    local -ar unparsed_word_indices=("${!unparsed_words[@]}")
    local -i word_index
    for word_index in "${unparsed_word_indices[@]}"; do
        if "${is_parsing_option_value}"; then
            # This word is an option value:
            # Reset marker for next word iff not currently the last word
            [[ "${word_index}" -ne "${unparsed_word_indices[${#unparsed_word_indices[@]} - 1]}" ]] && is_parsing_option_value=false
            unset "unparsed_words[${word_index}]"
            # Do not process this word as a flag or an option
            continue
        fi

        local word="${unparsed_words["${word_index}"]}"
        if ! "${was_flag_option_terminator_seen}"; then
            case "${word}" in
            --)
                unset "unparsed_words[${word_index}]"
                # by itself -- is a flag/option terminator, but if it is the last word, it is the start of a completion
                if [[ "${word_index}" -ne "${unparsed_word_indices[${#unparsed_word_indices[@]} - 1]}" ]]; then
                    was_flag_option_terminator_seen=true
                fi
                continue
                ;;
            -*)
                # ${word} is a flag or an option
                # If ${word} is an option, mark that the next word to be parsed is an option value
                local option
                for option in "${repeating_options[@]}" "${non_repeating_options[@]}"; do
                    [[ "${word}" = "${option}" ]] && is_parsing_option_value=true && break
                done

                # Remove ${word} from ${non_repeating_flags} or ${non_repeating_options} so it isn't offered again
                local not_found=true
                local -i index
                for index in "${!non_repeating_flags[@]}"; do
                    if [[ "${non_repeating_flags[${index}]}" = "${word}" ]]; then
                        unset "non_repeating_flags[${index}]"
                        non_repeating_flags=("${non_repeating_flags[@]}")
                        not_found=false
                        break
                    fi
                done
                if "${not_found}"; then
                    for index in "${!non_repeating_options[@]}"; do
                        if [[ "${non_repeating_options[${index}]}" = "${word}" ]]; then
                            unset "non_repeating_options[${index}]"
                            non_repeating_options=("${non_repeating_options[@]}")
                            break
                        fi
                    done
                fi
                unset "unparsed_words[${word_index}]"
                continue
                ;;
            esac
        fi

        # ${word} is neither a flag, nor an option, nor an option value
        if [[ "${positional_number}" -lt "${positional_count}" || "${positional_count}" -lt 0 ]]; then
            # ${word} is a positional
            ((positional_number++))
            unset "unparsed_words[${word_index}]"
        else
            if [[ -z "${word}" ]]; then
                # Could be completing a flag, option, or subcommand
                positional_number=-1
            else
                # ${word} is a subcommand or invalid, so stop processing this (sub)command
                positional_number=-2
            fi
            break
        fi
    done

    unparsed_words=("${unparsed_words[@]}")

    if\
        ! "${was_flag_option_terminator_seen}"\
        && ! "${is_parsing_option_value}"\
        && [[ ("${cur}" = -* && "${positional_number}" -ge 0) || "${positional_number}" -eq -1 ]]
    then
        COMPREPLY+=($(compgen -W "${repeating_flags[*]} ${non_repeating_flags[*]} ${repeating_options[*]} ${non_repeating_options[*]}" -- "${cur}"))
    fi
}


__TOOL_add_completions() {
    local completion
    while IFS='' read -r completion; do
        COMPREPLY+=("${completion}")
    done < <(IFS=$'\n' compgen "${@}" -- "${cur}")
}


__TOOL_custom_complete() {
    if [[ -n "${cur}" || -z ${COMP_WORDS[${COMP_CWORD}]} || "${COMP_LINE:${COMP_POINT}:1}" != ' ' ]]; then
        local -ar words=("${COMP_WORDS[@]}")
    else
        local -ar words=("${COMP_WORDS[@]::${COMP_CWORD}}" '' "${COMP_WORDS[@]:${COMP_CWORD}}")
    fi

    "${COMP_WORDS[0]}" "${@}" "${words[@]}"
}



)sh";

/// What the root's function sets up for those below it.
constexpr std::string_view rootSetup = R"sh(    local state
    state="$(shopt -p;shopt -po)"
    trap "${state//$'\n'/;}" RETURN
    shopt -s extglob
    set +o history +o posix

    local -xr SAP_SHELL=bash
    local -x SAP_SHELL_VERSION
    SAP_SHELL_VERSION="$(IFS='.';printf %s "${BASH_VERSINFO[*]}")"
    local -r SAP_SHELL_VERSION

    local -r cur="${2}"
    local -r prev="${3}"

    local -i positional_number
    local -a unparsed_words=("${COMP_WORDS[@]:1:${COMP_CWORD}}")


)sh";

/// The line that offers an argument's values; empty if there is nothing to offer.
std::string valueCompletion(const CommandInfoV0& command, const ArgumentInfoV0& argument, std::size_t index) {
  const std::string_view completion = kind(argument);
  if (completion == "default") return {};
  const std::vector<std::string>& texts = argument.completionKind->texts;
  std::string line = forRoot("        __TOOL_add_completions ", command);
  if (completion == "list") {
    std::vector<std::string> words;
    for (const std::string& value : texts) words.push_back(escaped(escapedForWordList(value)));
    line += "-W '" + text::joined(words, R"('$'\n'')") + "'";
  } else if (completion == "file" && texts.empty()) {
    line += "-f";
  } else if (completion == "file") {
    line += "-o plusdirs -fX '!*.@(" + escaped(text::joined(texts, "|")) + ")'";
  } else if (completion == "directory") {
    line += "-d";
  } else if (completion == "shellCommand") {
    line += "-W \"$(eval '" + escaped(texts.front()) + "')\"";
  } else {
    line += forRoot("-W \"$(__TOOL_custom_complete ", command) + customCall(command, argument, index);
    if (completion != "customDeprecated") {
      line += forRoot(R"sh( "${COMP_CWORD}" "$(__TOOL_cursor_index_in_current_word)")sh", command);
    }
    line += ")\"";
  }
  return line + "\n";
}

std::string arrayLine(const CommandInfoV0& command, const std::string& array, bool takesValue,
                      bool isRepeating) {
  std::vector<std::string> words;
  for (const ArgumentInfoV0* each : named(command)) {
    if ((each->kind == "option") != takesValue || each->isRepeating != isRepeating) continue;
    for (std::string& name : names(*each)) words.push_back(std::move(name));
  }
  // The other functions fill the root's arrays.
  return std::string("    ") + (command.superCommands.empty() ? "local -a " : "") + array + "=(" +
         text::joined(words, " ") + ")\n";
}

std::string caseOf(const std::string& label, const std::string& body) {
  return "    " + label + ")\n" + body + "        return\n        ;;\n";
}

std::string optionValuesBlock(const CommandInfoV0& command) {
  std::string cases;
  for (const ArgumentInfoV0* each : named(command)) {
    if (each->kind != "option") continue;
    std::vector<std::string> labels;
    for (const std::string& name : names(*each)) labels.push_back(quoted(name));
    // An option without completions has its case too: nothing else may be offered for its value.
    cases += caseOf(text::joined(labels, "|"), valueCompletion(command, *each, 0));
  }
  if (cases.empty()) return {};
  return "\n    # Offer option value completions\n    case \"${prev}\" in\n" + cases + "    esac\n";
}

std::string positionalsBlock(const CommandInfoV0& command) {
  std::string cases;
  for (const auto& [info, index] : positionals(command)) {
    const std::string completion = valueCompletion(command, info, index);
    const std::string label = info.isRepeating ? "*" : std::to_string(index + 1);
    if (!completion.empty()) cases += caseOf(label, completion);
  }
  if (cases.empty()) return {};
  return "\n    # Offer positional completions\n    case \"${positional_number}\" in\n" + cases +
         "    esac\n";
}

std::string subcommandsBlock(const CommandInfoV0& command) {
  std::vector<std::string> labels, words;
  for (const CommandInfoV0* child : children(command)) {
    labels.push_back(quoted(child->commandName));
    words.push_back(child->commandName);
  }
  if (labels.empty()) return {};
  return R"sh(
    # Offer subcommand / subcommand argument completions
    local -r subcommand="${unparsed_words[0]}"
    unset 'unparsed_words[0]'
    unparsed_words=("${unparsed_words[@]}")
    case "${subcommand}" in
    )sh" +
         text::joined(labels, "|") + ")\n        # Offer subcommand argument completions\n        \"" +
         functionName(command) +
         "_${subcommand}\"\n        ;;\n    *)\n        # Offer subcommand completions\n"
         "        COMPREPLY+=($(compgen -W '" +
         escaped(text::joined(words, " ")) + "' -- \"${cur}\"))\n        ;;\n    esac\n";
}

void appendFunctions(std::string& script, const CommandInfoV0& command) {
  const auto [count, isRepeating] = positionalCount(command);
  script += functionName(command) + "() {\n";
  if (command.superCommands.empty()) script += rootSetup;
  script += arrayLine(command, "repeating_flags", false, true) +
            arrayLine(command, "non_repeating_flags", false, false) +
            arrayLine(command, "repeating_options", true, true) +
            arrayLine(command, "non_repeating_options", true, false) +
            forRoot("    __TOOL_offer_flags_options ", command) +
            (isRepeating ? "-1" : std::to_string(count)) + "\n" + optionValuesBlock(command) +
            positionalsBlock(command) + subcommandsBlock(command) + "}\n\n";
  for (const CommandInfoV0* child : children(command)) appendFunctions(script, *child);
}

}  // namespace

std::string bashCompletionScript(const CommandInfoV0& root) {
  std::string script = forRoot(prelude, root);
  appendFunctions(script, root);
  return script + forRoot("complete -o filenames -F _TOOL TOOL", root);
}

}  // namespace ArgumentParser
