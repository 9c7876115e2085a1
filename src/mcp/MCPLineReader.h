// Cuts a byte stream into lines: the messages that an agent writes to the server.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zelto {

/// Reads lines of any length from a descriptor, in time linear in the bytes. A line for which there is no
/// memory is passed over.
class MCPLineReader {
 public:
  /// Thrown when no more lines exist.
  struct EndOfInput {};

  /// Borrows `descriptor`.
  explicit MCPLineReader(int descriptor) : fd(descriptor), chunk(65536) {}

  /// The next line without its LF and without tabs, carriage returns and blanks at its end; bytes after the
  /// last LF are a line too. Valid until the next call. A read error counts as the end of the input. Throws
  /// `EndOfInput`.
  std::string_view nextLine();

 private:
  void dropLine(std::ptrdiff_t count);

  int fd;
  std::string buffer;
  std::size_t consumed = 0;  ///< bytes at the front of `buffer` that belong to lines already handed out
  std::vector<char> chunk;
};

}  // namespace zelto
