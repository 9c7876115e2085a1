#include "cli/Health.h"

#include "cli/CLICall.h"
#include "cli/Out.h"
#include "client/Wire.h"

namespace zelto {

ArgumentParser::Declaration Health::declaration() {
  return ArgumentParser::command<Health>({.abstract = "Whether Zelto is running, and what it is running"},
                                         [](auto& it) { it.group(&Health::options, "options"); });
}

void Health::run() const {
  options.apply();
  const JSONObject health = expectObject(cliCall({"GET", "/health"}));
  if (settings.jsonMode) return Out::json(health);
  Out::fields({{"version", Out::text(health, "version")},
               {"profile", Out::text(health, "activeProfile")},
               {"rules", std::to_string(memberOf(health, "ruleCount").integer()) + " (" +
                             std::to_string(memberOf(health, "visibleRuleCount").integer()) + " visible)"},
               {"api", flagIn(health, "running") ? Out::paint("running", Out::Style::green)
                                                 : Out::paint("off", Out::Style::yellow)}});
}

}  // namespace zelto
