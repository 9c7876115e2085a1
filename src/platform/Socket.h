// Sockets whose lost peers end a call, not the process.
#pragma once

#include <string_view>

#include <netdb.h>
#include <sys/types.h>

#include "platform/FileDescriptor.h"

namespace platform {

/// A socket of the address's family, type and protocol that no child inherits; empty, with `errno` set, if
/// the system refuses.
FileDescriptor openSocket(const addrinfo& address);

/// Sends some of `bytes` and returns how many, or -1 with `errno` set. A closed connection is an error, never
/// a signal.
ssize_t sendQuietly(int connection, std::string_view bytes);

}  // namespace platform
