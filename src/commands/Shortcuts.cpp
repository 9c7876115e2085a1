#include "commands/Shortcuts.h"

#include "cli/CLICall.h"
#include "cli/Out.h"
#include "client/Wire.h"

namespace zelto {
namespace {

using ArgumentParser::command;
using ArgumentParser::type;
using Out::Style;

void printBundled(const JSONArray& shortcuts) {
  std::vector<Out::Column> columns{{""}, {"NAME"}, {"WHAT IT DOES", Style::dim}};
  for (const JSONValue& each : shortcuts) {
    const JSONObject& shortcut = *each.object();
    columns[0].rows.push_back(flagIn(shortcut, "installed") ? Out::paint("*", Style::green) : " ");
    columns[1].rows.push_back(Out::text(shortcut, "name"));
    columns[2].rows.push_back(Out::text(shortcut, "readableName"));
  }
  Out::section("Bundled");
  Out::table(columns);
}

void printInstalled(const JSONArray& shortcuts) {
  std::vector<Out::Column> columns{{"FOLDER", Style::dim}, {"NAME"}};
  for (const JSONValue& each : shortcuts) {
    columns[0].rows.push_back(Out::text(*each.object(), "folder"));
    columns[1].rows.push_back(Out::text(*each.object(), "name"));
  }
  Out::section("On this Mac");
  Out::table(columns);
}

}  // namespace

ArgumentParser::Declaration Shortcuts::declaration() {
  return command<Shortcuts>({.abstract = "Shortcuts Zelto can run",
                             .subcommands = {type<List>(), type<Install>()},
                             .defaultSubcommand = type<List>()});
}

ArgumentParser::Declaration Shortcuts::List::declaration() {
  return command<List>({.abstract = "List shortcuts"}, [](auto& it) {
    it.flag(&List::builtin, "builtin", {.help = "Only the ones Zelto bundles"});
    it.group(&List::options, "options");
  });
}

void Shortcuts::List::run() const {
  options.apply();
  const JSONObject shortcuts = expectObject(cliCall({"GET", "/shortcuts"}));
  if (jsonMode) return Out::json(shortcuts);
  const JSONArray bundled = objectsIn(shortcuts, "builtin"), installed = objectsIn(shortcuts, "installed");
  if (!bundled.empty()) printBundled(bundled);
  if (!builtin && !installed.empty()) printInstalled(installed);
}

ArgumentParser::Declaration Shortcuts::Install::declaration() {
  return command<Install>(
      {.abstract = "Install a bundled shortcut",
       .discussion = "Shortcuts.app shows its add sheet, so the shortcut is usable once it is "
                     "accepted there."},
      [](auto& it) {
        it.argument(&Install::name, "name", {.help = "Shortcut name, e.g. ⚙︎toggleBluetooth"});
        it.group(&Install::options, "options");
      });
}

void Shortcuts::Install::run() const {
  options.apply();
  const JSONObject response = expectObject(
      cliCall({.method = "POST", .path = "/shortcuts/install", .body = JSONObject{{"name", name}}}));
  if (jsonMode) return Out::json(response);
  Out::line(Out::paint("Opened", Style::green) + " " + Out::text(response, "opened"));
  Out::line(Out::paint("Accept it in the Shortcuts window to finish.", Style::dim));
}

}  // namespace zelto
