// Hands URLs to the operating system's launcher.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The launcher's path. Defined apart from everything else, so that a build for development can link another.
extern const char* const launcherPath;

/// Runs the launcher with `arguments`, its standard output going nowhere, waits for it, and returns all that
/// it wrote to standard error; nothing if it cannot be started. Its exit status is not looked at.
std::optional<std::string> runLauncher(const std::vector<std::string>& arguments);

}  // namespace platform
