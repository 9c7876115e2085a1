#include "platform/Connection.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace platform {
namespace {

[[noreturn]] void raiseLast() {
  const int error = errno;
  using Kind = SystemError::Kind;
  Kind kind = Kind::connection;
  if (error == ECONNREFUSED) kind = Kind::refused;
  if (error == EAGAIN || error == EWOULDBLOCK) kind = Kind::timedOut;
  throw SystemError(kind, std::strerror(error));
}

using Addresses = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

Addresses resolve(const std::string& host, std::int64_t port) {
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICSERV;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* list = nullptr;
  // The system cuts a host at its first NUL and a port to 16 bits, which would lead to some other server.
  if (host.find('\0') != std::string::npos || !std::in_range<std::uint16_t>(port) ||
      ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &list) != 0 || list == nullptr) {
    throw SystemError(SystemError::Kind::unresolved, {});
  }
  return {list, &::freeaddrinfo};
}

FileDescriptor openSocket(const addrinfo& address) {
  FileDescriptor connection(::socket(address.ai_family, address.ai_socktype, address.ai_protocol));
  if (!connection) raiseLast();
  secureSocket(connection.get());
  return connection;
}

}  // namespace

void secureSocket(int socket) {
  ::fcntl(socket, F_SETFD, FD_CLOEXEC);
#ifdef SO_NOSIGPIPE  // setsockopt(2) of macOS
  const int on = 1;
  ::setsockopt(socket, SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
}

ssize_t sendSome(int socket, std::string_view bytes) {
#ifdef MSG_NOSIGNAL  // send(2) of Linux and POSIX.1-2008
  constexpr int flags = MSG_NOSIGNAL;
#else
  constexpr int flags = 0;
#endif
  const auto count = ::send(socket, bytes.data(), bytes.size(), flags);
  // What macOS says of a connection while it is being torn down.
  if (count < 0 && errno == EPROTOTYPE) errno = EPIPE;
  return count;
}

Connection::Connection(const std::string& host, std::int64_t port, long seconds) {
  // The first address alone is tried: who listens on a local address listens on one.
  const Addresses addresses = resolve(host, port);
  socket = openSocket(*addresses);
  timeval limit{};
  limit.tv_sec = seconds;
  const int on = 1;
  ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  ::setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
  ::setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  if (::connect(socket.get(), addresses->ai_addr, addresses->ai_addrlen) != 0) raiseLast();
}

void Connection::send(std::string_view bytes) const {
  while (!bytes.empty()) {
    const auto sent = uninterrupted([&] { return sendSome(socket.get(), bytes); });
    if (sent < 1) raiseLast();
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
}

std::size_t Connection::receive(char* buffer, std::size_t size) const {
  const auto count = uninterrupted([&] { return ::read(socket.get(), buffer, size); });
  if (count < 0) raiseLast();
  return static_cast<std::size_t>(count);
}

}  // namespace platform
