// What the manual page and the Markdown reference share: which commands and arguments they describe, and how.
#pragma once

#include <string>
#include <vector>

#include "ArgumentParser/Manual.h"

namespace ArgumentParser::manual {

/// The children that a manual describes.
std::vector<const CommandInfoV0*> children(const CommandInfoV0& command);
/// The arguments that a manual describes, positionals first.
std::vector<const ArgumentInfoV0*> arguments(const CommandInfoV0& command);

/// The names from the root down to the command, `separator` between them.
std::string path(const CommandInfoV0& command, const char* separator);

/// The abstract of an argument, then its values and its default.
std::string summary(const ArgumentInfoV0& argument);

/// One piece of a section's body.
struct Block {
  enum class Kind { paragraph, item, example };
  Kind kind;
  std::string term = {};  ///< of an item
  std::string text;
};
std::vector<Block> blocks(const std::string& body);

}  // namespace ArgumentParser::manual
