// Files: reading them whole, telling what stands at a path, and following symbolic links. A look that fails
// is never taken for "nothing there": only ENOENT and ENOTDIR mean that, and where a caller may not care, its
// function says so. Not <filesystem>: it cannot open a file and then look at what it opened, and its
// directories, links and permissions come with code and start-up pages that nothing else here needs.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileDescriptor.h"
#include "platform/SystemError.h"

namespace platform {

/// Which file a path led to, and when that file was last changed. Two equal states are the same file,
/// unchanged in between as far as the file system's clock can tell.
struct FileState {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t size = 0;                ///< bytes
  std::array<std::int64_t, 4> times{};  ///< of content and of attributes: seconds and nanoseconds each

  friend bool operator==(const FileState&, const FileState&) = default;
};

/// A regular file that has been read, still open, with its state from before the reading.
struct TextFile {
  std::string text;
  FileState state;
  FileDescriptor descriptor;
};

/// The text of the regular file at `path`, links followed; nothing if nothing stands there. Raises
/// `SystemError` for everything else: a look that fails, a directory, a pipe or a device (it is never waited
/// for), a file of more than 256 MiB, and bytes that are not well-formed UTF-8.
std::optional<TextFile> readTextFile(const std::string& path);

/// All bytes of the regular file at `path`, links followed, for callers to whom a file that cannot be read is
/// none. Nothing for whatever `readTextFile` would refuse, but for the encoding, and for a file of more than
/// 1 MiB.
std::optional<std::string> readSmallFile(const std::string& path);

/// All bytes of what a person has named, be it a file, a pipe or a device, which is waited for. Nothing, with
/// `errno` set, if it cannot be read (a directory included).
std::optional<std::string> readFile(const std::string& path);

/// Whether a file or directory can be seen at `path`, links followed (a dangling link does not count). False
/// also where the look fails.
bool fileExists(const std::string& path);

/// Whether nothing stands at `path`, links followed: a link that dangles or leads round in a circle counts as
/// nothing. False where the look fails, since something may be there.
bool isAbsent(const std::string& path);

/// Whether `path` is a file that this user may execute. False also where the look fails.
bool isExecutableFile(const std::string& path);

/// The absolute path to which the system is led by `path`, with all links followed, also where something on
/// the way does not exist yet; "." and ".." count from where the links have led. A dangling link that leads
/// to another one is followed 16 times at most, and the link then reached is the result. Raises `SystemError`
/// if a look fails, as it does in a circle of links.
std::string followedPath(const std::string& path);

/// The part of `path` before its last slash ("/" for a name at the root, "." for a bare name).
std::string directoryOf(std::string_view path);

}  // namespace platform
