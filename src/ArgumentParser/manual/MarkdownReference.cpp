#include "ArgumentParser/manual/ManualParts.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

using namespace manual;

/// `text` with a backslash before what Markdown would take for a mark.
std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (std::string_view("\\`*_[]<>#|").find(c) != std::string_view::npos) result += '\\';
    result += c;
  }
  return result;
}

std::string label(const ArgumentInfoV0& argument) {
  if (argument.kind == "positional") return "`<" + argument.valueName + ">`";
  std::vector<std::string> names;
  for (const NameInfoV0& name : argument.names) names.push_back(name.synopsisString());
  return "`" + text::joined(names, ", ") + (argument.kind == "flag" ? "" : " <" + argument.valueName + ">") +
         "`";
}

std::string usageOf(const CommandInfoV0& command) {
  std::string result = path(command, " ");
  for (const ArgumentInfoV0& argument : command.arguments) {
    if (!argument.shouldDisplay) continue;
    std::string text = argument.kind == "positional" ? "" : argument.preferredName->synopsisString();
    if (argument.kind != "flag")
      text.append(text.empty() ? "<" : " <").append(argument.valueName).append(">");
    if (argument.isRepeating) text += " ...";
    if (argument.isOptional) text.insert(0, "[").append("]");
    result.append(argument.parsingStrategy == "postTerminator" ? " -- " : " ").append(text);
  }
  return result + (children(command).empty() ? "" : " <subcommand>");
}

void append(std::string& result, const CommandInfoV0& command, const std::string& heading) {
  result += heading + " " + escaped(path(command, " ")) + "\n\n";
  if (!command.abstract.empty()) result += escaped(command.abstract) + "\n\n";
  result += "```\n" + usageOf(command) + "\n```\n\n";
  if (!command.discussion.empty()) result += escaped(command.discussion) + "\n\n";
  const auto all = arguments(command);
  for (const ArgumentInfoV0* argument : all) {
    const std::string text = summary(*argument);
    result += "- " + label(*argument) + (text.empty() ? "" : ": " + escaped(text)) + "\n";
    for (const auto& [value, description] : argument->allValueDescriptions) {
      result += "  - `" + value + "`: " + escaped(description) + "\n";
    }
  }
  if (!all.empty()) result += "\n";
  for (const CommandInfoV0* child : children(command)) append(result, *child, "##");
}

}  // namespace

std::string markdownReference(const ToolInfoV0& info, const ManualTexts& texts) {
  std::string result;
  append(result, info.command, "#");
  for (const auto& [title, body] : texts.sections) {
    result += "## " + escaped(title) + "\n\n" + std::string(text::trimmed(body)) + "\n\n";
  }
  while (result.ends_with("\n\n")) result.pop_back();
  return result;
}

}  // namespace ArgumentParser
