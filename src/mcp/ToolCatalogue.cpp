#include "mcp/ToolCatalogue.h"

#include "client/StartAPI.h"
#include "client/Timeouts.h"
#include "client/Wire.h"

namespace zelto {
namespace {

JSONDocument startServer() {
  return ensureAPIRunning(timeouts::start);
}

/// The script's own limit, and some time for starting it.
void waitForScript(APIRequest& request, JSONView arguments) {
  const double limit = numberIn(arguments, "timeout");
  request.timeout = limit > 0 ? limit + timeouts::agentScriptMargin : timeouts::agentScript;
}

/// The kind chooses the feed. The application holds the call for up to `wait` seconds.
void pollFeed(APIRequest& request, JSONView arguments) {
  request.timeout = timeouts::pollMargin + numberIn(arguments, "wait");
  if (arguments["kind"].string() == "events") request.path = "/events";
  request.query.erase("kind");
}

/// The API takes the group's new name under the key "name".
void takeNewName(APIRequest& request, JSONView arguments) {
  request.body = JSONObject{{"name", JSONValue(arguments["newName"])}};
}

}  // namespace

// What an agent reads. The texts are prompts and part of the product: a change of wording changes which tools
// and triggers agents choose.
const std::vector<ToolDeclaration>& toolDeclarations() {  // NOLINT(readability-function-size): it is a table
  static const std::vector<ToolDeclaration> table{
      {.name = "zelto_health",
       .action = Endpoint{"GET", "/health"},
       .description =
           "Check the running Zelto instance is reachable; returns app version, active profile, and "
           "rule counts."},
      {.name = "zelto_start_server",
       .action = startServer,
       .description =
           "Start Zelto's local API so the other tools work, launching Zelto if it is not running. The "
           "API is off until it is started, and stays on across launches until it is stopped. Call "
           "this first when another tool reports the API is not running."},
      {.name = "zelto_stop_server",
       .action = stopAPI,
       .description = "Stop Zelto's local API. It stays off across launches until it is started again."},
      {.name = "zelto_schema",
       .action = Endpoint{"GET", "/schema"},
       .description =
           "List every available trigger type (with its sub-events and what it costs to leave armed), "
           "every action kind, and how to configure a periodic trigger. Call this first to discover "
           "valid triggerType/subEvent/action values, and read the triggerSelection block: most rules "
           "that sound periodic are not, and cost 'event' triggers wake only when the OS says "
           "something happened."},
      {.name = "zelto_list_rules",
       .action = Endpoint{"GET", "/rules"},
       .description =
           "List automation rules. scope 'all' (default) returns every rule across profiles; 'visible' "
           "returns only the active profile's rules.",
       .arguments = {{.name = "scope",
                      .type = "string",
                      .description = "which rules to return",
                      .choices = {"all", "visible"},
                      .preset = "all"}}},
      {.name = "zelto_get_rule",
       .action = Endpoint{"GET", "/rules/<id>"},
       .description = "Get one rule by its id.",
       .arguments = {{.name = "id", .type = "string", .isRequired = true}}},
      {.name = "zelto_create_rule",
       .action = Endpoint{"POST", "/rules", Body::ruleFields},
       .description =
           "Create a rule. triggerType and (optionally) subEvent identify the trigger; call "
           "zelto_schema first for the valid values, for which config fields each trigger and action "
           "uses, and for each trigger's cost.\n"
           "Pick the trigger that already knows the thing the rule cares about. Before writing a "
           "script, ask what its first line would check, and if a trigger reports that, use the "
           "trigger: appLifecycle over pgrep, fileWatcher over listing a directory, storage over df, "
           "power/screenLocked over testing whether the user is away. Cost 'event' triggers wake only "
           "on an OS notification and cost nothing while idle.\n"
           "cron is for wall-clock schedules, not for polling a condition. Its own timer is free but "
           "its action is not, so '*/20 * * * *' pays for a shell 72 times a day. For 'at most every N "
           "hours', let an event trigger say when and let the action compare a stamp file's mtime.\n"
           "triggerType 'script' is the last resort, for a condition nothing else can see; give it "
           "scriptTriggerSource and the longest scriptTriggerInterval the rule tolerates. When you do "
           "need one, arm it instead of leaving it running: an event rule with action 'enableRule' "
           "turns the poller on at the moment its answer becomes possible, the poller ends with "
           "'disableRule' on itself, and the arming rule's reverseAction disarms it if the opening "
           "event reverses. Both actions name their target in chainRuleIdentifier, and disabling stops "
           "the trigger rather than muting it.\n"
           "Test any script with zelto_test_script before attaching it.",
       .arguments =
           {{.name = "triggerType",
             .type = "string",
             .description =
                 "the event the rule waits for, e.g. power, appLifecycle, fileWatcher, storage, "
                 "userActivity. cron is for wall-clock schedules and script for a condition no trigger "
                 "can see; prefer anything else",
             .isRequired = true},
            {.name = "subEvent",
             .type = "string",
             .description = "optional; defaults to the trigger's first sub-event"}}},
      {.name = "zelto_update_rule",
       .action = Endpoint{"PATCH", "/rules/<id>", Body::ruleFields},
       .description = "Update any field of an existing rule. Only the fields you pass are changed. Changing "
                      "triggerType or subEvent rebuilds the trigger; changing trigger config (e.g. "
                      "cronExpression, scriptTriggerInterval) restarts it so the change takes effect now.",
       .arguments = {{.name = "id", .type = "string", .isRequired = true},
                     {.name = "triggerType", .type = "string"},
                     {.name = "subEvent", .type = "string"}}},
      {.name = "zelto_test_script",
       .action = Endpoint{"POST", "/scripts", Body::everything, waitForScript},
       .description =
           "Run a script the way a rule's action would and get back stdout, stderr, exit code and "
           "duration, without creating a rule. Shell runners get ~/.zshrc plus Zelto's ensure_shortcut "
           "and download_mac_util helpers. parsedValues shows the key=value lines a trigger script "
           "would hand to its action. Use this to check a script works before saving it onto a rule.",
       .arguments = {{.name = "script", .type = "string", .isRequired = true},
                     {.name = "runner", .type = "string", .description = "default /bin/zsh"},
                     {.name = "timeout", .type = "number"},
                     {.name = "loadZshrc", .type = "boolean"},
                     {.name = "values",
                      .type = "object",
                      .description = "optional event values to expose as env vars"}}},
      {.name = "zelto_generator_prompt",
       .action = Endpoint{"GET", "/generator/prompt"},
       .description =
           "Get Zelto's own system prompt for writing scripts, so a script you write matches what the "
           "app expects: which env vars and {{templates}} the chosen trigger exposes, the exit-code "
           "contract for trigger scripts, the available macOS tools, the bundled shortcuts library, "
           "and the Swift/compiled-runner rules. Call this before writing any script for a rule.",
       .arguments = {{.name = "kind",
                      .type = "string",
                      .description = "shell = action script, trigger = polling condition script, applescript "
                                     "= AppleScript action",
                      .choices = {"shell", "trigger", "applescript"},
                      .preset = "shell"},
                     {.name = "subEvent",
                      .type = "string",
                      .description = "the rule's sub-event, so the prompt lists its variables"},
                     {.name = "runner", .type = "string", .description = "default /bin/zsh"}}},
      {.name = "zelto_docs",
       .action = Endpoint{"GET", "/docs/<name>"},
       .description =
           "Reference docs Zelto feeds its code generator. 'context' is the macOS tool cookbook plus "
           "the full catalogue of bundled shortcuts with their inputs and outputs; 'trigger-context' "
           "covers polling trigger scripts; 'applescript-context' covers AppleScript gotchas.",
       .arguments = {{.name = "name",
                      .type = "string",
                      .choices = {"context", "trigger-context", "applescript-context"},
                      .isRequired = true}}},
      {.name = "zelto_list_runners",
       .action = Endpoint{"GET", "/runners"},
       .description = "Script runners Zelto can execute, which are compiled, and which helper functions get "
                      "injected into shell scripts."},
      {.name = "zelto_list_shortcuts",
       .action = Endpoint{"GET", "/shortcuts"},
       .description = "Apple Shortcuts: the ones installed on this Mac (with identifiers for the 'shortcuts' "
                      "action) and the ~100 shortcuts Zelto bundles, each flagged as installed or not. "
                      "zelto_docs('context') describes what each bundled one takes and returns."},
      {.name = "zelto_install_shortcut",
       .action = Endpoint{"POST", "/shortcuts/install", Body::declared},
       .description =
           "Install one of Zelto's bundled shortcuts. This opens Shortcuts.app's add sheet, so the "
           "user has to confirm. From inside a shell script you can instead call ensure_shortcut "
           "\"⚙︎name\", which installs it on demand.",
       .arguments = {{.name = "name",
                      .type = "string",
                      .description = "e.g. ⚙︎toggleBluetooth",
                      .isRequired = true}}},
      {.name = "zelto_watch",
       .action = Endpoint{"GET", "/action-history", Body::none, pollFeed},
       .description =
           "Wait for live activity and return what happened. Pass the lastSeq from a previous call to "
           "get only what is new, and wait (seconds) to block until something arrives. kind 'events' "
           "watches triggers firing, 'actions' watches action runs with their output. Use this to "
           "watch a rule work in real time, or to confirm a trigger is firing at all.",
       .arguments = {{.name = "kind",
                      .type = "string",
                      .description = "default actions",
                      .choices = {"events", "actions"}},
                     {.name = "since",
                      .type = "integer",
                      .description = "lastSeq from the previous call; omit for a snapshot of recent entries"},
                     {.name = "wait",
                      .type = "number",
                      .description = "seconds to block waiting for something new, up to 300"},
                     {.name = "limit",
                      .type = "integer",
                      .description = "snapshot size when since is omitted"}}},
      {.name = "zelto_enable_rule",
       .action = Endpoint{"POST", "/rules/<id>/enable"},
       .description = "Enable a rule (starts its trigger).",
       .arguments = {{.name = "id", .type = "string", .isRequired = true}}},
      {.name = "zelto_disable_rule",
       .action = Endpoint{"POST", "/rules/<id>/disable"},
       .description = "Disable a rule (stops its trigger).",
       .arguments = {{.name = "id", .type = "string", .isRequired = true}}},
      {.name = "zelto_fire_rule",
       .action = Endpoint{"POST", "/rules/<id>/fire"},
       .description = "Test-fire a rule's action immediately, bypassing its condition and schedule. Use "
                      "zelto_list_action_history afterwards to see the result.",
       .arguments = {{.name = "id", .type = "string", .isRequired = true}}},
      {.name = "zelto_delete_rule",
       .action = Endpoint{"DELETE", "/rules/<id>"},
       .description = "Delete a rule permanently.",
       .arguments = {{.name = "id", .type = "string", .isRequired = true}}},
      {.name = "zelto_list_groups",
       .action = Endpoint{"GET", "/groups"},
       .description = "List rule groups with their rule counts and how many are enabled."},
      {.name = "zelto_enable_group",
       .action = Endpoint{"POST", "/groups/<name>/enable"},
       .description = "Enable every rule in a group.",
       .arguments = {{.name = "name", .type = "string", .isRequired = true}}},
      {.name = "zelto_disable_group",
       .action = Endpoint{"POST", "/groups/<name>/disable"},
       .description = "Disable every rule in a group.",
       .arguments = {{.name = "name", .type = "string", .isRequired = true}}},
      {.name = "zelto_rename_group",
       .action = Endpoint{"PATCH", "/groups/<name>", Body::none, takeNewName},
       .description = "Rename a group (moves all its rules).",
       .arguments =
           {{.name = "name", .type = "string", .description = "current group name", .isRequired = true},
            {.name = "newName", .type = "string", .isRequired = true}}},
      {.name = "zelto_list_profiles",
       .action = Endpoint{"GET", "/profiles"},
       .description = "List profiles with rule counts and which is active."},
      {.name = "zelto_create_profile",
       .action = Endpoint{"POST", "/profiles", Body::declared},
       .description = "Create a profile.",
       .arguments = {{.name = "name", .type = "string", .isRequired = true},
                     {.name = "icon", .type = "string", .description = "optional SF Symbol name"}}},
      {.name = "zelto_activate_profile",
       .action = Endpoint{"POST", "/profiles/<id>/activate"},
       .description = "Switch to a profile by its id (starts that profile's rules, stops the others).",
       .arguments = {{.name = "id", .type = "string", .isRequired = true}}},
      {.name = "zelto_list_events",
       .action = Endpoint{"GET", "/events"},
       .description =
           "Recent trigger events from the event log (newest first). Use for troubleshooting whether a "
           "trigger is firing.",
       .arguments = {{.name = "limit", .type = "integer", .preset = 50, .showsPreset = true}}},
      {.name = "zelto_list_action_history",
       .action = Endpoint{"GET", "/action-history"},
       .description =
           "Recent action executions (newest first) with stdout, stderr, exit code and duration. Use "
           "to see what an action produced.",
       .arguments = {{.name = "limit", .type = "integer", .preset = 50, .showsPreset = true}}},
  };
  return table;
}

}  // namespace zelto
