#include "platform/Environment.h"

#include <climits>
#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

#include "platform/PropertyList.h"
#include "text/Unicode.h"

#ifdef __APPLE__
#include <mach-o/dyld.h>
#endif

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

std::string resolved(const char* path) {
  char buffer[PATH_MAX];
  return ::realpath(path, buffer) != nullptr ? text::repairedUTF8(buffer) : std::string();
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

std::optional<std::string> environment(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  return text::repairedUTF8(value);
}

std::string homeDirectory() {
  const char* home = std::getenv("HOME");
  if (home == nullptr || *home == '\0') {
    const passwd* user = ::getpwuid(::getuid());
    home = user != nullptr ? user->pw_dir : "/";
  }
  std::string path = text::repairedUTF8(home);
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string expandTilde(std::string_view path) {
  if (path != "~" && !path.starts_with("~/")) return std::string(path);
  path.remove_prefix(1);
  const std::string home = homeDirectory();
  return home == "/" && !path.empty() ? std::string(path) : home + std::string(path);
}

std::string executablePath() {
#ifdef __APPLE__
  char path[PATH_MAX];
  std::uint32_t size = sizeof path;
  return _NSGetExecutablePath(path, &size) == 0 ? resolved(path) : std::string();
#else
  return resolved("/proc/self/exe");
#endif
}

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
