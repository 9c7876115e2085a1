#include "platform/Streams.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <unistd.h>

#include "platform/FileDescriptor.h"
#include "platform/Terminal.h"
#include "text/Harmless.h"
#include "text/Unicode.h"

namespace platform {
namespace {

constexpr std::size_t flushAt = 1 << 16;

/// What waits for standard output.
std::string pending;

void write(std::string_view bytes) {
  if (writeAll(STDOUT_FILENO, bytes)) return;
  throw SystemError(SystemError::Kind::output,
                    std::string("cannot write standard output: ") + std::strerror(errno));
}

}  // namespace

void print(const StyledText& text) {
  printHarmless(text.bytes);
}

void printHarmless(std::string_view bytes) {
  // A large piece is written without being copied first.
  if (bytes.size() >= flushAt) {
    flushOutput();
    return write(bytes);
  }
  pending += bytes;
  if (pending.size() >= flushAt) flushOutput();
}

void flushOutput() {
  // Emptied first, so that whoever reports the failure does not write the same bytes again.
  write(std::exchange(pending, {}));
}

void printError(std::string_view text) {
  flushOutput();
  const bool isObeyed = !text::isHarmless(text) && isTerminal(STDERR_FILENO);
  // If standard error itself is gone, there is nobody left to tell.
  static_cast<void>(isObeyed ? writeAll(STDERR_FILENO, text::harmless(text)) : writeAll(STDERR_FILENO, text));
}

std::optional<std::string> readInputLine() {
  std::string line;
  for (;;) {
    char byte = 0;
    if (readSome(STDIN_FILENO, &byte, 1) <= 0) {
      if (line.empty()) return std::nullopt;
      break;
    }
    if (byte == '\n') break;
    line += byte;
  }
  if (line.ends_with('\r')) line.pop_back();
  return text::repairedUTF8(line);
}

}  // namespace platform
