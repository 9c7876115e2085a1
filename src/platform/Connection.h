// A connection to a server, whose loss ends a call and not the process.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/FileDescriptor.h"
#include "platform/SystemError.h"

namespace platform {

/// Keeps the socket from children, and a write to it after its peer has gone from ending the process.
void secureSocket(int socket);

/// Sends some of `bytes` on a socket that has been secured. Returns how many, or -1 with `errno` set: EPIPE
/// if the peer has gone.
ssize_t sendSome(int socket, std::string_view bytes);

/// A TCP connection that no child inherits.
class Connection {
 public:
  /// Connects to the first address of `host`, a name or an address. Each single read and write waits for
  /// `seconds` at most, or without end for 0. Raises `SystemError`.
  Connection(const std::string& host, std::int64_t port, long seconds);

  /// Sends all of `bytes`. Raises `SystemError`.
  void send(std::string_view bytes) const;
  /// Waits for bytes and puts at most `size` of them into `buffer`. Returns how many, 0 at the end of what
  /// the server sends. Raises `SystemError`.
  std::size_t receive(char* buffer, std::size_t size) const;

  int descriptor() const { return socket.get(); }

 private:
  FileDescriptor socket;
};

}  // namespace platform
