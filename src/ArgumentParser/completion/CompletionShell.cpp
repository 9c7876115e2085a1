#include "ArgumentParser/completion/CompletionShell.h"

#include "ArgumentParser/completion/CompletionScriptParts.h"
#include "ArgumentParser/completion/CompletionsGenerator.h"
#include "ArgumentParser/parsing/ParserError.h"
#include "platform/Environment.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

/// The answer as zsh reads it: a bare colon begins the description, `\:` is a colon of the word, and any
/// other backslash has to be doubled.
std::string quotedForZsh(std::string_view answer) {
  std::string result;
  for (std::size_t i = 0; i < answer.size(); ++i) {
    if (answer[i] == '\\' && answer.substr(i + 1, 1) != ":") result += '\\';
    result += answer[i];
  }
  return result;
}

std::string unquoted(std::string_view answer) {
  return std::string(answer);
}

}  // namespace

// There is no default, so that a shell without a row does not compile.
ShellTraits traits(CompletionShell shell) {
  switch (shell) {
    case CompletionShell::zsh:
      return {"zsh", zshCompletionScript, quotedForZsh, "_", ""};
    case CompletionShell::bash:
      return {"bash", bashCompletionScript, completions::escapedForWordList, "", ""};
    case CompletionShell::fish:
      return {"fish", fishCompletionScript, unquoted, "", "''"};
  }
  return {};
}

std::optional<CompletionShell> shellNamed(std::string_view name) {
  for (const CompletionShell shell : allShells) {
    if (traits(shell).name == name) return shell;
  }
  return std::nullopt;
}

CompletionShell chosenShell(const std::optional<std::string>& given) {
  const std::string path = given ? *given : platform::environment("SHELL").value_or("");
  if (const auto shell = shellNamed(given ? path : path.substr(path.rfind('/') + 1))) return *shell;
  throw ParserError(parser_error::UnsupportedShell{given});
}

std::string response(const std::vector<std::string>& answers, std::string_view shellName) {
  const auto shell = shellNamed(shellName);
  std::vector<std::string> lines;
  for (const std::string& each : answers) lines.push_back(shell ? traits(*shell).quotedAnswer(each) : each);
  if (shell && !traits(*shell).lastAnswer.empty()) lines.emplace_back(traits(*shell).lastAnswer);
  return text::joined(lines, "\n");
}

}  // namespace ArgumentParser
