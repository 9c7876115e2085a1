// The requests that are looked for before any command is parsed: completion scripts, and the call that such a
// script makes to complete a value.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ArgumentParser/declarations/CommandTree.h"
#include "ArgumentParser/parsing/Outcome.h"
#include "ArgumentParser/parsing/SplitArguments.h"

namespace ArgumentParser {

/// The request for a script, if the line holds --generate-completion-script. Raises `ParserError`
/// (`UnsupportedShell`).
std::optional<Request> completionScriptRequest(const SplitArguments& split, const CommandTree& tree);

/// If the first argument is "---completion", the request for completions of a value, one a line. Raises
/// `ParserError` (`InvalidState`) if the call names no command, or no argument with completions.
std::optional<Request> completionCall(const std::vector<std::string>& arguments, const CommandTree& tree);

}  // namespace ArgumentParser
