// The version of the application that this program belongs to.
#pragma once

#include <string>

namespace zelto {

/// The version of the application bundle around the program, else the program's own, else "?". Looked up
/// once.
std::string versionText();

}  // namespace zelto
