#include "platform/Socket.h"

#include <fcntl.h>
#include <sys/socket.h>

namespace platform {

FileDescriptor openSocket(const addrinfo& address) {
  FileDescriptor connection(::socket(address.ai_family, address.ai_socktype, address.ai_protocol));
  if (!connection) return connection;
  ::fcntl(connection.get(), F_SETFD, FD_CLOEXEC);
#ifdef SO_NOSIGPIPE
  const int on = 1;
  ::setsockopt(connection.get(), SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
  return connection;
}

ssize_t sendQuietly(int connection, std::string_view bytes) {
#ifdef MSG_NOSIGNAL
  constexpr int flags = MSG_NOSIGNAL;
#else
  constexpr int flags = 0;
#endif
  return ::send(connection, bytes.data(), bytes.size(), flags);
}

}  // namespace platform
