#include "platform/AtomicFile.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/FileAttributes.h"
#include "platform/FileStatus.h"

#ifdef __APPLE__
#include <sys/random.h>
#endif

namespace platform {
namespace {

constexpr std::string_view alphabet = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::size_t suffixLength = 6;

/// Creates the directories missing on the way to one, and removes them again on failure, unless something
/// else uses them by then.
class MissingDirectories {
 public:
  explicit MissingDirectories(std::string directory) {
    struct stat status {};
    while (::stat(directory.c_str(), &status) != 0) {
      if (errno != ENOENT) throw SystemError::file(directory);
      missing.push_back(std::exchange(directory, directoryOf(directory)));
    }
  }
  MissingDirectories(const MissingDirectories&) = delete;
  ~MissingDirectories() {
    for (std::size_t i = missing.size() - created; i < missing.size(); ++i) ::rmdir(missing[i].c_str());
  }

  void create() {
    for (; created < missing.size(); ++created) {
      const std::string& next = missing[missing.size() - created - 1];
      if (::mkdir(next.c_str(), 0777) != 0 && errno != EEXIST) throw SystemError::file(next);
    }
  }

 private:
  std::vector<std::string> missing;  ///< innermost first
  std::size_t created = 0;           ///< from the outermost on
};

/// Locks the file until its last descriptor is closed, be it by a crash. False if somebody else holds the
/// lock, or if the file system has no locks.
bool lock(int descriptor) {
  return uninterrupted([&] { return ::flock(descriptor, LOCK_EX | LOCK_NB); }) == 0;
}

/// A new file that is removed again unless it gets its final name. It is locked while its maker lives, which
/// tells it from a file that a killed process has left.
class TemporaryFile {
 public:
  TemporaryFile(const std::string& directory, std::string_view prefix, mode_t mode, const std::string& target)
      : path(directory + "/" + std::string(prefix) + std::string(suffixLength, '0')) {
    while (!create(mode)) {
      if (errno != EEXIST) throw SystemError::file(target);
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (file) ::unlink(path.c_str());
  }

  int descriptor() const { return file.get(); }

  bool moveTo(const std::string& target) {
    if (uninterrupted([&] { return ::rename(path.c_str(), target.c_str()); }) != 0) return false;
    file.close();
    return true;
  }

 private:
  /// False, with `errno` EEXIST, if the name is in use, or if somebody removed the file before it was locked.
  bool create(mode_t mode) {
    unsigned char random[suffixLength];
    if (::getentropy(random, sizeof random) != 0) return false;
    std::transform(std::begin(random), std::end(random), path.end() - suffixLength,
                   [](unsigned char each) { return alphabet[each % alphabet.size()]; });
    constexpr int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    file = FileDescriptor(uninterrupted([&] { return ::open(path.c_str(), flags, mode); }));
    if (!file) return false;
    // Another process may have removed it as a leftover before the lock was held. Where the file system has
    // no locks, nobody removes any.
    const bool isTaken = !lock(file.get()) && errno == EWOULDBLOCK;
    struct stat status {};
    const bool isKnown = ::fstat(file.get(), &status) == 0;
    if (isKnown && !isTaken && status.st_nlink > 0) return true;
    const int error = isKnown ? EEXIST : errno;
    if (!isKnown) ::unlink(path.c_str());
    errno = error;
    return false;
  }

  std::string path;
  FileDescriptor file;
};

bool isTemporaryName(std::string_view name, std::string_view prefix) {
  return name.size() == prefix.size() + suffixLength && name.starts_with(prefix) &&
         name.find_first_not_of(alphabet, prefix.size()) == name.npos;
}

/// Removes the temporary files whose makers are gone. What cannot be removed stays; it is in nobody's way.
void removeLeftovers(const std::string& directory, std::string_view prefix) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(directory.c_str()), &::closedir);
  if (!listing) return;
  while (const dirent* entry = ::readdir(listing.get())) {
    if (!isTemporaryName(entry->d_name, prefix)) continue;
    const std::string path = directory + "/" + entry->d_name;
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    struct stat status {};
    if (file && ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) && lock(file.get())) {
      ::unlink(path.c_str());
    }
  }
}

/// Waits until the file is on the disk, not just in the disk's cache.
bool flushToDisk(int descriptor) {
#ifdef F_FULLFSYNC  // fcntl(2) of macOS, whose fsync leaves bytes in the disk's cache
  if (::fcntl(descriptor, F_FULLFSYNC) == 0) return true;
#endif
  return uninterrupted([&] { return ::fsync(descriptor); }) == 0;
}

/// Whether `old`, or nothing, still stands at `path`. Raises `SystemError` if the look fails.
bool isUnchanged(const std::string& path, const std::optional<TextFile>& old) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) == 0) return old && stateOf(status) == old->state;
  if (!meansAbsent(errno)) throw SystemError::file(path);
  return !old;
}

}  // namespace

bool replaceFile(const std::string& path, std::span<const std::string_view> pieces,
                 const std::optional<TextFile>& old, std::string_view temporaryPrefix) {
  const std::string directory = directoryOf(path);
  MissingDirectories directories(directory);
  directories.create();
  removeLeftovers(directory, temporaryPrefix);
  // Until it has its final rights, nobody but this user may read it: it may replace a private file.
  TemporaryFile temporary(directory, temporaryPrefix, old ? 0600 : 0666, path);
  for (const std::string_view piece : pieces) {
    if (!writeAll(temporary.descriptor(), piece)) throw SystemError::file(path);
  }
  if (old) copyAttributes(old->descriptor.get(), temporary.descriptor(), path);
  if (!flushToDisk(temporary.descriptor())) throw SystemError::file(path);
  if (!isUnchanged(path, old)) return false;
  if (!temporary.moveTo(path)) throw SystemError::file(path);
  // Without this a crash of the machine may undo the rename. A directory that cannot be synced is ignored,
  // since the write has taken place.
  if (const FileDescriptor parent(::open(directory.c_str(), O_RDONLY | O_CLOEXEC)); parent) {
    flushToDisk(parent.get());
  }
  return true;
}

}  // namespace platform
