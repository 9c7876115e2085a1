// The options that nearly every command shares; they write the settings of the process.
#pragma once

#include "ArgumentParser/ArgumentParser.h"
#include "cli/Settings.h"

namespace zelto {

/// `--json` and `--no-color`.
struct OutputOptions {
  bool json = false;
  bool noColor = false;

  static void arguments(ArgumentParser::Arguments<OutputOptions>& it);
  /// Writes the settings. A command calls this before anything else, if it has no `GlobalOptions`.
  void apply() const;
};

/// `OutputOptions` and the time-out of requests.
struct GlobalOptions {
  OutputOptions output;
  double timeout = timeouts::usual;  ///< seconds

  static void arguments(ArgumentParser::Arguments<GlobalOptions>& it);
  /// Writes the settings. A command calls this before anything else.
  void apply() const;
};

/// Reads an option's seconds: any finite number. Raises an error that says so for one that is not finite.
std::optional<double> parseSeconds(const std::string& text);

}  // namespace zelto
