#include "ArgumentParser/completion/CompletionScriptParts.h"
#include "ArgumentParser/completion/CompletionsGenerator.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

using namespace completions;

/// `text` as a part of a completion entry, in which a colon ends the part.
std::string escapedForEntry(std::string_view text) {
  return escaped(backslashed(text, "\\:"));
}

/// One command's function while it is written: its setup lines and its argument specifications.
struct Specs {
  const CommandInfoV0& command;
  std::string setup = {};
  std::string lines = {};
  int listCount = 0;

  void addLine(const std::string& spec) { lines += "        " + spec + "\n"; }
  void addNamed(const ArgumentInfoV0& argument);
  void addPositional(const Positional& positional);
  std::string valuePart(const ArgumentInfoV0& argument, std::size_t index);
  std::string action(const ArgumentInfoV0& argument, std::size_t index);
};

/// How an argument's values are completed, as text between single quotes.
std::string Specs::action(const ArgumentInfoV0& argument, std::size_t index) {
  const std::string_view completion = kind(argument);
  if (completion == "default") return {};
  const std::vector<std::string>& texts = argument.completionKind->texts;
  if (completion == "list") {
    std::vector<std::string> words;
    for (const std::string& value : texts) words.push_back("'" + escapedForEntry(value) + "'");
    const std::string variable = "list_" + std::to_string(++listCount);
    setup += "    local -ar " + variable + "=(" + text::joined(words, " ") + ")\n";
    return forRoot("{__TOOL_complete \"${", command) + variable + "[@]}\"}";
  }
  if (completion == "file") {
    if (texts.empty()) return "_files";
    const std::string joined = escaped(text::joined(texts, "|"));
    return R"(_files -g '\''*.)" + (texts.size() > 1 ? "(" + joined + ")" : joined) + R"('\'')";
  }
  if (completion == "directory") return "_files -/";
  if (completion == "shellCommand") {
    return R"sh({local -a list;list=(${(f)"$()sh" + escaped(backslashed(texts.front(), ":")) +
           R"sh()"});_describe -V "" list})sh";
  }
  std::string call = forRoot("{__TOOL_custom_complete ", command) + customCall(command, argument, index);
  if (completion != "customDeprecated") {
    call += forRoot(R"sh( "${current_word_index}" "$(__TOOL_cursor_index_in_current_word)")sh", command);
  }
  return call + "}";
}

std::string Specs::valuePart(const ArgumentInfoV0& argument, std::size_t index) {
  return ":" + escapedForEntry(argument.valueName) + ":" + action(argument, index);
}

void Specs::addPositional(const Positional& positional) {
  const char* prefix = positional.info.isRepeating ? "*" : positional.info.isOptional ? ":" : "";
  addLine("'" + (prefix + valuePart(positional.info, positional.index)) + "'");
}

void Specs::addNamed(const ArgumentInfoV0& argument) {
  const auto all = names(argument);
  std::string description;
  if (!argument.abstract.empty()) {
    description = "[" + escaped(backslashed(argument.abstract, "\\:[]")) + "]";
  }
  if (argument.kind == "option") description += valuePart(argument, 0);
  if (all.size() == 1) {
    addLine("'" + ((argument.isRepeating ? "*" : "") + all.front()) + description + "'");
  } else {
    const std::string excluded = argument.isRepeating ? "*" : "(" + text::joined(all, " ") + ")";
    addLine("'" + excluded + "'{" + text::joined(all, ",") + "}'" + description + "'");
  }
}

std::string subcommandsBlock(const CommandInfoV0& command) {
  std::string entries;
  std::vector<std::string> words;
  for (const CommandInfoV0* child : children(command)) {
    entries += "            '" + escapedForEntry(child->commandName) + ":" +
               escapedForEntry(child->abstract) + "'\n";
    words.push_back(child->commandName);
  }
  if (words.empty()) return {};
  return R"sh(    case "${state}" in
    command)
        local -ar subcommands=(
)sh" + entries +
         R"sh(        )
        _describe -V subcommand subcommands && ret=0
        ;;
    arg)
        case "${words[1]}" in
        )sh" +
         text::joined(words, "|") + ")\n            \"" + functionName(command) +
         "_${words[1]}\" && ret=0\n            ;;\n        esac\n        ;;\n    esac\n";
}

/// What a command's function does.
std::string functionBody(const CommandInfoV0& command) {
  Specs specs{command};
  for (const Positional& each : positionals(command)) specs.addPositional(each);
  for (const ArgumentInfoV0* each : named(command)) specs.addNamed(*each);
  if (!children(command).empty()) {
    specs.addLine("'(-): :->command'");
    specs.addLine("'(-)*:: :->arg'");
  }
  return "    local -i ret=1\n" + specs.setup + "    local -ar arg_specs=(\n" + specs.lines +
         "    )\n    _arguments -w -s -S : \"${arg_specs[@]}\" && ret=0\n" + subcommandsBlock(command) +
         "\n    return \"${ret}\"\n";
}

}  // namespace

std::string zshCompletionScript(const CommandInfoV0& root) {
  return filled(zshText, root, {functionBody(root), functionsBelow(root, functionBody)});
}

}  // namespace ArgumentParser
