// The last stage: what an outcome comes to on the screen, as text, stream and status.
#pragma once

#include <cstdint>
#include <string>

#include "ArgumentParser/declarations/CommandTree.h"
#include "ArgumentParser/parsing/Outcome.h"

namespace ArgumentParser {

struct MessageInfo {
  enum class Kind { help, validation, other };

  /// All that is printed, without the last newline; may be empty.
  std::string fullText() const;
  bool goesToStandardOutput() const { return kind == Kind::help; }
  std::int32_t status() const;

  Kind kind = Kind::other;
  std::string message = {};
  std::string usage = {};  ///< `validation` only
  std::string help = {};   ///< `validation` only
  std::int32_t exitCode = 0;
};

/// What there is to say of an outcome and the status that goes with it: the one way to print, for the program
/// and for whoever looks at it. A run has no words.
MessageInfo messageInfo(const Outcome& outcome, const CommandTree& tree);

}  // namespace ArgumentParser
