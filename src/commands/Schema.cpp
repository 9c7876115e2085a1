#include "commands/Schema.h"

#include <algorithm>

#include "cli/CLICall.h"
#include "cli/CLIError.h"
#include "cli/Out.h"
#include "client/Wire.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

using Out::Style;

void printTypes(const json::JSONElements& types) {
  Out::Table table{{"TYPE", Style::cyan}, {"COST", Style::dim}, {"NAME"}};
  for (const JSONView each : types) {
    table.row({Out::text(each, "type"), Out::text(each, "cost"), Out::text(each, "displayName")});
  }
  table.print();
  Out::line("");
  Out::hint("zelto schema <type> for its sub-events and variables");
}

void printSummary(JSONView type) {
  const std::string note = Out::text(type, "costNote");
  Out::fields({{"type", Out::text(type, "type")},
               {"name", Out::text(type, "displayName")},
               {"cost", Out::text(type, "cost") + (note.empty() ? "" : ", " + note)},
               {"fields", Out::text(type, "configFields")}});
}

void printSubEvent(JSONView subEvent) {
  Out::section(Out::text(subEvent, "subEvent") + "  " +
               Out::paint(Out::text(subEvent, "displayName"), Style::dim));
  const json::JSONElements variables = objectsIn(subEvent, "values");
  if (variables.empty()) return Out::hint("no variables");
  Out::Table table{{"TEMPLATE", Style::cyan}, {"ENV", Style::dim}, {"TYPE", Style::dim}, {"WHAT IT IS"}};
  for (const JSONView each : variables) {
    table.row({Out::text(each, "template"), Out::text(each, "envVar"), Out::text(each, "type"),
               Out::text(each, "description")});
  }
  table.print();
}

}  // namespace

ArgumentParser::Declaration Schema::declaration() {
  return ArgumentParser::command<Schema>(
      {.abstract = "Trigger types, their sub-events, and the values each one carries"}, [](auto& it) {
        it.argument(&Schema::trigger, "trigger",
                    {.help = "A trigger type, for its sub-events and variables"});
        it.flag(&Schema::values, "values", {.help = "Only the variable table"});
        it.group(&Schema::options, "options");
      });
}

void Schema::run() const {
  options.apply();
  const JSONDocument schema = expectObject(cliCall({"GET", "/schema"}));
  if (settings.jsonMode) return Out::json(schema);
  const json::JSONElements types = objectsIn(schema, "triggerTypes");
  if (!trigger) return printTypes(types);
  const auto found = std::find_if(types.begin(), types.end(), [&](JSONView type) {
    return text::equalIgnoringCase(Out::text(type, "type"), *trigger);
  });
  if (found == types.end()) throw CLIError("no trigger type " + *trigger + ". List them with: zelto schema");
  if (!values) printSummary(*found);
  for (const JSONView subEvent : objectsIn(*found, "subEvents")) printSubEvent(subEvent);
}

}  // namespace zelto
