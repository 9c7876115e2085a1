// The shells that complete a program's command line, and all in which one differs from another.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ArgumentParser {

struct CommandInfoV0;

/// A further shell is a value here, a row in CompletionShell.cpp, and a file that makes its script.
enum class CompletionShell { zsh, bash, fish };

/// All shells, in the order in which messages list them.
inline constexpr std::array allShells{CompletionShell::zsh, CompletionShell::bash, CompletionShell::fish};

/// What is special about one shell.
struct ShellTraits {
  std::string_view name;  ///< as people type it
  /// Makes the script that completes the command line of a root command and all below it.
  std::string (*script)(const CommandInfoV0& root);
  /// Quotes one answer of a custom completion the way the shell's script reads it.
  std::string (*quotedAnswer)(std::string_view answer);
  std::string_view lastAnswer;  ///< a line that the script expects after the answers; empty for none
  std::string_view emptyWord;   ///< what the script passes for an empty word of the line
};

ShellTraits traits(CompletionShell shell);

/// The shell of that name, if it is a supported one.
std::optional<CompletionShell> shellNamed(std::string_view name);

/// The shell of a request: the one given, else the last part of `$SHELL`. Raises `ParserError`
/// (`UnsupportedShell`).
CompletionShell chosenShell(const std::optional<std::string>& given);

/// The answers of a custom completion, one a line, quoted for the shell of that name; unchanged for an
/// unknown one.
std::string response(const std::vector<std::string>& answers, std::string_view shellName);

}  // namespace ArgumentParser
