// Turning the application's API on and off through its URL scheme.
#pragma once

#include <string>

#include "client/APICall.h"

namespace zelto {

/// The path of the system's launcher. Defined apart from everything else, so that a build for development can
/// link another.
extern const char* const launcherPath;

/// Hands `url` to the system's launcher and returns its trimmed standard error; empty if that is not UTF-8.
/// Raises `MCPError` if the launcher cannot be started.
std::string openURL(const std::string& url);

/// Asks the application to start its API and waits up to `timeout` seconds until /health answers. Returns
/// that answer. Raises `MCPError`.
JSONDocument ensureAPIRunning(double timeout);

/// Asks the application to stop its API; waits for nothing and never fails. Returns an object that says so.
JSONDocument stopAPI();

}  // namespace zelto
