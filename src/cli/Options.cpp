#include "cli/Options.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include "cli/CLICall.h"
#include "platform/Terminal.h"

namespace zelto {
namespace {

std::optional<bool> colourDecision;

}  // namespace

bool jsonMode = false;

bool colourEnabled() {
  if (!colourDecision) {
    colourDecision = platform::outputIsTerminal() && std::getenv("NO_COLOR") == nullptr;
  }
  return *colourDecision;
}

void OutputOptions::arguments(ArgumentParser::Arguments<OutputOptions>& it) {
  it.flag(&OutputOptions::json, "json", {.help = "Print the API's JSON instead of a table"});
  it.flag(&OutputOptions::noColor, "noColor", {.help = "No colour, even on a terminal"});
}

void OutputOptions::apply() const {
  jsonMode = json;
  if (noColor) colourDecision = false;
}

void GlobalOptions::arguments(ArgumentParser::Arguments<GlobalOptions>& it) {
  it.group(&GlobalOptions::output, "output");
  it.option(&GlobalOptions::timeout, "timeout",
            {.help = "Seconds to wait on the app",
             .name = ArgumentParser::shortAndLong,
             .defaultValue = timeouts::usual,
             .transform = parseSeconds});
}

void GlobalOptions::apply() const {
  output.apply();
  requestTimeout = timeout;
}

std::optional<double> parseSeconds(const std::string& text) {
  const auto seconds = ArgumentParser::ArgumentValue<double>::parse(text);
  if (seconds && !std::isfinite(*seconds)) throw std::invalid_argument("must be a finite number of seconds");
  return seconds;
}

}  // namespace zelto
