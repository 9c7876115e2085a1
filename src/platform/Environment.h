// What the process was given: its environment, the home directory, and where its own executable stands.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The value of an environment variable, repaired to UTF-8, or nothing if it is not set.
std::optional<std::string> environment(const char* name);

/// `$HOME` if set and not empty, else the user's directory in the password database; repaired to UTF-8, no
/// slash at its end.
std::string homeDirectory();

/// `path` with a leading "~" (alone or before a "/") replaced by the home directory.
std::string expandTilde(std::string_view path);

/// The path of the running executable, symbolic links resolved, repaired to UTF-8; empty if the system does
/// not tell.
std::string executablePath();

/// The application bundle around an executable at `executable`: the nearest of its four innermost directories
/// whose name ends in ".app". Nothing if there is none.
std::optional<std::string> enclosingBundle(std::string_view executable);

/// The text under CFBundleShortVersionString in the information dictionary of the bundle around the running
/// executable, else in the one beside the executable; nothing if neither has it.
std::optional<std::string> bundleVersion();

}  // namespace platform
