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

void printTypes(const JSONArray& types) {
  Out::Table table{{"TYPE", Style::cyan}, {"COST", Style::dim}, {"NAME"}};
  for (const JSONValue& each : types) {
    table.row({Out::text(*each.object(), "type"), Out::text(*each.object(), "cost"),
               Out::text(*each.object(), "displayName")});
  }
  table.print();
  Out::line("");
  Out::hint("zelto schema <type> for its sub-events and variables");
}

void printSummary(const JSONObject& type) {
  const std::string note = Out::text(type, "costNote");
  Out::fields({{"type", Out::text(type, "type")},
               {"name", Out::text(type, "displayName")},
               {"cost", Out::text(type, "cost") + (note.empty() ? "" : ", " + note)},
               {"fields", Out::text(type, "configFields")}});
}

void printSubEvent(const JSONObject& subEvent) {
  Out::section(Out::text(subEvent, "subEvent") + "  " +
               Out::paint(Out::text(subEvent, "displayName"), Style::dim));
  const JSONArray variables = objectsIn(subEvent, "values");
  if (variables.empty()) return Out::hint("no variables");
  Out::Table table{{"TEMPLATE", Style::cyan}, {"ENV", Style::dim}, {"TYPE", Style::dim}, {"WHAT IT IS"}};
  for (const JSONValue& each : variables) {
    table.row({Out::text(*each.object(), "template"), Out::text(*each.object(), "envVar"),
               Out::text(*each.object(), "type"), Out::text(*each.object(), "description")});
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
  JSONObject schema = expectObject(cliCall({"GET", "/schema"}));
  if (settings.jsonMode) return Out::json(std::move(schema));
  const JSONArray types = objectsIn(schema, "triggerTypes");
  if (!trigger) return printTypes(types);
  const auto found = std::find_if(types.begin(), types.end(), [&](const JSONValue& type) {
    return text::equalIgnoringCase(Out::text(*type.object(), "type"), *trigger);
  });
  if (found == types.end()) throw CLIError("no trigger type " + *trigger + ". List them with: zelto schema");
  if (!values) printSummary(*found->object());
  for (const JSONValue& subEvent : objectsIn(*found->object(), "subEvents"))
    printSubEvent(*subEvent.object());
}

}  // namespace zelto
