// The application bundle around an executable; apart from the rest of Environment.h, because it reads
// property lists, which few programs need.
#include "platform/Environment.h"
#include "platform/PropertyList.h"

namespace platform {
namespace {

constexpr const char* versionKey = "CFBundleShortVersionString";

std::string_view parentDirectory(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return {};
  return slash == 0 ? path.substr(0, 1) : path.substr(0, slash);
}

std::string_view pathExtension(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

std::string lookUpVersion() {
  const std::string executable = executablePath();
  if (const auto bundle = enclosingBundle(executable)) {
    if (auto version = propertyListText(*bundle + "/Contents/Info.plist", versionKey)) return *version;
  }
  const std::string own = std::string(parentDirectory(executable)) + "/Info.plist";
  return propertyListText(own, versionKey).value_or("?");
}

}  // namespace

std::optional<std::string> enclosingBundle(std::string_view executable) {
  std::string_view directory = parentDirectory(executable);
  for (int tested = 0; tested < 4 && !directory.empty() && directory != "/"; ++tested) {
    if (pathExtension(directory) == "app") return std::string(directory);
    directory = parentDirectory(directory);
  }
  return std::nullopt;
}

std::string versionText() {
  // A completion script asks for it once for each command.
  static const std::string version = lookUpVersion();
  return version;
}

}  // namespace platform
