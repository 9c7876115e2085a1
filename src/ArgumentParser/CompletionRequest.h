// The requests that are looked for before any command is parsed: completion scripts, and the call that such a
// script makes to complete a value.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ArgumentParser/CommandTree.h"
#include "ArgumentParser/SplitArguments.h"

namespace ArgumentParser {

/// The shells that completion scripts are made for, by the names that people give them.
struct CompletionShell {
  std::string rawValue;

  static const std::array<std::string_view, 3> allCases;
  /// The shell of that name, if it is a supported one.
  static std::optional<CompletionShell> named(std::string_view name);
  /// The shell of a request: the one given, else the last part of `$SHELL`. Raises `ParserError`
  /// (`UnsupportedShell`).
  static CompletionShell chosen(const std::optional<std::string>& given);
};

/// Raises `ParserError` (`CompletionScriptRequested`) if the line holds --generate-completion-script.
void checkForCompletionScriptRequest(const SplitArguments& split, const CommandTree& tree);

/// If the first argument is "---completion", raises `ParserError`: `CompletionScriptCustomResponse` with the
/// completions, one a line, or `InvalidState` if the call names no command or argument with completions.
void checkForCompletionCall(const std::vector<std::string>& arguments, const CommandTree& tree);

}  // namespace ArgumentParser
