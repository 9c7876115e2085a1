// The operating system's log, for diagnostics that nothing reads back.
#pragma once

#include <string_view>

namespace platform {

enum class LogLevel { info, error };

/// Logs one line: on macOS to the unified log (subsystem "com.mirrowfen.Zelto"), elsewhere to syslog with
/// that identity and the category before the text.
void log(LogLevel level, std::string_view category, std::string_view message);

}  // namespace platform
