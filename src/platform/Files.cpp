#include "platform/Files.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/FileDescriptor.h"
#include "text/Unicode.h"

namespace platform {
namespace {

[[noreturn]] void raise(const std::string& path) {
  throw FileError(path + ": " + std::strerror(errno));
}

/// Removes the temporary file unless the rename has taken it away; keeps `errno` for the report.
struct TemporaryFile {
  std::string path;
  bool renamed = false;
  ~TemporaryFile() {
    const int error = errno;
    if (!renamed) ::unlink(path.c_str());
    errno = error;
  }
};

/// Waits until the file is on the disk, not just in the disk's cache.
bool flushToDisk(int descriptor) {
#ifdef F_FULLFSYNC
  if (::fcntl(descriptor, F_FULLFSYNC) == 0) return true;
#endif
  return ::fsync(descriptor) == 0;
}

/// Gives a new file the mode that the umask asks for.
bool adoptUmask(int descriptor) {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return ::fchmod(descriptor, 0666 & ~mask) == 0;
}

/// Gives a new file the owner and the mode that users of the old one rely on. The mode goes last: the owner
/// change clears set-id bits, and until then the file is readable by its creator alone.
bool adoptAttributes(int descriptor, const struct stat& old) {
  struct stat created {};
  if (::fstat(descriptor, &created) != 0) return false;
  if ((created.st_uid != old.st_uid || created.st_gid != old.st_gid) &&
      ::fchown(descriptor, old.st_uid, old.st_gid) != 0) {
    return false;
  }
  return ::fchmod(descriptor, old.st_mode & 07777) == 0;
}

}  // namespace

std::optional<std::string> readToEnd(int descriptor) {
  std::string bytes;
  std::vector<char> buffer(1 << 16);
  for (;;) {
    const auto count = ::read(descriptor, buffer.data(), buffer.size());
    if (count == 0) return bytes;
    if (count > 0) {
      bytes.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return std::nullopt;
    }
  }
}

std::optional<std::string> readFile(const std::string& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) return std::nullopt;
  return readToEnd(file.get());
}

std::string readUTF8(const std::string& path) {
  auto bytes = readFile(path);
  if (!bytes) raise(path);
  if (!text::isUTF8(*bytes)) throw FileError(path + ": not UTF-8 text");
  return *std::move(bytes);
}

bool fileExists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0;
}

bool isExecutableFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

std::optional<std::string> linkTarget(const std::string& path) {
  char target[PATH_MAX];
  const auto length = ::readlink(path.c_str(), target, sizeof target);
  if (length < 0) return std::nullopt;
  return std::string(target, static_cast<std::size_t>(length));
}

std::string resolvingLinks(const std::string& path) {
  char resolved[PATH_MAX];
  if (::realpath(path.c_str(), resolved) != nullptr) return resolved;
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos || slash == 0) return path;
  const std::string directory = resolvingLinks(path.substr(0, slash));
  return (directory == "/" ? "" : directory) + path.substr(slash);
}

std::string standardizedPath(std::string_view path) {
  const bool absolute = path.starts_with('/');
  std::vector<std::string_view> kept;
  while (!path.empty()) {
    const std::size_t slash = path.find('/');
    const std::string_view component = path.substr(0, slash);
    path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
    if (component.empty() || component == ".") continue;
    const bool goesUp = component == "..";
    if (goesUp && !kept.empty() && kept.back() != "..") {
      kept.pop_back();
    } else if (!goesUp || !absolute) {
      kept.push_back(component);
    }
  }
  std::string result;
  for (const std::string_view component : kept) {
    if (absolute || !result.empty()) result += '/';
    result += component;
  }
  if (result.empty()) result = absolute ? "/" : ".";
  return result;
}

std::string directoryOf(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return ".";
  return std::string(slash == 0 ? path.substr(0, 1) : path.substr(0, slash));
}

void createDirectories(const std::string& path) {
  if (::mkdir(path.c_str(), 0777) == 0 || errno == EEXIST || errno == EISDIR) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) return;
    errno = ENOTDIR;
    raise(path);
  }
  if (errno != ENOENT || directoryOf(path) == path) raise(path);
  createDirectories(directoryOf(path));
  if (::mkdir(path.c_str(), 0777) != 0 && errno != EEXIST) raise(path);
}

void writeAtomically(const std::string& path, std::string_view bytes) {
  struct stat old {};
  const bool exists = ::stat(path.c_str(), &old) == 0;
  // A rename would put a file in the place of a device or a pipe.
  if (exists && !S_ISREG(old.st_mode)) throw FileError(path + ": not a regular file");
  std::string name = directoryOf(path) + "/.zelto-XXXXXX";
  const FileDescriptor file(::mkostemp(name.data(), O_CLOEXEC));
  if (!file) raise(path);
  TemporaryFile temporary{name};
  const bool written = writeAll(file.get(), bytes) &&
                       (exists ? adoptAttributes(file.get(), old) : adoptUmask(file.get())) &&
                       flushToDisk(file.get()) && ::rename(name.c_str(), path.c_str()) == 0;
  if (!written) raise(path);
  temporary.renamed = true;
  // Without this the rename itself may be lost in a crash of the machine; a directory that cannot be synced
  // is no reason to report a write that has taken place as failed.
  if (const FileDescriptor directory(::open(directoryOf(path).c_str(), O_RDONLY | O_CLOEXEC)); directory) {
    flushToDisk(directory.get());
  }
}

}  // namespace platform
