// The control file, in which the application announces where its API listens and the token that opens it.
#pragma once

#include <cstdint>
#include <string>

namespace zelto {

/// Where the API listens, and its bearer token. The token is for the request alone: it is never shown.
struct APICredentials {
  std::string host;
  std::int64_t port = 0;
  std::string token;
};

/// The control file's path: `$ZELTO_CONTROL_FILE` if set and not empty, its leading "~" expanded, else
/// "Library/Application Support/Zelto/control.json" in the home directory.
std::string controlFilePath();

/// Reads the control file afresh. Raises `MCPError`: `Cause::off` if it cannot be read, for whatever reason,
/// and `Cause::controlFile` if it does not hold what it should.
APICredentials readCredentials();

}  // namespace zelto
