// The standard streams: buffered output, unbuffered diagnostics, input by the line or whole.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace platform {

/// Standard output took no more; `what()` is "cannot write standard output: " and the system's text.
struct OutputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Appends `bytes` to what waits for standard output, and writes when much has gathered. Raises
/// `OutputError`.
void print(std::string_view bytes);

/// The text that waits for standard output, for those that build their output in place.
std::string& pendingOutput();

/// Writes all that waits to standard output. Raises `OutputError`. A closed pipe ends the process by SIGPIPE.
void flushOutput();

/// Writes `bytes` to standard error at once, after whatever waits for standard output.
void printError(std::string_view bytes);

/// One line of standard input without its line end, repaired to UTF-8; nothing at the end of input. Reads no
/// byte beyond the line.
std::optional<std::string> readInputLine();

}  // namespace platform
