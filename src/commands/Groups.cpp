#include "commands/Groups.h"

#include "cli/CLICall.h"
#include "cli/Out.h"
#include "client/Wire.h"

namespace zelto {
namespace {

using ArgumentParser::command;
using ArgumentParser::type;
using Out::Style;

std::string pathOf(const std::string& name) {
  return "/groups/" + percentEncode(name);
}

void switchGroup(const std::string& name, bool on) {
  const JSONDocument response = cliCall({"POST", pathOf(name) + (on ? "/enable" : "/disable")});
  if (settings.jsonMode) return Out::json(response);
  Out::line(Out::onOff(on, 3) + " every rule in " + name);
}

/// What `enable` and `disable` declare alike.
template <class Switch>
ArgumentParser::Declaration switchDeclaration(const char* abstract) {
  return command<Switch>({.abstract = abstract}, [](auto& it) {
    it.argument(&Switch::name, "name");
    it.group(&Switch::options, "options");
  });
}

}  // namespace

ArgumentParser::Declaration Groups::declaration() {
  return command<Groups>({.abstract = "Rule groups",
                          .subcommands = {type<List>(), type<Enable>(), type<Disable>(), type<Rename>()},
                          .defaultSubcommand = type<List>()});
}

ArgumentParser::Declaration Groups::List::declaration() {
  return command<List>({.abstract = "List groups"}, [](auto& it) { it.group(&List::options, "options"); });
}

void Groups::List::run() const {
  options.apply();
  const JSONDocument groups = expectList(cliCall({"GET", "/groups"}));
  if (settings.jsonMode) return Out::json(groups);
  if (groups.root().elements().empty()) return Out::line("No groups yet.");
  Out::Table table{{"RULES", Style::dim}, {"NAME"}};
  for (const JSONView group : groups.root().elements()) {
    table.row({std::to_string(integerIn(group, "enabledCount")) + "/" +
                   std::to_string(integerIn(group, "ruleCount")),
               Out::text(group, "name")});
  }
  table.print();
}

ArgumentParser::Declaration Groups::Enable::declaration() {
  return switchDeclaration<Enable>("Turn every rule in a group on");
}

void Groups::Enable::run() const {
  options.apply();
  switchGroup(name, true);
}

ArgumentParser::Declaration Groups::Disable::declaration() {
  return switchDeclaration<Disable>("Turn every rule in a group off");
}

void Groups::Disable::run() const {
  options.apply();
  switchGroup(name, false);
}

ArgumentParser::Declaration Groups::Rename::declaration() {
  return command<Rename>({.abstract = "Rename a group"}, [](auto& it) {
    it.argument(&Rename::name, "name");
    it.argument(&Rename::newName, "newName");
    it.group(&Rename::options, "options");
  });
}

void Groups::Rename::run() const {
  options.apply();
  const JSONDocument response =
      cliCall({.method = "PATCH", .path = pathOf(name), .body = JSONObject{{"name", newName}}});
  if (settings.jsonMode) return Out::json(response);
  Out::line(name + " is now " + newName);
}

}  // namespace zelto
