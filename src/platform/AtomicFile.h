// Replaces a file as a whole: a crash at any instant leaves the old file or the new one, and whoever could
// not read or write the old one cannot read or write the new one.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/Files.h"

namespace platform {

/// Puts a file that holds `pieces`, one after the other, at `path`, in place of the file that was read as
/// `old`, or of none; missing directories are created. The bytes are on the disk when this returns. `path` is
/// no symbolic link, which would be replaced itself.
///
/// False, with nothing changed, if what stands at `path` now is not `old` any more: somebody else has written
/// it. Raises `SystemError`, with nothing changed and nothing left over, if the system refuses, and where the
/// owner or the access list of the old file cannot be kept. Its group and its other attributes are kept where
/// the system lets us; without the group, its members and everybody else get only what both had. A new file
/// has the rights that any new file gets at that place.
///
/// Meanwhile there is a file beside `path` whose name is `temporaryPrefix` and six letters or digits. Any
/// that a killed process has left is removed too.
bool replaceFile(const std::string& path, std::span<const std::string_view> pieces,
                 const std::optional<TextFile>& old, std::string_view temporaryPrefix);

}  // namespace platform
