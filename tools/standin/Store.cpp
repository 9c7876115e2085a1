#include "Store.h"

#include <algorithm>
#include <cstdlib>
#include <random>

#include "Script.h"

namespace standin {
namespace json = boost::json;
namespace {

enum class Kind { text, number, flag };

// Every field that a rule write may hold, by the nested object that shows it ("" for the rule itself).
constexpr struct Fields {
  std::string_view section;
  Kind kind;
  std::string_view names;
} fieldTable[] = {
    {"", Kind::text, "triggerType subEvent name group action reverseAction"},
    {"", Kind::flag, "enabled"},
    {"triggerConfig", Kind::text,
     "cronExpression timeHour timeMinute scriptTriggerSource scriptTriggerRunner fileWatchPath "
     "ambientLightLuxThreshold lidAngleDegreeThreshold userActivityThresholdSeconds "
     "userActivityThresholdUnit "
     "windowFilterAppPath ntfyTopic spotlightQueryValue spotlightQueryComparator spotlightFileSizeMB "
     "spotlightSearchPath spotlightItemType resourceThreshold resourceThresholdUnit resourceTargetApp "
     "storageVolumePath"},
    {"triggerConfig", Kind::number, "scriptTriggerInterval"},
    {"triggerConfig", Kind::flag, "scriptTriggerStateChangeOnly fileWatchRecursive"},
    {"actionConfig", Kind::text,
     "shellScript scriptRunner appleScriptSource notificationTitle notificationBody shortcutIdentifier "
     "shortcutInput launchAppPath openURLString openFilePath openFileAppPath chainRuleIdentifier "
     "profileIdentifier reverseShellScript reverseScriptRunner reverseAppleScriptSource "
     "reverseNotificationTitle "
     "reverseNotificationBody reverseShortcutIdentifier reverseShortcutInput reverseLaunchAppPath "
     "reverseOpenURLString reverseOpenFilePath reverseOpenFileAppPath reverseChainRuleIdentifier"},
    {"actionConfig", Kind::number, "scriptTimeout reverseScriptTimeout"},
    {"actionConfig", Kind::flag, "shellScriptLoadZshrc openURLActivates"},
    {"condition", Kind::text,
     "numericComparator textComparator timeComparator conditionValue enumConditionValue compoundOperator "
     "compoundClausesJSON"},
    {"condition", Kind::flag, "useCompoundCondition"},
    {"rateLimit", Kind::text, "rateLimitMode"},
    {"rateLimit", Kind::number, "rateLimitSeconds"},
    {"schedule", Kind::text,
     "scheduleStartHour scheduleStartMinute scheduleEndHour scheduleEndMinute scheduleActiveDays"},
    {"schedule", Kind::flag, "hasSchedule"},
};

constexpr std::string_view actionKinds =
    "none notification shortcuts shellScript appleScript launchApp openURL openFile chainRule "
    "activateProfile "
    "enableRule disableRule";

// The fields that take one of a few words.
constexpr std::string_view choices[][2] = {
    {"action", actionKinds}, {"reverseAction", actionKinds}, {"rateLimitMode", "none debounce throttle"}};

bool hasWord(std::string_view words, std::string_view word) {
  while (!words.empty()) {
    const std::size_t end = std::min(words.find(' '), words.size());
    if (words.substr(0, end) == word) return true;
    words.remove_prefix(std::min(end + 1, words.size()));
  }
  return false;
}

const Fields* fieldNamed(std::string_view name) {
  const auto* found = std::find_if(std::begin(fieldTable), std::end(fieldTable),
                                   [&](const Fields& fields) { return hasWord(fields.names, name); });
  return found == std::end(fieldTable) ? nullptr : found;
}

// The value in the kind of its field. Text fields take numbers too, since a shell user can't tell them apart.
json::value converted(const std::string& name, Kind kind, const json::value& value) {
  if (kind == Kind::flag && value.is_bool()) return value;
  if (kind == Kind::number && value.is_number()) return value;
  if (kind == Kind::number && value.is_string() && !value.get_string().empty()) {
    char* end = nullptr;
    const double number = std::strtod(value.get_string().c_str(), &end);
    if (*end == '\0') return number;
  }
  if (kind == Kind::text && (value.is_string() || value.is_number() || value.is_bool()))
    return json::value(valueText(value));
  constexpr const char* takes[] = {" takes a text", " takes a number", " takes true or false"};
  throw APIError(400, name + takes[static_cast<int>(kind)]);
}

// Fills "{{name}}" with the value of that name; what has no value stays.
std::string expanded(std::string text, const json::object& values) {
  for (const auto& [key, value] : values) {
    const std::string mark = "{{" + std::string(key) + "}}", filling = valueText(value);
    for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos; at += filling.size()) {
      text.replace(at, mark.size(), filling);
    }
  }
  return text;
}

bool inProfile(const json::object& rule, const json::value& profileName) {
  const json::array& names = rule.at("profiles").as_array();
  return std::find(names.begin(), names.end(), profileName) != names.end();
}

std::string newIdentifier() {
  std::string id = randomHex(32);
  id[12] = '4', id[16] = 'A';  // version and variant of a random UUID
  // No id of the seed begins like this, so that every prefix of those stands for what it did before.
  id[0] = '9';
  for (const std::size_t dash : {8u, 13u, 18u, 23u}) id.insert(dash, 1, '-');
  return id;
}

}  // namespace

std::string randomHex(std::size_t digits) {
  std::random_device source("/dev/urandom");
  std::string text;
  while (text.size() < digits) text += "0123456789ABCDEF"[source() % 16];
  return text;
}

std::string textOf(const json::object& object, std::string_view key) {
  const json::value* value = object.if_contains(key);
  return value ? valueText(*value) : "";
}

Store::Store(const Object& seed)
    : version(textOf(seed, "version")), triggerTypes(seed.at("schema").at("triggerTypes").as_array()) {
  for (const json::value& profile : seed.at("profiles").as_array())
    profileList.push_back(profile.as_object());
  // Seed rules go the way of written ones, so that a mistake in the seed shows at once.
  for (const json::value& entry : seed.at("rules").as_array()) {
    Object fields = entry.as_object(), rule{{"id", fields.at("id")}, {"profiles", fields.at("profiles")}};
    fields.erase("id"), fields.erase("profiles");
    assign(rule, fields);
    ruleList.push_back(rule);
  }
  for (const json::value& entry : seed.at("events").as_array()) events.append(entry.as_object());
  for (const json::value& entry : seed.at("actions").as_array()) actions.append(entry.as_object());
}

Store::Object& Store::find(std::vector<Object>& list, std::string_view id, const char* what) {
  const auto found =
      std::find_if(list.begin(), list.end(), [&](Object& entry) { return textOf(entry, "id") == id; });
  if (found == list.end()) throw APIError(404, std::string("no ") + what + " with the id " + std::string(id));
  return *found;
}

void Store::assign(Object& rule, const Object& fields) const {
  Object changed = rule;
  for (const auto& [key, value] : fields) {
    const Fields* field = fieldNamed(key);
    if (!field) throw APIError(400, "unknown field " + std::string(key));
    if (value.is_null()) {
      changed.erase(key);
    } else {
      changed[key] = converted(key, field->kind, value);
    }
  }
  const std::string type = textOf(changed, "triggerType");
  if (type.empty()) throw APIError(400, "triggerType is missing");
  const auto trigger = std::find_if(triggerTypes.begin(), triggerTypes.end(), [&](const json::value& entry) {
    return valueText(entry.at("type")) == type;
  });
  if (trigger == triggerTypes.end()) throw APIError(400, "unknown trigger type " + type);
  if (type != textOf(rule, "triggerType") && !fields.contains("subEvent")) changed.erase("subEvent");
  changed.emplace("subEvent", trigger->at("subEvents").at(0).at("subEvent"));
  changed.emplace("name", "New " + textOf(trigger->as_object(), "displayName") + " rule");
  changed.emplace("group", "General");
  changed.emplace("enabled", true);
  changed.emplace("action", "none");
  changed.emplace("reverseAction", "none");
  if (!subEvent(changed)) throw APIError(400, type + " has no sub-event " + textOf(changed, "subEvent"));
  for (const auto& [key, words] : choices) {
    const std::string word = textOf(changed, key);
    if (changed.contains(key) && !hasWord(words, word))
      throw APIError(400, "unknown " + std::string(key) + " " + word);
  }
  rule = std::move(changed);
}

const Store::Object* Store::subEvent(const Object& rule) const {
  for (const json::value& trigger : triggerTypes) {
    if (trigger.at("type") != rule.at("triggerType")) continue;
    for (const json::value& entry : trigger.at("subEvents").as_array()) {
      if (entry.at("subEvent") == rule.at("subEvent")) return entry.if_object();
    }
  }
  return nullptr;
}

Store::Object Store::view(const Object& rule) const {
  Object result{{"id", rule.at("id")},  {"triggerConfig", Object()}, {"actionConfig", Object()},
                {"condition", nullptr}, {"rateLimit", nullptr},      {"schedule", nullptr}};
  for (const auto& [key, value] : rule) {
    const Fields* field = fieldNamed(key);
    if (!field) continue;
    if (field->section.empty()) {
      result[key] = value;
    } else {
      json::value& section = result[field->section];
      if (section.is_null()) section.emplace_object();
      section.as_object()[key] = value;
    }
  }
  json::array values;
  for (const json::value& value : subEvent(rule)->at("values").as_array()) values.push_back(value.at("name"));
  result["profiles"] = rule.at("profiles");
  result["availableValues"] = values;
  return result;
}

Store::Object Store::health() {
  const std::size_t all = rules("all").size(), visible = rules("visible").size();
  std::lock_guard lock(mutex);
  Object result{{"version", version}, {"activeProfile", profileList[active].at("name")}, {"running", true}};
  result["ruleCount"] = all, result["visibleRuleCount"] = visible;
  return result;
}

json::array Store::rules(std::string_view scope) {
  if (!hasWord("all visible", scope)) throw APIError(400, "scope is all or visible");
  std::lock_guard lock(mutex);
  json::array result;
  for (const Object& rule : ruleList) {
    if (scope == "all" || inProfile(rule, profileList[active].at("name"))) result.push_back(view(rule));
  }
  return result;
}

Store::Object Store::createRule(const Object& fields) {
  std::lock_guard lock(mutex);
  Object rule{{"id", newIdentifier()}, {"profiles", json::array{profileList[active].at("name")}}};
  assign(rule, fields);
  return view(ruleList.emplace_back(std::move(rule)));
}

Store::Object Store::updateRule(std::string_view id, const Object& fields) {
  std::lock_guard lock(mutex);
  Object& rule = find(ruleList, id, "rule");
  assign(rule, fields);
  return view(rule);
}

void Store::removeRule(std::string_view id) {
  std::lock_guard lock(mutex);
  const Object& rule = find(ruleList, id, "rule");
  ruleList.erase(ruleList.begin() + (&rule - ruleList.data()));
}

void Store::fireRule(std::string_view id) {
  Object rule, values;
  {
    std::lock_guard lock(mutex);
    rule = find(ruleList, id, "rule");
  }
  for (const json::value& value : subEvent(rule)->at("values").as_array()) {
    values[value.at("name").as_string()] = value.at("sample");
  }
  if (values.contains("firedAt")) values["firedAt"] = timestampNow();
  events.append({{"source", rule["triggerType"]},
                 {"kind", rule["subEvent"]},
                 {"isDryRun", false},
                 {"triggeredAction", rule["action"]},
                 {"ruleName", rule["name"]},
                 {"values", values}});
  // A chain of rules may lead back to its start, so it ends at some length.
  for (int length = 0; length < 8 && !rule.empty() && rule["action"] != "none"; ++length) {
    Object next, entry{{"ruleId", rule["id"]}, {"ruleName", rule["name"]}, {"action", rule["action"]},
                       {"exitCode", 0},        {"duration", 0.02},         {"stdout", ""},
                       {"stderr", ""}};
    try {
      entry["detail"] = act(rule, values, entry, next);
    } catch (const std::exception& error) {
      entry["detail"] = error.what();
      entry["exitCode"] = 1;
    }
    actions.append(std::move(entry));
    rule = std::move(next);
  }
}

// Runs one action; fills the history entry and returns its detail. `next` becomes the rule to go on with.
std::string Store::act(const Object& rule, const Object& values, Object& entry, Object& next) {
  const std::string action = textOf(rule, "action");
  const auto field = [&](std::string_view key) { return expanded(textOf(rule, key), values); };
  if (action == "shellScript") {
    Script script{field("shellScript"), field("scriptRunner"), 30, values};
    if (script.runner.empty()) script.runner = "/bin/zsh";
    const json::value* limit = rule.if_contains("scriptTimeout");
    if (limit && limit->to_number<double>() > 0) script.timeout = limit->to_number<double>();
    for (auto& [key, value] : runScript(script, stopping)) entry[key] = value;
    return "ran with " + script.runner;
  }
  if (action == "notification") return field("notificationTitle") + ": " + field("notificationBody");
  constexpr std::string_view simulated[][3] = {{"appleScript", "ran AppleScript ", "appleScriptSource"},
                                               {"shortcuts", "ran shortcut ", "shortcutIdentifier"},
                                               {"launchApp", "launched ", "launchAppPath"},
                                               {"openURL", "opened ", "openURLString"},
                                               {"openFile", "opened ", "openFilePath"}};
  for (const auto& [kind, verb, key] : simulated) {
    if (action == kind) return std::string(verb) + field(key);
  }
  std::lock_guard lock(mutex);
  if (action == "activateProfile") {
    activate(field("profileIdentifier"));
    return "switched to " + textOf(profileList[active], "name");
  }
  Object& target = find(ruleList, field("chainRuleIdentifier"), "rule");
  if (action == "chainRule") {
    next = target;
    return "ran " + textOf(target, "name");
  }
  target["enabled"] = action == "enableRule";
  return (action == "enableRule" ? "enabled " : "disabled ") + textOf(target, "name");
}

json::array Store::groups() {
  std::lock_guard lock(mutex);
  json::array result;
  for (Object& rule : ruleList) {
    auto group = std::find_if(result.begin(), result.end(),
                              [&](const json::value& known) { return known.at("name") == rule["group"]; });
    if (group == result.end()) {
      result.push_back({{"name", rule["group"]}, {"ruleCount", 0}, {"enabledCount", 0}});
      group = result.end() - 1;
    }
    ++group->at("ruleCount").as_int64();
    if (rule["enabled"].as_bool()) ++group->at("enabledCount").as_int64();
  }
  return result;
}

void Store::updateGroup(std::string_view name, std::string_view field, const json::value& value) {
  std::lock_guard lock(mutex);
  bool found = false;
  for (Object& rule : ruleList) {
    if (textOf(rule, "group") != name) continue;
    rule[field] = value;
    found = true;
  }
  if (!found) throw APIError(404, "no group named " + std::string(name));
}

json::array Store::profiles() {
  std::lock_guard lock(mutex);
  json::array result;
  for (Object entry : profileList) {
    entry["active"] = entry["id"] == profileList[active]["id"];
    entry["ruleCount"] = std::count_if(ruleList.begin(), ruleList.end(),
                                       [&](const Object& rule) { return inProfile(rule, entry["name"]); });
    result.push_back(std::move(entry));
  }
  return result;
}

Store::Object Store::createProfile(const std::string& name, const std::string& icon) {
  std::lock_guard lock(mutex);
  return profileList.emplace_back(Object{{"id", newIdentifier()}, {"name", name}, {"icon", icon}});
}

void Store::activateProfile(std::string_view id) {
  std::lock_guard lock(mutex);
  activate(id);
}

void Store::activate(std::string_view id) {
  active = static_cast<std::size_t>(&find(profileList, id, "profile") - profileList.data());
}

void Store::stop() {
  stopping = true;
  events.stop();
  actions.stop();
}

}  // namespace standin
