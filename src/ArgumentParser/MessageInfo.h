// The last stage: what a thrown value comes to on the screen, as text, stream and status.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include "ArgumentParser/CommandTree.h"

namespace ArgumentParser {

struct MessageInfo {
  enum class Kind { help, validation, other };

  MessageInfo(const CommandError& error, const CommandTree& tree);
  /// Maps anything thrown while parsing or running.
  MessageInfo(const std::exception_ptr& error, const CommandTree& tree);

  /// All that is printed, without the last newline; may be empty.
  std::string fullText() const;
  bool goesToStandardOutput() const { return kind == Kind::help; }
  std::int32_t status() const;

  Kind kind = Kind::help;
  std::string message;
  std::string usage;  ///< `validation` only
  std::string help;   ///< `validation` only
  std::int32_t exitCode = 0;

 private:
  void describe(const CommandStack& stack, const ParserError& error, const CommandTree& tree);
  void describeThrown(const CommandStack& stack, const std::exception_ptr& error, const CommandTree& tree);
  void describeFault(const CommandStack& stack, const ParserError& error, const CommandTree& tree);
};

}  // namespace ArgumentParser
