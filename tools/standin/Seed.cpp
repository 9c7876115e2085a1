#include <cstdlib>
#include <ctime>

#include "Script.h"
#include "Server.h"

namespace standin {
namespace json = boost::json;
namespace {

// Reading aids that `seed` undoes: a value is [name, type, description, sample], a long text is a list of
// lines.
constexpr const char* text = R"json({
"version": "1.4.2",
"profiles": [
  {"id": "A1B6F0C2-5D3E-4F78-9A10-2C4E6B8D0F11", "name": "Default", "icon": "house"},
  {"id": "D94E7A35-1C2B-4E6F-8D70-5B3A9C1E2F22", "name": "Focus", "icon": "moon"}],
"rules": [
  {"id": "3F2A9C41-7B0D-4E52-A6C8-1D9E0B5F4A01", "profiles": ["Default"], "name": "Morning stand-up",
   "group": "Work", "triggerType": "cron", "cronExpression": "55 8 * * 1-5", "action": "notification",
   "notificationTitle": "Stand-up", "notificationBody": "Starts in five minutes", "hasSchedule": true,
   "scheduleStartHour": "8", "scheduleEndHour": "18", "scheduleActiveDays": "Mon,Tue,Wed,Thu,Fri"},
  {"id": "3F7B10E8-2A64-4C19-B3D5-8E0F6A7C2B02", "profiles": ["Default", "Focus"], "name": "Sort downloads",
   "group": "Maintenance", "triggerType": "fileWatcher", "fileWatchPath": "~/Downloads",
   "fileWatchRecursive": false, "action": "shellScript", "shellScript": "echo \"filed $ZELTO_FILE_NAME\"",
   "scriptRunner": "/bin/zsh", "scriptTimeout": 10, "textComparator": "endsWith", "conditionValue": ".pdf",
   "rateLimitMode": "debounce", "rateLimitSeconds": 2.5},
  {"id": "5C81D2F6-90AB-4D37-8E14-6F2B3C7A9E03", "profiles": ["Default"], "name": "Disk almost full",
   "group": "Maintenance", "triggerType": "storage", "storageVolumePath": "/", "numericComparator": "<",
   "conditionValue": "10", "action": "notification", "notificationTitle": "{{volumeName}}",
   "notificationBody": "{{freePercent}} % left", "rateLimitMode": "throttle", "rateLimitSeconds": 3600},
  {"id": "71E0B9A4-3C5D-4F28-9B67-0A8D1E2C5F04", "profiles": ["Default"], "name": "Arm the build watcher",
   "group": "Work", "triggerType": "appLifecycle", "windowFilterAppPath": "/Applications/Xcode.app",
   "action": "enableRule", "chainRuleIdentifier": "8D46F1C7-B205-4A9E-8C31-7E5B0D9F6A05",
   "reverseAction": "disableRule", "reverseChainRuleIdentifier": "8D46F1C7-B205-4A9E-8C31-7E5B0D9F6A05"},
  {"id": "8D46F1C7-B205-4A9E-8C31-7E5B0D9F6A05", "profiles": ["Default"], "name": "Watch the build",
   "group": "Work", "enabled": false, "triggerType": "script",
   "scriptTriggerSource": "test -e /tmp/build.done && echo status=done", "scriptTriggerInterval": 60,
   "scriptTriggerStateChangeOnly": true, "action": "chainRule",
   "chainRuleIdentifier": "B3A75E19-64D8-4C02-A1F9-2D8C7B0E3F06"},
  {"id": "B3A75E19-64D8-4C02-A1F9-2D8C7B0E3F06", "profiles": ["Focus"], "name": "Welcome back",
   "group": "Home & Away", "triggerType": "userActivity", "subEvent": "userReturned",
   "userActivityThresholdSeconds": "300", "action": "shellScript", "scriptRunner": "/bin/sh",
   "shellScript": "echo \"away for ${ZELTO_IDLE_SECONDS:-0} s\"\necho \"no lights found\" >&2"},
  {"id": "C0D8246B-F17E-4B53-9D2A-4C6E1A0B8F07", "profiles": ["Default", "Focus"], "name": "Lock up",
   "group": "Home & Away", "triggerType": "screenLocked", "action": "shortcuts",
   "shortcutIdentifier": "⚙︎toggleBluetooth", "shortcutInput": "off"},
  {"id": "E62F5D90-8A3C-4E17-B4C6-9F1D7E2A0B08", "profiles": ["Focus"], "name": "Desk mode",
   "group": "Home & Away", "triggerType": "power", "subEvent": "powerConnected", "action": "activateProfile",
   "profileIdentifier": "D94E7A35-1C2B-4E6F-8D70-5B3A9C1E2F22"},
  {"id": "F95B3A7E-0D4C-4286-8E1F-6A2C5B9D7E09", "profiles": ["Default"], "name": "Photo import",
   "group": "Media/Photos", "enabled": false, "triggerType": "cron", "cronExpression": "30 2 * * *",
   "action": "openURL", "openURLString": "https://photos.example/import", "openURLActivates": false}],
"events": [
  {"timestamp": "2025-11-21T07:55:00Z", "source": "cron", "kind": "scheduled", "isDryRun": false,
   "triggeredAction": "notification", "values": {"firedAt": "2025-11-21T07:55:00Z"}},
  {"timestamp": "2025-11-21T08:12:44.318Z", "source": "fileWatcher", "kind": "fileCreated", "isDryRun": false,
   "triggeredAction": "shellScript", "values": {"fileName": "invoice.pdf", "path": "~/Downloads",
   "fileSize": 48211}},
  {"timestamp": "2025-11-21T09:30:02.001Z", "source": "storage", "kind": "spaceLow", "isDryRun": true,
   "triggeredAction": "notification", "values": {"volumeName": "Macintosh HD", "freePercent": 8.5}},
  {"timestamp": "2025-11-21T10:04:19.77Z", "source": "screenLocked", "kind": "screenUnlocked",
   "isDryRun": false, "triggeredAction": "none", "values": {}},
  {"timestamp": "2025-11-21T10:05:33.12Z", "source": "power", "kind": "powerConnected", "isDryRun": false,
   "triggeredAction": "activateProfile", "values": {"batteryLevel": 62, "isCharging": true}}],
"actions": [
  {"timestamp": "2025-11-21T07:55:00.02Z", "ruleName": "Morning stand-up", "action": "notification",
   "exitCode": 0, "duration": 0.02, "detail": "Stand-up: Starts in five minutes", "stdout": "", "stderr": ""},
  {"timestamp": "2025-11-21T08:12:44.49Z", "ruleName": "Sort downloads", "action": "shellScript",
   "exitCode": 0, "duration": 0.171, "detail": "ran with /bin/zsh", "stdout": "filed invoice.pdf\n",
   "stderr": ""},
  {"timestamp": "2025-11-21T08:40:10Z", "ruleName": "Welcome back", "action": "shellScript", "exitCode": 2,
   "duration": 1.234, "detail": "ran with /bin/sh", "stdout": "away for 1260 s\n",
   "stderr": "no lights found\n"},
  {"timestamp": "2025-11-21T10:04:20Z", "ruleName": "Lock up", "action": "shortcuts", "exitCode": 0,
   "duration": 0.8, "detail": "ran shortcut ⚙︎toggleBluetooth", "stdout": "", "stderr": ""},
  {"timestamp": "2025-11-21T10:05:33.2Z", "ruleName": "Desk mode", "action": "activateProfile", "exitCode": 0,
   "duration": 0, "detail": "switched to Focus", "stdout": "", "stderr": ""}],
"schema": {
  "triggerTypes": [
    {"type": "cron", "displayName": "Schedule", "cost": "timer",
     "costNote": "the timer is free, each tick's action is not", "configFields": ["cronExpression"],
     "subEvents": [
       {"subEvent": "scheduled", "displayName": "At a time", "values": [
         ["firedAt", "string", "When the schedule came due", "2025-11-21T07:55:00Z"]]}]},
    {"type": "fileWatcher", "displayName": "Files", "cost": "event", "costNote": "",
     "configFields": ["fileWatchPath", "fileWatchRecursive"], "subEvents": [
       {"subEvent": "fileCreated", "displayName": "File created", "values": [
         ["fileName", "string", "Name without its directory", "report.pdf"],
         ["path", "string", "Directory that holds the file", "~/Downloads"],
         ["fileSize", "number", "Size in bytes", 20480]]},
       {"subEvent": "fileDeleted", "displayName": "File deleted", "values": [
         ["fileName", "string", "Name without its directory", "report.pdf"]]}]},
    {"type": "appLifecycle", "displayName": "Applications", "cost": "event", "costNote": "",
     "configFields": ["windowFilterAppPath"], "subEvents": [
       {"subEvent": "appLaunched", "displayName": "Launched", "values": [
         ["appName", "string", "Name of the application", "Xcode"], ["processID", "number", "Its process",
          4711]]},
       {"subEvent": "appQuit", "displayName": "Quit", "values": [
         ["appName", "string", "Name of the application", "Xcode"]]}]},
    {"type": "power", "displayName": "Power", "cost": "event", "costNote": "", "configFields": [],
     "subEvents": [
       {"subEvent": "powerConnected", "displayName": "Plugged in", "values": [
         ["batteryLevel", "number", "Charge in percent", 62], ["isCharging", "boolean", "Whether it charges",
          true]]},
       {"subEvent": "powerDisconnected", "displayName": "Unplugged", "values": [
         ["batteryLevel", "number", "Charge in percent", 61]]}]},
    {"type": "screenLocked", "displayName": "Screen lock", "cost": "event", "costNote": "",
     "configFields": [], "subEvents": [{"subEvent": "screenLocked", "displayName": "Locked", "values": []},
                   {"subEvent": "screenUnlocked", "displayName": "Unlocked", "values": []}]},
    {"type": "storage", "displayName": "Storage", "cost": "event", "costNote": "", "configFields":
     ["storageVolumePath", "numericComparator", "conditionValue"], "subEvents": [
       {"subEvent": "spaceLow", "displayName": "Space is low", "values": [
         ["volumeName", "string", "Name of the volume", "Macintosh HD"],
         ["freePercent", "number", "Free space in percent", 8.5]]}]},
    {"type": "userActivity", "displayName": "User activity", "cost": "event", "costNote": "", "configFields":
     ["userActivityThresholdSeconds", "userActivityThresholdUnit"], "subEvents": [
       {"subEvent": "userIdle", "displayName": "Idle", "values": [
         ["idleSeconds", "number", "Seconds since the last input", 300]]},
       {"subEvent": "userReturned", "displayName": "Returned", "values": [
         ["idleSeconds", "number", "Seconds of the absence", 1260]]}]},
    {"type": "script", "displayName": "Script", "cost": "poll", "costNote": "runs a shell at every interval",
     "configFields": ["scriptTriggerSource", "scriptTriggerInterval", "scriptTriggerStateChangeOnly",
     "scriptTriggerRunner"], "subEvents": [
       {"subEvent": "scriptSucceeded", "displayName": "Exits with 0", "values": [
         ["output", "string", "What the script printed", "status=done"]]}]}],
  "actions": [
    {"action": "none", "configFields": []},
    {"action": "notification", "configFields": ["notificationTitle", "notificationBody"]},
    {"action": "shortcuts", "configFields": ["shortcutIdentifier", "shortcutInput"]},
    {"action": "shellScript", "configFields": ["shellScript", "scriptRunner", "scriptTimeout",
     "shellScriptLoadZshrc"]},
    {"action": "appleScript", "configFields": ["appleScriptSource"]},
    {"action": "launchApp", "configFields": ["launchAppPath"]},
    {"action": "openURL", "configFields": ["openURLString", "openURLActivates"]},
    {"action": "openFile", "configFields": ["openFilePath", "openFileAppPath"]},
    {"action": "chainRule", "configFields": ["chainRuleIdentifier"]},
    {"action": "activateProfile", "configFields": ["profileIdentifier"]},
    {"action": "enableRule", "configFields": ["chainRuleIdentifier"]},
    {"action": "disableRule", "configFields": ["chainRuleIdentifier"]}],
  "triggerSelection": {"rule": "Pick the trigger that already knows what the rule cares about.",
   "costs": {"event": "wakes when the system reports something",
   "timer": "wakes at the times of the schedule",
   "poll": "runs at every interval, whether or not anything happened"}}},
"docs": {
  "context": ["# Tools", "",
   "A rule's script may use every command of the system. Some that are often wanted:", "",
   "- `pmset -g batt` tells the charge of the battery.", "- `open -a NAME` launches an application.", "",
   "## Bundled shortcuts", "",
   "- **⚙︎toggleBluetooth** takes `on`, `off` or nothing, and returns the new state.",
   "- **⚙︎setVolume** takes a number from 0 to 100."],
  "trigger-context": ["# Trigger scripts", "",
   "The script runs at every interval. Status 0 fires the rule, any other",
   "does not. Each line `key=value` that it prints becomes `{{key}}` for the action."],
  "applescript-context": ["# AppleScript", "",
   "The first run asks the user to let Zelto control the application.",
   "Quote paths with `quoted form of`."]},
"prompts": {
  "shell": ["You write the script of a rule's action.", "Answer with the script alone."],
  "trigger": ["You write a script that a rule polls.", "It exits with 0 if the rule shall fire.",
   "Answer with the script alone."],
  "applescript": ["You write AppleScript for a rule's action.", "Answer with the script alone."]},
"runners": {
  "presets": ["/bin/zsh", "/usr/bin/python3", "/usr/bin/ruby", "/usr/bin/perl", "/usr/bin/swift"],
  "compiled": ["/usr/bin/swift"], "helpers": ["ensure_shortcut", "download_mac_util"],
  "custom": "Any other executable that takes -c and a script can be named as well.",
  "note": "Shell runners get ~/.zshrc and the helpers ensure_shortcut and download_mac_util."},
"shortcuts": {
  "builtin": [
    {"name": "⚙︎toggleBluetooth", "readableName": "Turn Bluetooth on or off", "installed": true},
    {"name": "⚙︎setVolume", "readableName": "Set the volume", "installed": false},
    {"name": "⚙︎darkMode", "readableName": "Switch to dark mode and back", "installed": false}],
  "installed": [
    {"name": "⚙︎toggleBluetooth", "folder": "Zelto", "identifier": "0B1C2D3E-4F50-4617-8293-A4B5C6D7E8F0"},
    {"name": "Log water", "folder": "Health", "identifier": "1C2D3E4F-5061-4728-93A4-B5C6D7E8F901"},
    {"name": "Text last image", "folder": "", "identifier": "2D3E4F50-6172-4839-A4B5-C6D7E8F90112"}]}
})json";

constexpr const char* dateForm = "%Y-%m-%dT%H:%M:%S";

time_t secondsOf(const json::value& timestamp) {
  tm utc{};
  strptime(timestamp.as_string().c_str(), dateForm, &utc);
  return timegm(&utc);
}

// Moves a date by so many seconds; its fraction stays.
void move(json::value& timestamp, time_t seconds) {
  const time_t moved = secondsOf(timestamp) + seconds;
  tm utc{};
  gmtime_r(&moved, &utc);
  char digits[20];
  strftime(digits, sizeof digits, dateForm, &utc);
  timestamp.as_string().replace(0, 19, digits);
}

// Dates events and actions as if the last of them had been a minute ago.
void makeRecent(json::object& seed) {
  const json::value last = seed.at("actions").as_array().back().at("timestamp");
  const time_t seconds = time(nullptr) - 60 - secondsOf(last);
  for (const char* feed : {"events", "actions"}) {
    for (json::value& entry : seed.at(feed).as_array()) {
      move(entry.at("timestamp"), seconds);
      json::value* values = entry.as_object().if_contains("values");
      if (values && values->as_object().contains("firedAt")) move(values->at("firedAt"), seconds);
    }
  }
}

}  // namespace

json::object seed() {
  json::object result = json::parse(text).as_object();
  const char* isRecent = getenv("ZELTO_STANDIN_RECENT");
  if (isRecent && *isRecent) makeRecent(result);
  for (json::value& trigger : result.at("schema").at("triggerTypes").as_array()) {
    for (json::value& event : trigger.at("subEvents").as_array()) {
      for (json::value& value : event.at("values").as_array()) {
        const json::array row = value.as_array();
        const std::string name = valueText(row.at(0));
        value = {{"name", name},
                 {"type", row.at(1)},
                 {"description", row.at(2)},
                 {"sample", row.at(3)},
                 {"template", "{{" + name + "}}"},
                 {"envVar", environmentName(name)}};
      }
    }
  }
  for (const char* texts : {"docs", "prompts"}) {
    for (auto& [name, lines] : result.at(texts).as_object()) {
      std::string joined;
      for (const json::value& line : lines.as_array()) joined += valueText(line) + "\n";
      lines = joined;
    }
  }
  return result;
}

}  // namespace standin
