#include "platform/Environment.h"

#include <climits>
#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

#include "text/Unicode.h"

#ifdef __APPLE__
#include <mach-o/dyld.h>
#endif

namespace platform {
namespace {

std::string resolved(const char* path) {
  char buffer[PATH_MAX];
  return ::realpath(path, buffer) != nullptr ? text::repairedUTF8(buffer) : std::string();
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

}  // namespace platform
