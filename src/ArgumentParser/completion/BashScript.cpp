#include "ArgumentParser/completion/CompletionScriptParts.h"
#include "ArgumentParser/completion/CompletionsGenerator.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

using namespace completions;

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
    for (const std::string& name : names(*each)) labels.push_back(shellQuoted(name));
    // An option without completions needs its case too, so that nothing else is offered for its value.
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
    labels.push_back(shellQuoted(child->commandName));
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

/// What a command's function does.
std::string functionBody(const CommandInfoV0& command) {
  const auto [count, isRepeating] = positionalCount(command);
  return arrayLine(command, "repeating_flags", false, true) +
         arrayLine(command, "non_repeating_flags", false, false) +
         arrayLine(command, "repeating_options", true, true) +
         arrayLine(command, "non_repeating_options", true, false) +
         forRoot("    __TOOL_offer_flags_options ", command) + (isRepeating ? "-1" : std::to_string(count)) +
         "\n" + optionValuesBlock(command) + positionalsBlock(command) + subcommandsBlock(command);
}

}  // namespace

std::string bashCompletionScript(const CommandInfoV0& root) {
  return filled(bashText, root, {functionBody(root), functionsBelow(root, functionBody)});
}

}  // namespace ArgumentParser
