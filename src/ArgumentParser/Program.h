// The whole life of a process whose command line is declared with this library, and its parts for programs
// that keep that life in their own hands.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "ArgumentParser/declarations/CommandTree.h"

namespace ArgumentParser {

/// Parses the process's arguments, runs the command they name, prints whatever its end calls for, and returns
/// the exit status. A malformed declaration ends it at once with status 70.
int main(CommandType root, int argc, const char* const* argv);

/// Why there is no command to run: a fault of the command line, or a request for help, version, dump or
/// completion. `what()` is what the program would print.
struct CommandError : std::exception {
  CommandError(std::string words, bool isForOutput, std::int32_t exitStatus);
  const char* what() const noexcept override { return text.c_str(); }

  std::string text;           ///< without the last newline; may be empty
  bool goesToStandardOutput;  ///< else to standard error
  std::int32_t status;
};

/// The arguments of a process without the program's own name, repaired to UTF-8.
std::vector<std::string> argumentsFrom(int argc, const char* const* argv);

/// The command that `arguments` (without the program's own name) ask for, validated and ready to run;
/// `record->as<Add>()` tells which it is. Raises `CommandError`.
std::shared_ptr<CommandRecord> parseAsRoot(const CommandTree& tree,
                                           const std::vector<std::string>& arguments);

/// The same for a command without subcommands: its record, filled and validated, is given back and not run.
/// Raises `CommandError`, and `DeclarationError` for a command with subcommands.
template <class Root>
Root parseAsRoot(const std::vector<std::string>& arguments) {
  const CommandTree tree(type<Root>());
  if (!tree.root().children().empty()) {
    throw DeclarationError("parseAsRoot<" + tree.root().declaration.typeName +
                           ">() gives one record, but the command has subcommands.");
  }
  return *std::move(parseAsRoot(tree, arguments)->as<Root>());
}
template <class Root>
Root parseAsRoot(int argc, const char* const* argv) {
  return parseAsRoot<Root>(argumentsFrom(argc, argv));
}

/// Ends the process as `main` would on that thrown value, `std::current_exception()` in a handler: prints its
/// text to the right stream and exits with its status. Nothing thrown is status 0.
[[noreturn]] void exit(CommandType root, const std::exception_ptr& error = nullptr);
template <class Root>
[[noreturn]] void exit(const std::exception_ptr& error = nullptr) {
  exit(type<Root>(), error);
}

}  // namespace ArgumentParser
