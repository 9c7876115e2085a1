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
#ifdef __APPLE__  // dyld(3)
  char path[PATH_MAX], resolved[PATH_MAX];
  std::uint32_t size = sizeof path;
  const bool isKnown = _NSGetExecutablePath(path, &size) == 0 && ::realpath(path, resolved) != nullptr;
  return isKnown ? text::repairedUTF8(resolved) : std::string();
#else
  // The link holds the path without any further link, so one call tells it (proc(5)).
  std::string path(256, '\0');
  for (;;) {
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
    if (length < 0) return {};
    if (static_cast<std::size_t>(length) < path.size())
      return text::repairedUTF8(path.substr(0, static_cast<std::size_t>(length)));
    path.resize(2 * path.size());
  }
#endif
}

}  // namespace platform
