// What a file has besides its bytes: owner, group, mode, access list and extended attributes.
#pragma once

#include <string>

namespace platform {

/// Gives the open file `to`, which nobody else may read yet, the attributes of the open file `from`, so that
/// nobody can read or write `to` who could not read or write `from`. A group that the system does not let us
/// set is left out: its members and everybody else then get only the rights that both had. An attribute that
/// has no say in anybody's access may be lost. Raises `SystemError` for `path` if anything else cannot be
/// kept.
void copyAttributes(int from, int to, const std::string& path);

}  // namespace platform
