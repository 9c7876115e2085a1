#include "cli/Health.h"

#include "cli/CLICall.h"
#include "cli/Out.h"
#include "client/Wire.h"

namespace zelto {
namespace {

/// A count without its fraction.
std::string wholeNumberIn(JSONView object, std::string_view key) {
  const auto number = object[key].number();
  return std::to_string(number ? number->integer() : 0);
}

}  // namespace

ArgumentParser::Declaration Health::declaration() {
  return ArgumentParser::command<Health>({.abstract = "Whether Zelto is running, and what it is running"},
                                         [](auto& it) { it.group(&Health::options, "options"); });
}

void Health::run() const {
  options.apply();
  const JSONDocument health = expectObject(cliCall({"GET", "/health"}));
  if (settings.jsonMode) return Out::json(health);
  Out::fields({{"version", Out::text(health, "version")},
               {"profile", Out::text(health, "activeProfile")},
               {"rules", wholeNumberIn(health, "ruleCount") + " (" +
                             wholeNumberIn(health, "visibleRuleCount") + " visible)"},
               {"api", flagIn(health, "running") ? Out::paint("running", Out::Style::green)
                                                 : Out::paint("off", Out::Style::yellow)}});
}

}  // namespace zelto
