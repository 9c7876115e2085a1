// The last stage: makes of an outcome the text to print, its stream, and the exit status.
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

/// The text, stream and status of an outcome. The program, tests and fuzz targets all go this way. A run has
/// no text.
MessageInfo messageInfo(const Outcome& outcome, const CommandTree& tree);

}  // namespace ArgumentParser
