#include <algorithm>
#include <set>

#include "ArgumentParser/completion/CompletionScriptParts.h"
#include "ArgumentParser/completion/CompletionsGenerator.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

using namespace completions;

/// `text` as a single-quoted word of fish.
std::string fishQuoted(std::string_view text) {
  return "'" + backslashed(text, "\\'") + "'";
}

/// `text` as a word of fish, quoted where that is needed.
std::string fishWord(const std::string& text) {
  constexpr std::string_view plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+=./:,@%";
  const bool isPlain = !text.empty() && text.find_first_not_of(plain) == std::string::npos;
  return isPlain ? text : fishQuoted(text);
}

std::string fishWords(const std::vector<std::string>& texts) {
  std::vector<std::string> words;
  for (const std::string& each : texts) words.push_back(fishWord(each));
  return text::joined(words, " ");
}

/// Whether `argparse` takes the character for a letter or digit in every locale.
bool isAlphanumeric(std::string_view character) {
  const bool isASCII = character.size() == 1;
  const bool isDigit = isASCII && character >= "0" && character <= "9";
  const bool hasCase = text::lowercased(character) != character || text::uppercased(character) != character;
  // A letter with a combining mark is several code points.
  return isDigit || (hasCase && text::firstCodePoint(character).length == character.size());
}

/// Whether `argparse` can tell the name from others: it knows "-x" and "--xyz" only, of letters and digits,
/// dashes and underscores, and refuses all specifications if it refuses one.
bool isParsable(const NameInfoV0& name) {
  const auto characters = text::clusters(name.name);
  if (characters.empty() || !isAlphanumeric(characters.front())) return false;
  if (name.kind == "short") return characters.size() == 1;
  return name.kind == "long" && characters.size() > 1 &&
         std::all_of(characters.begin(), characters.end(), [](std::string_view each) {
           return each == "-" || each == "_" || isAlphanumeric(each);
         });
}

/// The specifications with which `argparse` takes the command's options and flags off a line.
std::vector<std::string> optionSpecs(const CommandInfoV0& command) {
  std::vector<std::string> specs;
  // `argparse` refuses to work at all if a name is specified twice; the first is the command's own.
  std::set<std::string> seen;
  for (const ArgumentInfoV0* each : named(command)) {
    std::vector<std::string> shorts, longs;
    for (const NameInfoV0& name : each->names) {
      if (isParsable(name) && seen.insert(name.name).second) {
        (name.kind == "short" ? shorts : longs).push_back(name.name);
      }
    }
    const char* suffix = each->kind != "option" ? "" : each->isRepeating ? "=+" : "=";
    for (std::size_t i = 0; i < std::max(shorts.size(), longs.size()); ++i) {
      std::string spec = i < shorts.size() ? shorts[i] : "";
      if (i < longs.size()) spec += (spec.empty() ? "" : "/") + longs[i];
      specs.push_back(spec + suffix);
    }
  }
  return specs;
}

/// The case of a command and of all below it, for the switch over the words of a line.
std::string commandCase(const CommandInfoV0& command, const std::string& indent) {
  const auto [count, isRepeating] = positionalCount(command);
  std::string result = indent + "case " + fishQuoted(command.commandName) + "\n" + indent +
                       forRoot("    __TOOL_parse_subcommand ", command) + (isRepeating ? "-r " : "") +
                       std::to_string(count);
  if (const auto specs = optionSpecs(command); !specs.empty()) result += " " + fishWords(specs);
  result += "\n";
  if (children(command).empty()) return result;
  result += indent + "    switch $unparsed_tokens[1]\n";
  for (const CommandInfoV0* child : children(command)) result += commandCase(*child, indent + "    ");
  return result + indent + "    end\n";
}

/// The part of a `complete` line that offers an argument's values: its flags, without the `-`.
std::string valueCompletion(const CommandInfoV0& command, const ArgumentInfoV0& argument, std::size_t index) {
  const std::string_view completion = kind(argument);
  if (completion == "default") return argument.kind == "option" ? "f" : "";
  const std::vector<std::string>& texts = argument.completionKind->texts;
  if (completion == "list") return "fka " + fishQuoted(fishWords(texts));
  if (completion == "file") {
    if (texts.empty()) return "F";
    const std::string paths = R"((string match -e -- '*/' (commandline -t);or printf \n)*.)";
    const std::string print = R"(;printf %s\n $p;end;__fish_complete_directories (commandline -t) ''))";
    const std::string loop = texts.size() == 1
                                 ? "(for p in " + paths + fishQuoted(texts.front())
                                 : "(set -l exts " + fishWords(texts) + ";for p in " + paths + "{$exts}";
    return "fa " + fishQuoted(loop + print);
  }
  if (completion == "directory") return "fa " + fishQuoted(forRoot("(__TOOL_complete_directories)", command));
  if (completion == "shellCommand") return "fka " + fishQuoted("(" + texts.front() + ")");
  std::string call = forRoot("(__TOOL_custom_completion ", command) + customCall(command, argument, index);
  if (completion != "customDeprecated") {
    call += forRoot(" (count (__TOOL_tokens -pc)) (__TOOL_tokens -tC)", command);
  }
  return "fka " + fishQuoted(call + ")");
}

/// The start of a `complete` line that applies where the shared function `test` says so.
std::string completeLine(const CommandInfoV0& command, const std::string& test,
                         const std::string& arguments) {
  const std::string condition = forRoot("__TOOL_should_offer_completions_for_", command) + test + " \"" +
                                text::joined(path(command), " ") + "\"" + arguments;
  return "complete -c " + fishQuoted(path(command).front()) + " -n " + fishQuoted(condition);
}

std::string namedLine(const CommandInfoV0& command, const ArgumentInfoV0& argument) {
  std::string nonRepeating, flags;
  for (const NameInfoV0& name : argument.names) {
    if (!argument.isRepeating && isParsable(name)) nonRepeating += " " + name.name;
    const char* flag = name.kind == "short" ? " -s " : name.kind == "long" ? " -l " : " -o ";
    flags += flag + fishQuoted(name.name);
  }
  std::string line = completeLine(command, "flags_or_options", nonRepeating) + flags + " -d " +
                     fishQuoted(argument.abstract);
  if (argument.kind == "option") line += " -r" + valueCompletion(command, argument, 0);
  return line + "\n";
}

std::string positionalLine(const CommandInfoV0& command, const Positional& positional) {
  const std::string comparison =
      (positional.info.isRepeating ? " -ge " : " -eq ") + std::to_string(positional.index + 1);
  std::string line =
      completeLine(command, "positional", comparison) + " -d " + fishQuoted(positional.info.abstract);
  const std::string values = valueCompletion(command, positional.info, positional.index);
  if (!values.empty()) line += " -" + values;
  return line + "\n";
}

void appendLines(std::string& script, const CommandInfoV0& command) {
  const std::string afterPositionals = " -eq " + std::to_string(positionalCount(command).count + 1);
  for (const CommandInfoV0* child : children(command)) {
    script += completeLine(command, "positional", afterPositionals) + " -fa " +
              fishQuoted(fishWord(child->commandName)) + " -d " + fishQuoted(child->abstract) + "\n";
  }
  for (const ArgumentInfoV0* each : named(command)) script += namedLine(command, *each);
  for (const Positional& each : positionals(command)) script += positionalLine(command, each);
  for (const CommandInfoV0* child : children(command)) appendLines(script, *child);
}

}  // namespace

std::string fishCompletionScript(const CommandInfoV0& root) {
  std::string lines;
  appendLines(lines, root);
  return filled(fishText, root, {commandCase(root, "    "), lines});
}

}  // namespace ArgumentParser
