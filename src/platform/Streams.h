// The standard streams: buffered output, unbuffered diagnostics, input by the line or whole.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/StyledText.h"
#include "platform/SystemError.h"

namespace platform {

/// Appends `text` to what waits for standard output, and writes when much has gathered. Raises `SystemError`.
void print(const StyledText& text);

/// The same for bytes that go out as they are, since their writer has made sure that they hold nothing which
/// a terminal would obey. Raises `SystemError`.
void printHarmless(std::string_view bytes);

/// Writes all that waits to standard output. Raises `SystemError`. A closed pipe ends the process by SIGPIPE.
void flushOutput();

/// Writes `text` to standard error at once, after whatever waits for standard output. On a terminal, what it
/// would obey becomes visible (`text::harmless`).
void printError(std::string_view text);

/// One line of standard input without its line end, repaired to UTF-8; nothing at the end of input. Reads no
/// byte beyond the line.
std::optional<std::string> readInputLine();

}  // namespace platform
