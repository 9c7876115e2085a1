// From a command line to the one command to run: descends through the tree, parsing each command on the way.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "ArgumentParser/CommandTree.h"
#include "ArgumentParser/SplitArguments.h"

namespace ArgumentParser {

class CommandParser {
 public:
  using Record = std::unique_ptr<CommandRecord>;
  using Result = std::variant<Record, CommandError>;

  explicit CommandParser(const CommandTree& commands) : tree(commands), stack{&commands.root()} {}

  /// The record of the command that `arguments` name, ready to run; or why there is none: a fault, or a
  /// request for help, version, dump or completion.
  Result parse(const std::vector<std::string>& arguments);

 private:
  // Requests are returned, not raised: they are what a person waits for most, and a start that unwinds no
  // stack is a tenth faster. Faults are raised.
  using Found = std::variant<Record, ParserError>;

  Found parseAll(const std::vector<std::string>& arguments);
  Found descend(SplitArguments& split);
  Found parseCurrent(SplitArguments& split);
  static void validate(CommandRecord& record);
  static void checkNothingIsLeft(const SplitArguments& split);
  ParserError helpRequest(const HelpCommand& help);

  const CommandTree& tree;
  CommandStack stack;
};

}  // namespace ArgumentParser
