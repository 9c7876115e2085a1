// The operating system's log, for diagnostics that nothing reads back.
#pragma once

#include <string_view>

namespace platform {

enum class LogLevel { info, error };

/// Who logs, in the terms of macOS's unified log.
struct LogSource {
  const char* subsystem;  ///< a program, as a reversed domain name
  const char* category;   ///< a part of it
};

/// Logs one line: on macOS to the unified log, elsewhere to syslog, the subsystem as identity and the
/// category before the text.
void log(const LogSource& source, LogLevel level, std::string_view message);

}  // namespace platform
