#include "client/HTTPExchange.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include "client/Errors.h"
#include "platform/Socket.h"
#include "text/Number.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

constexpr std::size_t readSize = 65536;
constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view headEnd = "\r\n\r\n";

[[noreturn]] void raiseUnreachable(const std::string& reason, Cause cause = Cause::unreachable) {
  throw MCPError(cause, "cannot reach Zelto (" + reason + "). Is it running?");
}

[[noreturn]] void raiseErrno() {
  raiseUnreachable(std::strerror(errno), errno == ECONNREFUSED ? Cause::refused : Cause::unreachable);
}

/// Whole seconds as the socket takes them: cut toward zero, and no more than any system's time-out can hold.
/// What a negative one means is the system's to say.
long wholeSeconds(double timeout) {
  constexpr double most = std::numeric_limits<std::int32_t>::max();
  return static_cast<long>(std::clamp(timeout, -most, most));
}

using Addresses = std::unique_ptr<addrinfo, decltype(&::freeaddrinfo)>;

Addresses resolve(const APICredentials& credentials) {
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICSERV;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* list = nullptr;
  const std::string port = std::to_string(credentials.port);
  // The system would cut a host at its first NUL and a port to 16 bits, and so reach some other server.
  if (credentials.host.find('\0') != std::string::npos || !std::in_range<std::uint16_t>(credentials.port) ||
      ::getaddrinfo(credentials.host.c_str(), port.c_str(), &hints, &list) != 0 || list == nullptr) {
    raiseUnreachable("cannot resolve " + credentials.host);
  }
  return {list, &::freeaddrinfo};
}

platform::FileDescriptor connectTo(const APICredentials& credentials, long seconds) {
  // The first address alone is tried: the application listens on one.
  const Addresses addresses = resolve(credentials);
  platform::FileDescriptor connection = platform::openSocket(*addresses);
  if (!connection) raiseErrno();
  timeval limit{};
  limit.tv_sec = seconds;
  const int on = 1;
  ::setsockopt(connection.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  ::setsockopt(connection.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
  ::setsockopt(connection.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  if (::connect(connection.get(), addresses->ai_addr, addresses->ai_addrlen) != 0) raiseErrno();
  return connection;
}

std::string requestText(const APICredentials& credentials, std::string_view method, std::string_view target,
                        std::string_view body) {
  std::string text;
  const auto line = [&](std::initializer_list<std::string_view> pieces) {
    for (const std::string_view piece : pieces) text += piece;
    text += lineEnd;
  };
  line({method, " ", target, " HTTP/1.1"});
  line({"Host: ", credentials.host, ":", std::to_string(credentials.port)});
  line({"Authorization: Bearer ", credentials.token});
  line({"Content-Type: application/json"});
  line({"Content-Length: ", std::to_string(body.size())});
  line({"Connection: close"});
  line({});
  return text.append(body);
}

void sendAll(int connection, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto sent = platform::sendQuietly(connection, bytes);
    if (sent < 1) {
      if (errno == EINTR) continue;
      raiseErrno();
    }
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
}

std::string receiveAll(int connection, long seconds) {
  std::string received;
  std::vector<char> buffer(readSize);
  for (;;) {
    const auto count = ::read(connection, buffer.data(), buffer.size());
    if (count == 0) return received;
    if (count > 0) {
      received.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
      raiseUnreachable("timed out after " + std::to_string(seconds) + "s", Cause::timedOut);
    } else if (errno != EINTR) {
      raiseErrno();
    }
  }
}

std::int64_t statusIn(std::string_view head) {
  while (head.starts_with(lineEnd)) head.remove_prefix(lineEnd.size());
  std::vector<std::string_view> words;
  for (const std::string_view word : text::split(head.substr(0, head.find(lineEnd)), ' ')) {
    if (!word.empty()) words.push_back(word);
  }
  return words.size() < 2 ? 0 : text::decimal<std::int64_t>(words[1]).value_or(0);
}

}  // namespace

HTTPResponse exchange(const APICredentials& credentials, std::string_view method, std::string_view target,
                      std::string_view body, double timeout) {
  const long seconds = wholeSeconds(timeout);
  const platform::FileDescriptor connection = connectTo(credentials, seconds);
  sendAll(connection.get(), requestText(credentials, method, target, body));
  std::string received = receiveAll(connection.get(), seconds);
  const std::size_t end = received.find(headEnd);
  if (end == std::string::npos) raiseUnreachable("no HTTP response");
  const std::int64_t status = statusIn(std::string_view(received).substr(0, end));
  return {std::move(received), end + headEnd.size(), status};
}

}  // namespace zelto
