// The options that nearly every command shares, and the settings of the process that they write.
#pragma once

#include "ArgumentParser/ArgumentParser.h"
#include "client/Timeouts.h"

namespace zelto {

/// Whether commands print the API's JSON in place of their text form.
extern bool jsonMode;

/// Whether text is styled for a terminal. Decided on first use: standard output is a terminal, and no
/// variable NO_COLOR is set, be it empty.
bool colourEnabled();

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
