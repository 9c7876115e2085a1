#include "client/Version.h"

#include "platform/Environment.h"

namespace zelto {

std::string versionText() {
  // Making a completion script asks for it once for each command.
  static const std::string version = platform::bundleVersion().value_or("?");
  return version;
}

}  // namespace zelto
