#include "ArgumentParser/manual/ManualParts.h"

#include <algorithm>

#include "text/Unicode.h"

namespace ArgumentParser {

ManualTexts ManualTexts::from(std::string_view text) {
  ManualTexts result;
  for (const std::string_view line : text::split(text, '\n')) {
    if (line.starts_with("# ")) {
      result.sections.push_back({std::string(text::trimmed(line.substr(2))), {}});
    } else if (!result.sections.empty()) {
      result.sections.back().body.append(line).append("\n");
    }
  }
  return result;
}

namespace manual {

std::vector<const CommandInfoV0*> children(const CommandInfoV0& command) {
  std::vector<const CommandInfoV0*> result;
  for (const CommandInfoV0& child : command.subcommands) {
    if (child.shouldDisplay) result.push_back(&child);
  }
  return result;
}

std::vector<const ArgumentInfoV0*> arguments(const CommandInfoV0& command) {
  std::vector<const ArgumentInfoV0*> result;
  for (const ArgumentInfoV0& argument : command.arguments) {
    if (argument.shouldDisplay) result.push_back(&argument);
  }
  std::stable_partition(result.begin(), result.end(),
                        [](const ArgumentInfoV0* each) { return each->kind == "positional"; });
  return result;
}

std::string path(const CommandInfoV0& command, const char* separator) {
  auto names = command.superCommands;
  names.push_back(command.commandName);
  return text::joined(names, separator);
}

std::string summary(const ArgumentInfoV0& argument) {
  std::vector<std::string> notes;
  if (!argument.allValues.empty() && argument.allValueDescriptions.empty()) {
    notes.push_back("values: " + text::joined(argument.allValues, ", "));
  }
  if (argument.defaultValue) notes.push_back("default: " + *argument.defaultValue);
  const std::string note = notes.empty() ? "" : "(" + text::joined(notes, "; ") + ")";
  return argument.abstract + (argument.abstract.empty() || note.empty() ? "" : " ") + note;
}

std::vector<Block> blocks(const std::string& body) {
  using Kind = Block::Kind;
  std::vector<Block> result;
  bool continues = false;
  for (const std::string_view line : text::split(body, '\n')) {
    const bool isExample = line.starts_with("    ");
    if (text::trimmed(line).empty()) {
      continues = false;
    } else if (isExample) {
      const bool isFurther = !result.empty() && result.back().kind == Kind::example;
      if (!isFurther) result.push_back({Kind::example, {}, {}});
      result.back().text.append(line.substr(4)).append("\n");
      continues = false;
    } else if (line.starts_with("- ")) {
      const std::size_t colon = std::min(line.find(": "), line.size());
      result.push_back({Kind::item, std::string(line.substr(2, colon - 2)),
                        std::string(text::trimmed(line.substr(std::min(colon + 1, line.size()))))});
      continues = true;
    } else if (continues) {
      result.back().text.append(" ").append(text::trimmed(line));
    } else {
      result.push_back({Kind::paragraph, {}, std::string(text::trimmed(line))});
      continues = true;
    }
  }
  return result;
}

}  // namespace manual
}  // namespace ArgumentParser
