// Runs a script the way a rule's action does: an interpreter, event values in the environment, a time limit.
#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include <boost/json.hpp>

namespace standin {

/// A JSON value as people write it: strings without quotes, numbers in their shortest form.
std::string valueText(const boost::json::value& value);

/// The environment variable of an event value: "fileName" gives "ZELTO_FILE_NAME".
std::string environmentName(std::string_view key);

/// `text` with what is not valid UTF-8 replaced by U+FFFD.
std::string repairUTF8(std::string_view text);

struct Script {
  std::string text;
  /// Path of an executable that takes "-c" and the script.
  std::string runner = "/bin/zsh";
  /// Limit in seconds; beyond it the script and all its children are killed.
  double timeout = 30;
  /// Event values; each key becomes `environmentName(key)`.
  boost::json::object values;
};

/// Runs to the end; `stopping` ends it early, like the limit. Gives `exitCode` (128 + signal if one ended it,
/// 124 at the limit, 127 without a runner), `duration` in seconds, `stdout` and `stderr`. Raises
/// `std::system_error` if no process can be started.
boost::json::object runScript(const Script& script, const std::atomic<bool>& stopping);

}  // namespace standin
