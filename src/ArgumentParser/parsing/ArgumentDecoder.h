// The third stage of parsing: fills a command's record from what was matched.
#pragma once

#include <memory>
#include <vector>

#include "ArgumentParser/declarations/CommandTree.h"
#include "ArgumentParser/parsing/ArgumentMatcher.h"

namespace ArgumentParser {

using Records = std::vector<std::shared_ptr<CommandRecord>>;

/// A new record of the command with its fields filled, in declared order, and then those that want a record
/// of `above`, the commands further up. Raises `ParserError` (`NoValue`, `UnableToParseValue`,
/// `NotParentCommand`).
std::shared_ptr<CommandRecord> decode(const CommandNode& node, const ParsedValues& values,
                                      const Records& above);

}  // namespace ArgumentParser
