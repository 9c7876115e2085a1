// The error of the API client and of the MCP server.
#pragma once

#include <string>
#include <utility>

#include "text/TextError.h"

namespace zelto {

/// What stood in the way of a call, for callers that can do something about it.
enum class Cause {
  off,          ///< there is no control file: the application's API is switched off
  controlFile,  ///< the control file does not hold what it should
  unreachable,  ///< the address leads nowhere, or the connection broke
  refused,      ///< nobody listens at the address
  timedOut,     ///< no answer came in time
  http,         ///< the application answered with a status that is no success
  launcher,     ///< the system could not hand the application a URL
  notStarted,   ///< the application was asked to start its API, and did not in time
};

/// What the API client and the MCP server raise; its message reaches an agent unchanged, and a person as that
/// of a `CLIError`.
struct MCPError : text::TextError {
  MCPError(Cause why, std::string text) : cause(why), message(std::move(text)) {}
  const std::string& text() const noexcept override { return message; }
  Cause cause;
  std::string message;
};

}  // namespace zelto
