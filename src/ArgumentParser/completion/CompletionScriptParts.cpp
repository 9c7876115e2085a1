#include "ArgumentParser/completion/CompletionScriptParts.h"

#include "text/Unicode.h"

namespace ArgumentParser::completions {

std::vector<const CommandInfoV0*> children(const CommandInfoV0& command) {
  std::vector<const CommandInfoV0*> result;
  for (const CommandInfoV0& child : command.subcommands) {
    if (child.shouldDisplay) result.push_back(&child);
  }
  return result;
}

std::vector<const ArgumentInfoV0*> named(const CommandInfoV0& command) {
  std::vector<const ArgumentInfoV0*> result;
  for (const ArgumentInfoV0& argument : command.arguments) {
    if (argument.shouldDisplay && argument.kind != "positional") result.push_back(&argument);
  }
  return result;
}

std::vector<Positional> positionals(const CommandInfoV0& command) {
  std::vector<Positional> result;
  std::size_t index = 0;
  for (const ArgumentInfoV0& argument : command.arguments) {
    if (argument.kind != "positional") continue;
    if (argument.shouldDisplay) result.push_back({argument, index});
    ++index;
  }
  return result;
}

PositionalCount positionalCount(const CommandInfoV0& command) {
  PositionalCount result;
  for (const ArgumentInfoV0& argument : command.arguments) {
    if (argument.kind != "positional") continue;
    ++result.count;
    result.isRepeating = result.isRepeating || argument.isRepeating;
  }
  return result;
}

std::vector<std::string> path(const CommandInfoV0& command) {
  std::vector<std::string> result = command.superCommands;
  result.push_back(command.commandName);
  return result;
}

std::string functionName(const CommandInfoV0& command) {
  return "_" + text::joined(path(command), "_");
}

std::vector<std::string> names(const ArgumentInfoV0& argument) {
  std::vector<std::string> result;
  for (const NameInfoV0& name : argument.names) result.push_back(name.synopsisString());
  return result;
}

std::string customCall(const CommandInfoV0& command, const ArgumentInfoV0& argument, std::size_t index) {
  auto words = path(command);
  words.front() = "---completion";
  words.emplace_back("--");
  words.push_back(argument.preferredName ? argument.preferredName->synopsisString()
                                         : "positional@" + std::to_string(index));
  return text::joined(words, " ");
}

std::string_view kind(const ArgumentInfoV0& argument) {
  return argument.completionKind ? std::string_view(argument.completionKind->kind) : "default";
}

std::string replaced(std::string text, std::string_view what, std::string_view with) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
    text.replace(at, what.size(), with);
  }
  return text;
}

std::string forRoot(std::string_view pattern, const CommandInfoV0& command) {
  return replaced(std::string(pattern), "TOOL", path(command).front());
}

std::string functionsBelow(const CommandInfoV0& command,
                           std::string (*functionBody)(const CommandInfoV0& command)) {
  std::string result;
  for (const CommandInfoV0* child : children(command)) {
    result += functionName(*child) + "() {\n" + functionBody(*child) + "}\n\n" +
              functionsBelow(*child, functionBody);
  }
  return result;
}

std::string filled(std::string_view script, const CommandInfoV0& command,
                   std::initializer_list<std::string> parts) {
  std::string result;
  auto part = parts.begin();
  for (const std::string_view line : text::split(script, '\n')) {
    if (text::trimmed(line).starts_with("# <")) {
      result += *part++;
    } else {
      result += forRoot(line, command) + "\n";
    }
  }
  // One newline ends the file's last line; the other comes from the empty piece that `split` gives after it.
  result.resize(result.find_last_not_of('\n') + 1);
  return result;
}

std::string backslashed(std::string_view text, std::string_view characters) {
  std::string result;
  for (const char c : text) {
    if (characters.find(c) != std::string_view::npos) result += '\\';
    result += c;
  }
  return result;
}

std::string escaped(std::string_view text) {
  return replaced(std::string(text), "'", R"('\'')");
}

std::string shellQuoted(std::string_view text) {
  return "'" + escaped(text) + "'";
}

std::string escapedForWordList(std::string_view text) {
  return backslashed(text, "\\'\"$`{}~<>");
}

}  // namespace ArgumentParser::completions
