#include "platform/FileDescriptor.h"

#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace platform {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
  std::swap(number, other.number);
  return *this;
}

void FileDescriptor::close() {
  if (number >= 0) ::close(std::exchange(number, -1));
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      // Standard output may be a pipe that its other owner has made non-blocking.
      pollfd writable{descriptor, POLLOUT, 0};
      if ((errno == EAGAIN || errno == EWOULDBLOCK) && ::poll(&writable, 1, -1) >= 0) continue;
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace platform
