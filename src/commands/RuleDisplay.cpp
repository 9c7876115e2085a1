#include "commands/RuleDisplay.h"

#include <algorithm>

#include "cli/Out.h"
#include "client/Wire.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

void printConfigSection(const char* title, JSONView value) {
  std::vector<Out::Pair> pairs;
  for (const auto& [key, member] : value.members()) pairs.emplace_back(key, Out::text(member));
  if (std::all_of(pairs.begin(), pairs.end(), [](const Out::Pair& pair) { return pair.second.empty(); }))
    return;
  Out::section(title);
  Out::fields(pairs);
}

}  // namespace

void printRule(JSONView rule) {
  Out::fields({{"id", Out::text(rule, "id")},
               {"name", Out::text(rule, "name")},
               {"group", Out::text(rule, "group")},
               {"enabled", flagIn(rule, "enabled") ? "yes" : "no"},
               {"trigger", Out::text(rule, "triggerType") + " / " + Out::text(rule, "subEvent")},
               {"action", Out::text(rule, "action")},
               {"reverse", Out::text(rule, "reverseAction")},
               {"profiles", Out::text(rule, "profiles")}});
  printConfigSection("Trigger", rule["triggerConfig"]);
  printConfigSection("Action", rule["actionConfig"]);
  printConfigSection("Condition", rule["condition"]);
  printConfigSection("Rate limit", rule["rateLimit"]);
  printConfigSection("Schedule", rule["schedule"]);
  std::vector<std::string> variables = stringsIn(rule, "availableValues");
  if (variables.empty()) return;
  for (std::string& variable : variables) variable.insert(0, "{{").append("}}");
  Out::section("Variables");
  Out::line(text::joined(variables, " "));
}

}  // namespace zelto
