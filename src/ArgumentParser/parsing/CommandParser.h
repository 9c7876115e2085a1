// From a command line to its outcome: descends through the tree, parsing each command on the way.
#pragma once

#include <string>
#include <vector>

#include "ArgumentParser/declarations/CommandTree.h"
#include "ArgumentParser/parsing/ArgumentDecoder.h"
#include "ArgumentParser/parsing/Outcome.h"
#include "ArgumentParser/parsing/SplitArguments.h"

namespace ArgumentParser {

class CommandParser {
 public:
  explicit CommandParser(const CommandTree& commands) : tree(commands), stack{&commands.root()} {}

  /// The command that `arguments` name, ready to run; or the request or fault that they hold.
  Outcome parse(const std::vector<std::string>& arguments);

 private:
  // Requests are returned, not raised, because unwinding the stack would make the commonest starts a tenth
  // slower. Faults are raised by the stages, and caught in `parse`.
  Outcome parseAll(const std::vector<std::string>& arguments);
  Outcome descend(SplitArguments& split);
  Outcome parseCurrent(SplitArguments& split);
  Outcome decoded(const ArgumentMatcher& matcher);
  static void checkNothingIsLeft(const SplitArguments& split);
  CommandStack stackNamed(const std::vector<std::string>& names) const;

  const CommandTree& tree;
  CommandStack stack;
  Records records;  ///< of the commands that are parsed already, for those below them
};

}  // namespace ArgumentParser
