// A private world for a test: a directory that goes with it, and environment variables that are put back.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace support {

/// A new empty directory, removed with all that is in it.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory();
  /// The path of `name` inside.
  std::string operator/(const std::string& name) const { return path + "/" + name; }

  std::string path;
};

/// Sets (or, with nothing, unsets) a variable for as long as it lives.
class ScopedVariable {
 public:
  ScopedVariable(std::string name, const std::optional<std::string>& value);
  ScopedVariable(const ScopedVariable&) = delete;
  ~ScopedVariable();

 private:
  std::string name;
  std::optional<std::string> before;
};

/// The whole file, or an empty text if there is none.
std::string contentsOf(const std::string& path);

/// The rows of a table: a JSON file that holds an array of arrays of texts.
std::vector<std::vector<std::string>> rowsIn(const std::string& file);

/// Writes the file, creating its directory.
void writeFile(const std::string& path, const std::string& contents);

}  // namespace support
