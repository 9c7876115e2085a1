#include "commands/Rules.h"

#include "cli/CLICall.h"
#include "cli/CLIError.h"
#include "cli/Out.h"
#include "cli/Resolve.h"
#include "client/Wire.h"
#include "commands/Assignments.h"
#include "commands/RuleDisplay.h"
#include "platform/Streams.h"
#include "platform/Terminal.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

using ArgumentParser::command;
using ArgumentParser::type;
using Out::Deed;
using Out::Style;

constexpr const char* idsHelp = "Rule ids, prefixes, or names";
constexpr const char* idHelp = "Rule id, prefix, or name";

std::string pathOf(const Resolved& rule) {
  return "/rules/" + percentEncode(rule.id);
}

void switchRules(const std::vector<std::string>& refs, bool on) {
  for (const std::string& ref : refs) {
    const Resolved rule = resolveRule(ref);
    cliCall({"POST", pathOf(rule) + (on ? "/enable" : "/disable")});
    Out::line(Out::onOff(on, 3) + " " + rule.name);
    Out::flush();
  }
}

/// What `enable` and `disable` declare alike.
template <class Switch>
ArgumentParser::Declaration switchDeclaration(const char* abstract) {
  return command<Switch>({.abstract = abstract}, [](auto& it) {
    it.argument(&Switch::ids, "ids", {.help = idsHelp, .atLeastOne = true});
    it.group(&Switch::options, "options");
  });
}

/// Asks on the terminal; anything but a plain yes raises.
void confirmRemoval(const std::vector<Resolved>& rules) {
  Out::StyledText question = "Delete ";
  if (rules.size() > 1) question.append(std::to_string(rules.size()) + " rules: ");
  for (const Resolved& rule : rules) {
    if (&rule != &rules.front()) question.append(", ");
    // A name of several lines could pass the last of them off as the question.
    question.append(Out::StyledText::oneLine(rule.name));
  }
  platform::print(question.append("? [y/N] "));
  Out::flush();
  const std::string answer = text::lowercased(platform::readInputLine().value_or(""));
  if (answer != "y" && answer != "yes") throw CLIError("cancelled");
}

}  // namespace

ArgumentParser::Declaration Rules::declaration() {
  return command<Rules>({.abstract = "Automation rules",
                         .subcommands = {type<List>(), type<Show>(), type<Add>(), type<Set>(), type<Remove>(),
                                         type<Enable>(), type<Disable>(), type<Fire>()},
                         .defaultSubcommand = type<List>()});
}

ArgumentParser::Declaration Rules::List::declaration() {
  return command<List>({.abstract = "List rules"}, [](auto& it) {
    it.option(&List::scope, "scope",
              {.help = "all, or visible to hide what the active profile turned off", .defaultValue = "all"});
    it.option(&List::group, "group", {.help = "Only this group", .name = ArgumentParser::shortAndLong});
    it.group(&List::options, "options");
  });
}

void Rules::List::run() const {
  options.apply();
  const JSONDocument all = expectList(cliCall({"GET", "/rules", {{"scope", scope}}}));
  const json::JSONElements elements = all.root().elements();
  std::vector<JSONView> rules(elements.begin(), elements.end());
  if (group) {
    std::erase_if(rules, [wanted = text::folded(*group)](JSONView rule) {
      return text::folded(Out::text(rule, "group")) != wanted;
    });
  }
  if (settings.jsonMode) return Out::json(rules);
  if (rules.empty()) return Out::line(group ? "No rules in " + *group + "." : "No rules yet.");

  Out::Table table{{"ID", Style::dim},    {""},    {"TRIGGER", Style::cyan}, {"ACTION"},
                   {"GROUP", Style::dim}, {"NAME"}};
  for (const JSONView rule : rules) {
    table.row({shortId(Out::text(rule, "id")), Out::onOff(flagIn(rule, "enabled")),
               Out::text(rule, "triggerType"), Out::text(rule, "action"), Out::text(rule, "group"),
               Out::text(rule, "name")});
  }
  table.print();
}

ArgumentParser::Declaration Rules::Show::declaration() {
  return command<Show>({.abstract = "Everything about one rule"}, [](auto& it) {
    it.argument(&Show::id, "id", {.help = "Rule id, an unambiguous prefix of one, or its name"});
    it.group(&Show::options, "options");
  });
}

void Rules::Show::run() const {
  options.apply();
  const JSONDocument rule = expectObject(cliCall({"GET", pathOf(resolveRule(id))}));
  if (settings.jsonMode) return Out::json(rule);
  printRule(rule);
}

ArgumentParser::Declaration Rules::Add::declaration() {
  return command<Add>(
      {.abstract = "Create a rule",
       .discussion =
           "zelto rules add --trigger cron --set cronExpression='0 9 * * *' --action shellScript --set "
           "shellScript='say morning'"},
      [](auto& it) {
        it.option(&Add::trigger, "trigger", {.help = "Trigger type, see: zelto schema"});
        it.option(&Add::sub, "sub", {.help = "Sub-event, defaults to the trigger's first"});
        it.option(&Add::name, "name", {.help = "What to call it"});
        it.option(&Add::group, "group", {.help = "Which group it goes in"});
        it.option(
            &Add::action, "action",
            {.help =
                 "none, notification, shortcuts, shellScript, appleScript, launchApp, openURL, openFile"});
        it.option(&Add::set, "set", {.help = "field=value, repeatable"});
        it.flag(&Add::disabled, "disabled", {.help = "Create it turned off"});
        it.group(&Add::options, "options");
      });
}

void Rules::Add::run() const {
  options.apply();
  JSONObject body = parseAssignments(set);
  body.set("triggerType", trigger);
  if (sub) body.set("subEvent", *sub);
  if (name) body.set("name", *name);
  if (group) body.set("group", *group);
  if (action) body.set("action", *action);
  body.set("enabled", !disabled);
  const JSONDocument rule = expectObject(cliCall({.method = "POST", .path = "/rules", .body = body}));
  if (settings.jsonMode) return Out::json(rule);
  Out::done(Deed::created, shortId(Out::text(rule, "id")));
  printRule(rule);
}

ArgumentParser::Declaration Rules::Set::declaration() {
  return command<Set>({.abstract = "Change fields on a rule",
                       .discussion = "zelto rules set 3f2a shellScript='say hi' scriptTimeout=10\n"
                                     "Only the fields named are touched."},
                      [](auto& it) {
                        it.argument(&Set::id, "id", {.help = idHelp});
                        it.argument(&Set::assignments, "assignments", {.help = "field=value pairs"});
                        it.group(&Set::options, "options");
                      });
}

void Rules::Set::run() const {
  options.apply();
  if (assignments.empty()) {
    throw CLIError("nothing to set. Pass field=value pairs, see: zelto rules show " + id);
  }
  const std::string path = pathOf(resolveRule(id));
  const JSONDocument rule =
      expectObject(cliCall({.method = "PATCH", .path = path, .body = parseAssignments(assignments)}));
  if (settings.jsonMode) return Out::json(rule);
  Out::done(Deed::updated, Out::text(rule, "name"));
  printRule(rule);
}

ArgumentParser::Declaration Rules::Remove::declaration() {
  return command<Remove>({.commandName = "rm", .abstract = "Delete rules"}, [](auto& it) {
    it.argument(&Remove::ids, "ids", {.help = idsHelp, .atLeastOne = true});
    it.flag(&Remove::force, "force", {.help = "Skip the confirmation", .name = ArgumentParser::shortAndLong});
    it.group(&Remove::options, "options");
  });
}

void Rules::Remove::run() const {
  options.apply();
  std::vector<Resolved> rules;
  for (const std::string& ref : ids) rules.push_back(resolveRule(ref));
  if (!force && platform::inputIsTerminal()) confirmRemoval(rules);
  for (const Resolved& rule : rules) {
    cliCall({"DELETE", pathOf(rule)});
    Out::done(Deed::deleted, rule.name);
    Out::flush();
  }
}

ArgumentParser::Declaration Rules::Enable::declaration() {
  return switchDeclaration<Enable>("Turn rules on");
}

void Rules::Enable::run() const {
  options.apply();
  switchRules(ids, true);
}

ArgumentParser::Declaration Rules::Disable::declaration() {
  return switchDeclaration<Disable>("Turn rules off");
}

void Rules::Disable::run() const {
  options.apply();
  switchRules(ids, false);
}

ArgumentParser::Declaration Rules::Fire::declaration() {
  return command<Fire>({.abstract = "Run a rule's action now, as if it had triggered"}, [](auto& it) {
    it.argument(&Fire::id, "id", {.help = idHelp});
    it.group(&Fire::options, "options");
  });
}

void Rules::Fire::run() const {
  options.apply();
  const Resolved rule = resolveRule(id);
  cliCall({"POST", pathOf(rule) + "/fire"});
  Out::done(Deed::fired, rule.name);
  Out::hint("What it did shows up in: zelto history");
}

}  // namespace zelto
