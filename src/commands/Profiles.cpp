#include "commands/Profiles.h"

#include "cli/CLICall.h"
#include "cli/Out.h"
#include "cli/Resolve.h"
#include "client/Wire.h"

namespace zelto {
namespace {

using ArgumentParser::command;
using ArgumentParser::type;
using Out::Style;

}  // namespace

ArgumentParser::Declaration Profiles::declaration() {
  return command<Profiles>({.abstract = "Rule profiles",
                            .subcommands = {type<List>(), type<Add>(), type<Activate>()},
                            .defaultSubcommand = type<List>()});
}

ArgumentParser::Declaration Profiles::List::declaration() {
  return command<List>({.abstract = "List profiles"}, [](auto& it) { it.group(&List::options, "options"); });
}

void Profiles::List::run() const {
  options.apply();
  const JSONDocument profiles = expectList(cliCall({"GET", "/profiles"}));
  if (settings.jsonMode) return Out::json(profiles);
  if (profiles.root().elements().empty()) return Out::line("No profiles yet.");
  Out::Table table{{""}, {"ID", Style::dim}, {"RULES", Style::dim}, {"NAME"}};
  for (const JSONView profile : profiles.root().elements()) {
    table.row({Out::marker(flagIn(profile, "active")), shortId(Out::text(profile, "id")),
               Out::text(profile, "ruleCount"), Out::text(profile, "name")});
  }
  table.print();
}

ArgumentParser::Declaration Profiles::Add::declaration() {
  return command<Add>({.abstract = "Create a profile"}, [](auto& it) {
    it.argument(&Add::name, "name");
    it.option(&Add::icon, "icon", {.help = "SF Symbol name"});
    it.group(&Add::options, "options");
  });
}

void Profiles::Add::run() const {
  options.apply();
  JSONObject body{{"name", name}};
  if (icon) body.set("icon", *icon);
  const JSONDocument response = cliCall({.method = "POST", .path = "/profiles", .body = body});
  if (settings.jsonMode) return Out::json(response);
  Out::done(Out::Deed::created, name);
}

ArgumentParser::Declaration Profiles::Activate::declaration() {
  return command<Activate>({.abstract = "Switch to a profile"}, [](auto& it) {
    it.argument(&Activate::id, "id", {.help = "Profile id, an unambiguous prefix of one, or its name"});
    it.group(&Activate::options, "options");
  });
}

void Profiles::Activate::run() const {
  options.apply();
  const Resolved profile = resolveProfile(id);
  const JSONDocument response = cliCall({"POST", "/profiles/" + percentEncode(profile.id) + "/activate"});
  if (settings.jsonMode) return Out::json(response);
  Out::done(Out::Deed::active, profile.name);
}

}  // namespace zelto
