// The outcome of a command line: a command to run, a request, or a fault.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <variant>

#include "ArgumentParser/declarations/CommandTree.h"
#include "ArgumentParser/parsing/ParserError.h"

namespace ArgumentParser {

/// A command with its fields filled, and, once it has run, the status that it ends with.
struct Run {
  std::shared_ptr<CommandRecord> record;
  std::int32_t status = 0;
};

/// Something other than a run that was asked for, on the command line or by a command: to print a text on
/// standard output, or to end with a status and no words.
struct Request {
  std::function<std::string()> answer = {};  ///< makes the text; empty for no words
  std::int32_t status = 0;                   ///< of a request without words
};

/// A fault, and the commands that were reached, root first.
struct Fault {
  CommandStack commandStack;
  ParserError parserError;
  bool noArguments = false;  ///< nothing was typed at all, which prints the help with the fault
};

using Outcome = std::variant<Run, Request, Fault>;

/// The outcome of a thrown value; `stack` leads to the command at hand. Raises a `DeclarationError` again.
Outcome outcomeOf(const std::exception_ptr& thrown, const CommandStack& stack, const CommandTree& tree);

/// Runs the command, if the outcome is one to run, and returns what became of it.
Outcome afterRun(Outcome parsed, const CommandTree& tree);

}  // namespace ArgumentParser
