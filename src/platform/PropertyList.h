// Reads single texts out of property list files.
#pragma once

#include <optional>
#include <string>

namespace platform {

/// The text under `key` at the top of the property list at `path`; nothing if the file cannot be read, is no
/// property list with a dictionary at its top, or has no text there. Off macOS only the XML form is read.
std::optional<std::string> propertyListText(const std::string& path, const std::string& key);

}  // namespace platform
