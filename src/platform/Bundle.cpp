// The application bundle around an executable; kept apart from the rest of Environment.h because it needs a
// reader of property lists, which few programs do.
#include "platform/Environment.h"
#include "platform/Files.h"
#include "platform/PropertyList.h"

namespace platform {
namespace {

constexpr const char* versionKey = "CFBundleShortVersionString";

std::string_view pathExtension(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

}  // namespace

std::optional<std::string> enclosingBundle(std::string_view executable) {
  std::string directory = directoryOf(executable);
  for (int tested = 0; tested < 4 && directory != "." && directory != "/"; ++tested) {
    if (pathExtension(directory) == "app") return directory;
    directory = directoryOf(directory);
  }
  return std::nullopt;
}

std::optional<std::string> bundleVersion() {
  const std::string executable = executablePath();
  if (executable.empty()) return std::nullopt;
  if (const auto bundle = enclosingBundle(executable)) {
    if (auto version = propertyListText(*bundle + "/Contents/Info.plist", versionKey)) return version;
  }
  return propertyListText(directoryOf(executable) + "/Info.plist", versionKey);
}

}  // namespace platform
