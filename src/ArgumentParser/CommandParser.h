// From a command line to the one command to run: descends through the tree, parsing each command on the way.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ArgumentParser/CommandTree.h"
#include "ArgumentParser/SplitArguments.h"

namespace ArgumentParser {

class CommandParser {
 public:
  explicit CommandParser(const CommandTree& commands) : tree(commands), stack{&commands.root()} {}

  /// The record of the command that `arguments` name, ready to run. Raises `CommandError` for everything
  /// else: faults, and requests for help, version, dump or completion.
  std::unique_ptr<CommandRecord> parse(const std::vector<std::string>& arguments);

 private:
  std::unique_ptr<CommandRecord> parseAll(const std::vector<std::string>& arguments);
  std::unique_ptr<CommandRecord> descend(SplitArguments& split);
  std::unique_ptr<CommandRecord> parseCurrent(SplitArguments& split);
  void validate(CommandRecord& record, const SplitArguments& split) const;
  void checkNothingIsLeft(const SplitArguments& split) const;
  [[noreturn]] void raiseHelp(const HelpCommand& help);

  const CommandTree& tree;
  CommandStack stack;
};

}  // namespace ArgumentParser
