#include "platform/Files.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "platform/FileStatus.h"
#include "text/Unicode.h"

namespace platform {
namespace {

constexpr std::size_t mebibyte = 1 << 20;
constexpr std::size_t largestText = 256 * mebibyte;
constexpr std::size_t largestSmallFile = mebibyte;
constexpr int mostDanglingLinks = 16;
/// More links than any system follows, so that only a circle gets this far.
constexpr int mostLinks = 100;

struct OpenFile {
  FileDescriptor descriptor;
  struct stat status {};
};

/// Opens the regular file at `path`; nothing if nothing stands there. Raises `SystemError`. The path is
/// opened before anything is asked about it, so that no two looks can disagree.
std::optional<OpenFile> openRegularFile(const std::string& path) {
  // Without O_NONBLOCK, opening a pipe would wait until somebody writes to it.
  constexpr int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  OpenFile file{FileDescriptor(uninterrupted([&] { return ::open(path.c_str(), flags); }))};
  if (!file.descriptor && meansAbsent(errno)) return std::nullopt;
  if (!file.descriptor || ::fstat(file.descriptor.get(), &file.status) != 0) throw SystemError::file(path);
  if (S_ISREG(file.status.st_mode)) return file;
  throw SystemError::file(path, S_ISDIR(file.status.st_mode) ? "Is a directory" : "not a regular file");
}

/// All bytes of the file at `path`. Raises `SystemError`, also for more than `limit` bytes.
std::string readWithin(std::size_t limit, const OpenFile& file, const std::string& path) {
  // The size is only a hint, as the file may grow; one byte more shows that the end has been reached.
  const auto expected = static_cast<std::size_t>(std::max<off_t>(file.status.st_size, 0));
  std::string bytes(std::min(expected, limit) + 1, '\0');
  std::size_t filled = 0;
  for (;;) {
    const auto count = uninterrupted(
        [&] { return ::read(file.descriptor.get(), bytes.data() + filled, bytes.size() - filled); });
    if (count < 0) throw SystemError::file(path);
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
    if (filled > limit)
      throw SystemError::file(path, "larger than " + std::to_string(limit / mebibyte) + " MiB");
    if (filled == bytes.size()) bytes.resize(std::min(2 * filled, limit + 1));
  }
  bytes.resize(filled);
  return bytes;
}

/// The parent of a path without links.
std::string parentOf(const std::string& real) {
  return real == "/" ? real : directoryOf(real);
}

std::string joined(const std::string& directory, std::string_view name) {
  return std::string(directory == "/" ? "" : directory).append("/").append(name);
}

/// Walks down a path component by component and resolves each link itself.
class LinkWalk {
 public:
  explicit LinkWalk(const std::string& path) : rest(path) {
    if (rest.starts_with('/')) return;
    char directory[PATH_MAX];
    if (::getcwd(directory, sizeof directory) == nullptr) throw SystemError::file(path);
    reached = directory;
  }

  std::string end() {
    while (!rest.empty()) step();
    return reached;
  }

 private:
  void step() {
    const std::size_t slash = rest.find('/');
    const std::string name = rest.substr(0, slash);
    rest.erase(0, slash == std::string::npos ? slash : rest.find_first_not_of('/', slash));
    if (name.empty() || name == ".") return;
    if (name == "..") {
      reached = parentOf(reached);
      return;
    }
    const std::string place = joined(reached, name);
    const auto target = linkTarget(place);
    const bool isLast = rest.empty();
    if (!target || (isLast && ++lastLinks > mostDanglingLinks)) {
      reached = place;
      return;
    }
    if (++links > mostLinks) {
      errno = ELOOP;
      throw SystemError::file(place);
    }
    if (target->starts_with('/')) reached = "/";
    rest = isLast ? *target : *target + "/" + rest;
  }

  /// The target of the link at `place`, or nothing if there is no link.
  static std::optional<std::string> linkTarget(const std::string& place) {
    char target[PATH_MAX];
    const auto length = ::readlink(place.c_str(), target, sizeof target);
    if (length >= 0) return std::string(target, static_cast<std::size_t>(length));
    if (errno == EINVAL || meansAbsent(errno)) return std::nullopt;
    throw SystemError::file(place);
  }

  std::string reached = "/";
  std::string rest;
  int links = 0;
  int lastLinks = 0;
};

}  // namespace

FileState stateOf(const struct stat& status) {
#ifdef __APPLE__  // stat(2) of macOS
  const timespec &content = status.st_mtimespec, &attributes = status.st_ctimespec;
#else
  const timespec &content = status.st_mtim, &attributes = status.st_ctim;
#endif
  return {static_cast<std::uint64_t>(status.st_dev),
          static_cast<std::uint64_t>(status.st_ino),
          status.st_size,
          {content.tv_sec, content.tv_nsec, attributes.tv_sec, attributes.tv_nsec}};
}

std::optional<TextFile> readTextFile(const std::string& path) {
  auto file = openRegularFile(path);
  if (!file) return std::nullopt;
  std::string text = readWithin(largestText, *file, path);
  if (!text::isUTF8(text)) throw SystemError::file(path, "not UTF-8 text");
  return TextFile{std::move(text), stateOf(file->status), std::move(file->descriptor)};
}

std::optional<std::string> readSmallFile(const std::string& path) {
  try {
    const auto file = openRegularFile(path);
    if (file) return readWithin(largestSmallFile, *file, path);
  } catch (const SystemError&) {
    // The caller does not need the reason.
  }
  return std::nullopt;
}

std::optional<std::string> readFile(const std::string& path) {
  const FileDescriptor file(
      uninterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC); }));
  if (!file) return std::nullopt;
  return readToEnd(file.get());
}

bool fileExists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0;
}

bool isAbsent(const std::string& path) {
  return !fileExists(path) && (meansAbsent(errno) || errno == ELOOP);
}

bool isExecutableFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

std::string followedPath(const std::string& path) {
  char resolved[PATH_MAX];
  if (::realpath(path.c_str(), resolved) != nullptr) return resolved;
  if (!meansAbsent(errno)) throw SystemError::file(path);
  return LinkWalk(path).end();
}

std::string directoryOf(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return ".";
  return std::string(slash == 0 ? path.substr(0, 1) : path.substr(0, slash));
}

}  // namespace platform
