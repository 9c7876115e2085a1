#include "platform/Streams.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

#include "platform/FileDescriptor.h"
#include "platform/Terminal.h"
#include "text/Harmless.h"
#include "text/Unicode.h"

namespace platform {
namespace {

constexpr std::size_t flushAt = 1 << 16;

}  // namespace

std::string& pendingOutput() {
  static std::string pending;
  return pending;
}

void print(const StyledText& text) {
  pendingOutput() += text.bytes;
  if (pendingOutput().size() >= flushAt) flushOutput();
}

void flushOutput() {
  std::string& pending = pendingOutput();
  const bool written = writeAll(STDOUT_FILENO, pending);
  pending.clear();
  if (!written) throw OutputError(std::string("cannot write standard output: ") + std::strerror(errno));
}

void printError(std::string_view text) {
  flushOutput();
  const bool isObeyed = !text::isHarmless(text) && isTerminal(STDERR_FILENO);
  // Nobody is left to tell when standard error itself is gone.
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
