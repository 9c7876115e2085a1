// Hands URLs to the operating system's launcher.
#pragma once

#include <optional>
#include <string>

namespace platform {

/// Has the launcher, the program at that path, open `url`: with the application at the path `application`, or
/// with the one that the system has for such URLs. Its arguments are those of open(1) of macOS; its standard
/// output goes nowhere. Waits for its end and returns all that it wrote to standard error; nothing if it
/// cannot be started. Its exit status is ignored.
std::optional<std::string> openURL(const std::string& launcher, const std::string& url,
                                   const std::optional<std::string>& application);

}  // namespace platform
