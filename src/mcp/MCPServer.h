// The Model Context Protocol on standard input and output: JSON-RPC 2.0, one message a line, one after the
// other.
#pragma once

#include <string>

#include "mcp/Tool.h"

namespace zelto {

/// Answers messages until the input ends, then ends the process with status 0. Nothing but replies goes to
/// standard output; diagnostics go to standard error.
[[noreturn]] void serve();

/// A handler's output as the agent reads it: an object or array as indented JSON, a string as it is.
std::string resultText(ToolOutput output);

}  // namespace zelto
