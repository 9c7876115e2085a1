#include "mcp/MCPLineReader.h"

#include <new>
#include <utility>

#include "platform/FileDescriptor.h"

namespace zelto {
namespace {

/// A buffer that a long line has made larger than this is freed.
constexpr std::size_t keptCapacity = 1 << 20;

std::string_view withoutTrailingBlanks(std::string_view line) {
  return line.substr(0, line.find_last_not_of("\t\r ") + 1);
}

}  // namespace

std::string_view MCPLineReader::nextLine() {
  std::size_t searchFrom = consumed;
  for (;;) {
    const std::size_t end = buffer.find('\n', searchFrom);
    if (end != std::string::npos) {
      const auto line = std::string_view(buffer).substr(consumed, end - consumed);
      consumed = end + 1;
      return withoutTrailingBlanks(line);
    }
    // Moves what is left of the last chunk to the front, at most once a line.
    buffer.erase(0, std::exchange(consumed, 0));
    if (buffer.capacity() > keptCapacity && buffer.size() < keptCapacity / 2) buffer.shrink_to_fit();

    const auto count = platform::readSome(fd, chunk.data(), chunk.size());
    if (count <= 0) {
      if (buffer.empty()) throw EndOfInput();
      consumed = buffer.size();
      return withoutTrailingBlanks(buffer);
    }
    searchFrom = buffer.size();
    try {
      buffer.append(chunk.data(), static_cast<std::size_t>(count));
    } catch (const std::bad_alloc&) {
      searchFrom = 0;
      dropLine(count);
    }
  }
}

/// Reads on, past the end of the line that `buffer` and the `count` bytes of `chunk` belong to.
void MCPLineReader::dropLine(std::ptrdiff_t count) {
  buffer.clear();
  for (; count > 0; count = platform::readSome(fd, chunk.data(), chunk.size())) {
    const std::string_view piece(chunk.data(), static_cast<std::size_t>(count));
    if (const std::size_t end = piece.find('\n'); end != std::string_view::npos) {
      buffer = piece.substr(end + 1);
      break;
    }
  }
  buffer.shrink_to_fit();
}

}  // namespace zelto
