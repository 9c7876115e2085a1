// Turning the application's API on and off through its URL scheme.
#pragma once

#include <functional>
#include <string>

#include "api/APICall.h"

namespace zelto {

/// How long every caller waits for the API to come up, in seconds, whatever the request time-out.
inline constexpr double startTimeout = 12;

/// Hands `url` to the system's launcher and returns what it complained of, trimmed; empty if it did not or if
/// that was no UTF-8. Raises `MCPError` if the launcher cannot be started.
std::string openURL(const std::string& url);

/// Asks the application to start its API and waits up to `timeout` seconds until /health answers. Returns
/// that answer. Raises `MCPError`.
JSONValue ensureAPIRunning(double timeout);

/// Makes `call`; if that finds the API off, says so on standard error, starts the API and repeats the call
/// once. Returns what the call gives. Raises `CLIError` with the message of the `MCPError` that ended it.
JSONValue startingOnDemand(const std::function<JSONValue()>& call);

/// Asks the application to stop its API; waits for nothing and never fails. Returns an object that says so.
JSONValue stopAPI();

}  // namespace zelto
