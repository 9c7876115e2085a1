#include "cli/Options.h"

#include <cmath>
#include <optional>
#include <stdexcept>

namespace zelto {
void OutputOptions::arguments(ArgumentParser::Arguments<OutputOptions>& it) {
  it.flag(&OutputOptions::json, "json", {.help = "Print the API's JSON instead of a table"});
  it.flag(&OutputOptions::noColor, "noColor", {.help = "No colour, even on a terminal"});
}

void OutputOptions::apply() const {
  settings.jsonMode = json;
  settings.allowsColour = !noColor;
}

void GlobalOptions::arguments(ArgumentParser::Arguments<GlobalOptions>& it) {
  it.group(&GlobalOptions::output, "output");
  it.option(&GlobalOptions::timeout, "timeout",
            {.help = "Seconds to wait on the app",
             .name = ArgumentParser::shortAndLong,
             .transform = parseSeconds,
             .defaulted = true});
}

void GlobalOptions::apply() const {
  output.apply();
  settings.requestTimeout = timeout;
}

std::optional<double> parseSeconds(const std::string& text) {
  const auto seconds = ArgumentParser::ArgumentValue<double>::parse(text);
  if (seconds && !std::isfinite(*seconds)) throw std::invalid_argument("must be a finite number of seconds");
  return seconds;
}

}  // namespace zelto
