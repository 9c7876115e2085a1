// One HTTP request and its response over one plain TCP connection.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "client/ControlFile.h"

namespace zelto {

struct HTTPResponse {
  std::string received;
  std::size_t headSize = 0;
  std::int64_t status = 0;  ///< 0 if the status line holds none

  /// Every byte after the head, as received: chunks are not joined.
  std::string_view body() const { return std::string_view(received).substr(headSize); }
};

/// Sends one request and reads to the end of the connection. `target` is percent-encoded; `timeout`, in
/// seconds, is cut to whole ones and limits each single read and write (0 is no limit). Raises `MCPError`
/// "cannot reach Zelto (...). Is it running?".
HTTPResponse exchange(const APICredentials& credentials, std::string_view method, std::string_view target,
                      std::string_view body, double timeout);

}  // namespace zelto
