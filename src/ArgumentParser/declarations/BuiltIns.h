// What every tree has undeclared: the built-in flags of each command, and the root's command `help`.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ArgumentParser/declarations/ArgumentDefinition.h"
#include "ArgumentParser/declarations/CommandTree.h"

namespace ArgumentParser {

/// The names of the help flag for the stack: those of its last command that sets them, else -h and --help.
/// With hidden visibility, those of the flag that also shows hidden definitions (--help-hidden).
std::vector<Name> helpNames(const CommandStack& stack, Visibility visibility = Visibility::default_);

/// The last non-empty version of the stack.
std::optional<Version> version(const CommandStack& stack);

/// The definitions of --version, if the stack has a version, and of the help flag, if it has names, in the
/// order in which help lists them.
std::vector<ArgumentDefinition> builtInDefinitions(const CommandStack& stack);

/// Whether the node is the built-in `help` command.
bool isHelpCommand(const CommandNode& node);

/// The record of the built-in `help` command.
struct HelpCommand {
  std::vector<std::string> subcommands;
  bool help = false;
  static Declaration declaration();
  void run() const {}  // The parser answers for it.
};

}  // namespace ArgumentParser
