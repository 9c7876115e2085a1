// The one error that this folder raises: the operating system refused something, or its answer was of no use.
#pragma once

#include <stdexcept>
#include <string>

namespace platform {

/// A request that the operating system refused, or whose answer is of no use.
struct SystemError : std::runtime_error {
  enum class Kind {
    file,        ///< `what()` is a path, ": ", and the reason
    output,      ///< standard output took no more; `what()` says so, with the system's text
    unresolved,  ///< a host that leads nowhere; `what()` is empty
    refused,     ///< nobody listens at the address; here and below `what()` is the system's text
    timedOut,    ///< nothing came over a connection in time
    connection,  ///< any other failure of a connection
  };
  SystemError(Kind what, const std::string& text) : std::runtime_error(text), kind(what) {}

  /// The error of the file at `path`, for a reason in words, by default those for `errno`.
  static SystemError file(const std::string& path, const std::string& reason = reasonNow()) {
    return {Kind::file, path + ": " + reason};
  }

  Kind kind;

 private:
  static std::string reasonNow();
};

}  // namespace platform
