#include "commands/Shortcuts.h"

#include "cli/CLICall.h"
#include "cli/Out.h"
#include "client/Wire.h"

namespace zelto {
namespace {

using ArgumentParser::command;
using ArgumentParser::type;
using Out::Style;

void printBundled(const json::JSONElements& shortcuts) {
  Out::Table table{{""}, {"NAME"}, {"WHAT IT DOES", Style::dim}};
  for (const JSONView shortcut : shortcuts) {
    table.row({Out::marker(flagIn(shortcut, "installed")), Out::text(shortcut, "name"),
               Out::text(shortcut, "readableName")});
  }
  Out::section("Bundled");
  table.print();
}

void printInstalled(const json::JSONElements& shortcuts) {
  Out::Table table{{"FOLDER", Style::dim}, {"NAME"}};
  for (const JSONView each : shortcuts) {
    table.row({Out::text(each, "folder"), Out::text(each, "name")});
  }
  Out::section("On this Mac");
  table.print();
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
  const JSONDocument shortcuts = expectObject(cliCall({"GET", "/shortcuts"}));
  if (settings.jsonMode) return Out::json(shortcuts);
  const auto bundled = objectsIn(shortcuts, "builtin"), installed = objectsIn(shortcuts, "installed");
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
  const JSONDocument response = expectObject(
      cliCall({.method = "POST", .path = "/shortcuts/install", .body = JSONObject{{"name", name}}}));
  if (settings.jsonMode) return Out::json(response);
  Out::done(Out::Deed::opened, Out::text(response, "opened"));
  Out::hint("Accept it in the Shortcuts window to finish.");
}

}  // namespace zelto
