// Files: whole reads, tests, symbolic links, and writes that leave either the old file or the new one.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace platform {

/// A file operation that failed; `what()` is the path, ": ", and the reason, mostly in the system's words.
struct FileError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// All bytes of the file at `path`, or nothing, with `errno` set, if it cannot be read (a directory
/// included).
std::optional<std::string> readFile(const std::string& path);

/// All of the file at `path`, which must be well-formed UTF-8. Raises `FileError`.
std::string readUTF8(const std::string& path);

/// All bytes up to the end of input of an open descriptor; nothing, with `errno` set, on a read error.
std::optional<std::string> readToEnd(int descriptor);

/// Whether a file or directory stands at `path`, links followed (a dangling link does not count).
bool fileExists(const std::string& path);

/// Whether `path` is a file that this user may execute.
bool isExecutableFile(const std::string& path);

/// The target of the symbolic link at `path` as it is stored, or nothing if `path` is no link.
std::optional<std::string> linkTarget(const std::string& path);

/// `path` with its symbolic links resolved as far as it exists, the rest appended as it stands.
std::string resolvingLinks(const std::string& path);

/// `path` without empty, "." and ".." components, judged by the text alone.
std::string standardizedPath(std::string_view path);

/// The part of `path` before its last slash ("/" for a name at the root, "." for a bare name).
std::string directoryOf(std::string_view path);

/// Creates the directory and its missing parents. Raises `FileError`.
void createDirectories(const std::string& path);

/// Replaces the file at `path` by one that holds `bytes`, through a temporary file beside it: a crash at any
/// instant leaves the old file or the new one, whole. Mode and owner of an existing file, which must be a
/// regular one, are kept; a new file's mode comes from the umask. Raises `FileError`; the temporary file is
/// gone then.
void writeAtomically(const std::string& path, std::string_view bytes);

}  // namespace platform
