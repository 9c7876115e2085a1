#include "platform/FileDescriptor.h"

#include <cerrno>
#include <csignal>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace platform {
namespace {

/// Whether a call that failed with `errno` is to be made again, after a wait if the descriptor is
/// non-blocking: whoever shares the terminal or pipe may have made it so.
bool mayRepeat(int descriptor, short event) {
  if (errno == EINTR) return true;
  if (errno != EAGAIN && errno != EWOULDBLOCK) return false;
  pollfd ready{descriptor, event, 0};
  return ::poll(&ready, 1, -1) >= 0 || errno == EINTR;
}

}  // namespace

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
  std::swap(number, other.number);
  return *this;
}

void FileDescriptor::close() {
  if (number >= 0) ::close(std::exchange(number, -1));
}

ssize_t readSome(int descriptor, char* buffer, std::size_t size) {
  for (;;) {
    const auto count = ::read(descriptor, buffer, size);
    if (count >= 0 || !mayRepeat(descriptor, POLLIN)) return count;
  }
}

std::optional<std::string> readToEnd(int descriptor) {
  std::string bytes;
  std::vector<char> buffer(1 << 16);
  for (;;) {
    const auto count = readSome(descriptor, buffer.data(), buffer.size());
    if (count == 0) return bytes;
    if (count < 0) return std::nullopt;
    bytes.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto written = ::write(descriptor, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (!mayRepeat(descriptor, POLLOUT)) {
      return false;
    }
  }
  return true;
}

void ignoreBrokenPipes() {
  std::signal(SIGPIPE, SIG_IGN);
}

void openStandardDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // open() gives out the lowest free number. It opens for reading only, so that writing there still fails.
    if (::fcntl(descriptor, F_GETFD) < 0) static_cast<void>(::open("/dev/null", O_RDONLY));
  }
}

}  // namespace platform
