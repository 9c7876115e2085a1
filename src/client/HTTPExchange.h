// One HTTP request and its response over one plain TCP connection.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "client/ControlFile.h"
#include "text/GrowingBlock.h"

namespace zelto {

struct HTTPResponse {
  text::Bytes received;      ///< the head, and after it every byte as it came: chunks are not joined
  std::size_t headSize = 0;  ///< where the body begins
  std::int64_t status = 0;   ///< 0 if the status line holds none
};

/// Sends one request and reads to the end of the connection. `target` is percent-encoded; `timeout`, in
/// seconds, is cut to whole ones and limits each single read and write (0 is no limit). Raises `MCPError`
/// "cannot reach Zelto (...). Is it running?".
HTTPResponse exchange(const APICredentials& credentials, std::string_view method, std::string_view target,
                      std::string_view body, double timeout);

}  // namespace zelto
