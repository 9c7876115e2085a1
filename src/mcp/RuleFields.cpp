#include "mcp/RuleFields.h"

namespace zelto {
namespace {

struct RuleField {
  std::string_view name;
  std::string_view type = {};  ///< none: the body may hold it, but the shared schema does not list it
  std::string_view description = {};
};

constexpr RuleField ruleFields[] = {
    {"triggerType"},
    {"subEvent"},
    {"name", "string", "human-readable rule name"},
    {"group", "string"},
    {"enabled", "boolean"},
    {"action", "string",
     "none, notification, shortcuts, shellScript, appleScript, launchApp, openURL, openFile, "
     "chainRule, activateProfile, enableRule, disableRule"},
    {"shellScript", "string", "script body for action shellScript"},
    {"scriptRunner", "string",
     "/bin/zsh, /usr/bin/python3, /usr/bin/ruby, /usr/bin/perl, /usr/bin/swift, or any "
     "executable taking -c"},
    {"scriptTimeout", "number"},
    {"shellScriptLoadZshrc", "boolean"},
    {"appleScriptSource", "string"},
    {"notificationTitle", "string"},
    {"notificationBody", "string"},
    {"shortcutIdentifier", "string"},
    {"shortcutInput", "string"},
    {"launchAppPath", "string"},
    {"openURLString", "string"},
    {"openURLActivates"},
    {"openFilePath", "string"},
    {"openFileAppPath", "string"},
    {"chainRuleIdentifier", "string",
     "id of the rule this action points at: the one to chain into, or the one "
     "enableRule/disableRule flips"},
    {"profileIdentifier", "string"},
    {"reverseAction", "string", "action to run when the trigger reverses (e.g. device disconnects)"},
    {"reverseShellScript", "string"},
    {"reverseScriptRunner"},
    {"reverseScriptTimeout"},
    {"reverseAppleScriptSource"},
    {"reverseNotificationTitle"},
    {"reverseNotificationBody"},
    {"reverseShortcutIdentifier"},
    {"reverseShortcutInput"},
    {"reverseLaunchAppPath"},
    {"reverseOpenURLString"},
    {"reverseOpenFilePath"},
    {"reverseOpenFileAppPath"},
    {"reverseChainRuleIdentifier", "string",
     "rule the reverse action points at; pair with reverseAction 'disableRule' to disarm a "
     "poller when the opening event reverses"},
    {"cronExpression", "string",
     "5-field cron for triggerType 'cron'; '*/N * * * *' is every N minutes. Every tick runs the "
     "action, so use it for wall-clock schedules, not to poll a condition an event trigger "
     "already reports"},
    {"timeHour", "string"},
    {"timeMinute", "string"},
    {"scriptTriggerSource", "string",
     "polling script for triggerType 'script'; exit 0 fires, print key=value to pass data"},
    {"scriptTriggerInterval", "number",
     "poll interval in seconds, minimum 1. Every tick runs the script, so pick the longest "
     "interval the rule tolerates"},
    {"scriptTriggerStateChangeOnly", "boolean", "true fires only on the transition into success"},
    {"scriptTriggerRunner", "string"},
    {"fileWatchPath", "string"},
    {"fileWatchRecursive", "boolean"},
    {"ambientLightLuxThreshold", "string"},
    {"lidAngleDegreeThreshold", "string"},
    {"userActivityThresholdSeconds", "string"},
    {"userActivityThresholdUnit", "string"},
    {"windowFilterAppPath", "string"},
    {"ntfyTopic", "string"},
    {"spotlightQueryValue", "string"},
    {"spotlightQueryComparator", "string"},
    {"spotlightFileSizeMB", "string"},
    {"spotlightSearchPath", "string"},
    {"spotlightItemType", "string"},
    {"resourceThreshold", "string"},
    {"resourceThresholdUnit", "string"},
    {"resourceTargetApp", "string"},
    {"storageVolumePath", "string"},
    {"numericComparator", "string", "one of < = > ≠"},
    {"textComparator", "string", "any, equals, startsWith, endsWith, contains, notContains, regex"},
    {"timeComparator", "string", "before, at, after"},
    {"conditionValue", "string"},
    {"enumConditionValue", "string"},
    {"useCompoundCondition", "boolean"},
    {"compoundOperator", "string", "AND or OR"},
    {"compoundClausesJSON", "string", "JSON array of {id, key, comparator, value}; id must be a UUID string"},
    {"rateLimitMode", "string", "none, debounce, throttle"},
    {"rateLimitSeconds", "number"},
    {"hasSchedule", "boolean"},
    {"scheduleStartHour", "string"},
    {"scheduleStartMinute", "string"},
    {"scheduleEndHour", "string"},
    {"scheduleEndMinute", "string"},
    {"scheduleActiveDays", "string", "comma-separated, e.g. Mon,Tue,Wed,Thu,Fri"},
};

}  // namespace

const JSONObject& ruleFieldSchema() {
  static const JSONObject schema = [] {
    JSONObject built;
    for (const RuleField& field : ruleFields) {
      if (!field.type.empty()) built.set(field.name, propertySchema(field.type, field.description));
    }
    return built;
  }();
  return schema;
}

JSONObject propertySchema(std::string_view type, std::string_view description) {
  JSONObject schema{{"type", type}};
  if (!description.empty()) schema.set("description", description);
  return schema;
}

const std::vector<std::string_view>& ruleBodyKeys() {
  static const std::vector<std::string_view> keys = [] {
    std::vector<std::string_view> names;
    for (const RuleField& field : ruleFields) names.push_back(field.name);
    return names;
  }();
  return keys;
}

}  // namespace zelto
