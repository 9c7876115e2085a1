// The third stage of parsing: fills a command's record from what was matched.
#pragma once

#include <memory>
#include <vector>

#include "ArgumentParser/declarations/CommandTree.h"
#include "ArgumentParser/parsing/ArgumentMatcher.h"

namespace ArgumentParser {

/// A new record of the command with its fields filled, in declared order. Raises `ParserError` (`NoValue`,
/// `UnableToParseValue`).
std::shared_ptr<CommandRecord> decode(const CommandNode& node, const ParsedValues& values);

}  // namespace ArgumentParser
