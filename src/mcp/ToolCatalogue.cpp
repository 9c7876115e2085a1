#include "mcp/ToolCatalogue.h"

#include <optional>
#include <utility>

#include "mcp/RuleFields.h"

namespace zelto {
namespace {

struct Property {
  std::string_view name;
  std::string_view type;
  std::string_view description = {};
  std::vector<std::string_view> choices = {};
  std::optional<int> preset = {};
};

struct ToolText {
  std::string_view name;
  std::string_view description;
  std::vector<Property> properties = {};
  std::vector<std::string_view> required = {};
  bool hasRuleFields = false;
};

constexpr bool withRuleFields = true;

/// What an agent reads. The texts are prompts and part of the product: a change of wording changes which
/// tools and triggers agents choose.
std::vector<ToolText> toolTexts() {
  return {
      {"zelto_health",
       "Check the running Zelto instance is reachable; returns app version, active profile, and "
       "rule counts."},
      {"zelto_start_server",
       "Start Zelto's local API so the other tools work, launching Zelto if it is not running. The "
       "API is off until it is started, and stays on across launches until it is stopped. Call "
       "this first when another tool reports the API is not running."},
      {"zelto_stop_server",
       "Stop Zelto's local API. It stays off across launches until it is started again."},
      {"zelto_schema",
       "List every available trigger type (with its sub-events and what it costs to leave armed), "
       "every action kind, and how to configure a periodic trigger. Call this first to discover "
       "valid triggerType/subEvent/action values, and read the triggerSelection block: most rules "
       "that sound periodic are not, and cost 'event' triggers wake only when the OS says "
       "something happened."},
      {"zelto_list_rules",
       "List automation rules. scope 'all' (default) returns every rule across profiles; 'visible' "
       "returns only the active profile's rules.",
       {{"scope", "string", "which rules to return", {"all", "visible"}}}},
      {"zelto_get_rule", "Get one rule by its id.", {{"id", "string"}}, {"id"}},
      {"zelto_create_rule",
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
       {{"triggerType", "string",
         "the event the rule waits for, e.g. power, appLifecycle, fileWatcher, storage, "
         "userActivity. cron is for wall-clock schedules and script for a condition no trigger "
         "can see; prefer anything else"},
        {"subEvent", "string", "optional; defaults to the trigger's first sub-event"}},
       {"triggerType"},
       withRuleFields},
      {"zelto_update_rule",
       "Update any field of an existing rule. Only the fields you pass are changed. Changing "
       "triggerType or subEvent rebuilds the trigger; changing trigger config (e.g. "
       "cronExpression, scriptTriggerInterval) restarts it so the change takes effect now.",
       {{"id", "string"}, {"triggerType", "string"}, {"subEvent", "string"}},
       {"id"},
       withRuleFields},
      {"zelto_test_script",
       "Run a script the way a rule's action would and get back stdout, stderr, exit code and "
       "duration, without creating a rule. Shell runners get ~/.zshrc plus Zelto's ensure_shortcut "
       "and download_mac_util helpers. parsedValues shows the key=value lines a trigger script "
       "would hand to its action. Use this to check a script works before saving it onto a rule.",
       {{"script", "string"},
        {"runner", "string", "default /bin/zsh"},
        {"timeout", "number"},
        {"loadZshrc", "boolean"},
        {"values", "object", "optional event values to expose as env vars"}},
       {"script"}},
      {"zelto_generator_prompt",
       "Get Zelto's own system prompt for writing scripts, so a script you write matches what the "
       "app expects: which env vars and {{templates}} the chosen trigger exposes, the exit-code "
       "contract for trigger scripts, the available macOS tools, the bundled shortcuts library, "
       "and the Swift/compiled-runner rules. Call this before writing any script for a rule.",
       {{"kind",
         "string",
         "shell = action script, trigger = polling condition script, applescript = AppleScript action",
         {"shell", "trigger", "applescript"}},
        {"subEvent", "string", "the rule's sub-event, so the prompt lists its variables"},
        {"runner", "string", "default /bin/zsh"}}},
      {"zelto_docs",
       "Reference docs Zelto feeds its code generator. 'context' is the macOS tool cookbook plus "
       "the full catalogue of bundled shortcuts with their inputs and outputs; 'trigger-context' "
       "covers polling trigger scripts; 'applescript-context' covers AppleScript gotchas.",
       {{"name", "string", "", {"context", "trigger-context", "applescript-context"}}},
       {"name"}},
      {"zelto_list_runners",
       "Script runners Zelto can execute, which are compiled, and which helper functions get "
       "injected into shell scripts."},
      {"zelto_list_shortcuts",
       "Apple Shortcuts: the ones installed on this Mac (with identifiers for the 'shortcuts' "
       "action) and the ~100 shortcuts Zelto bundles, each flagged as installed or not. "
       "zelto_docs('context') describes what each bundled one takes and returns."},
      {"zelto_install_shortcut",
       "Install one of Zelto's bundled shortcuts. This opens Shortcuts.app's add sheet, so the "
       "user has to confirm. From inside a shell script you can instead call ensure_shortcut "
       "\"⚙︎name\", which installs it on demand.",
       {{"name", "string", "e.g. ⚙︎toggleBluetooth"}},
       {"name"}},
      {"zelto_watch",
       "Wait for live activity and return what happened. Pass the lastSeq from a previous call to "
       "get only what is new, and wait (seconds) to block until something arrives. kind 'events' "
       "watches triggers firing, 'actions' watches action runs with their output. Use this to "
       "watch a rule work in real time, or to confirm a trigger is firing at all.",
       {{"kind", "string", "default actions", {"events", "actions"}},
        {"since", "integer", "lastSeq from the previous call; omit for a snapshot of recent entries"},
        {"wait", "number", "seconds to block waiting for something new, up to 300"},
        {"limit", "integer", "snapshot size when since is omitted"}}},
      {"zelto_enable_rule", "Enable a rule (starts its trigger).", {{"id", "string"}}, {"id"}},
      {"zelto_disable_rule", "Disable a rule (stops its trigger).", {{"id", "string"}}, {"id"}},
      {"zelto_fire_rule",
       "Test-fire a rule's action immediately, bypassing its condition and schedule. Use "
       "zelto_list_action_history afterwards to see the result.",
       {{"id", "string"}},
       {"id"}},
      {"zelto_delete_rule", "Delete a rule permanently.", {{"id", "string"}}, {"id"}},
      {"zelto_list_groups", "List rule groups with their rule counts and how many are enabled."},
      {"zelto_enable_group", "Enable every rule in a group.", {{"name", "string"}}, {"name"}},
      {"zelto_disable_group", "Disable every rule in a group.", {{"name", "string"}}, {"name"}},
      {"zelto_rename_group",
       "Rename a group (moves all its rules).",
       {{"name", "string", "current group name"}, {"newName", "string"}},
       {"name", "newName"}},
      {"zelto_list_profiles", "List profiles with rule counts and which is active."},
      {"zelto_create_profile",
       "Create a profile.",
       {{"name", "string"}, {"icon", "string", "optional SF Symbol name"}},
       {"name"}},
      {"zelto_activate_profile",
       "Switch to a profile by its id (starts that profile's rules, stops the others).",
       {{"id", "string"}},
       {"id"}},
      {"zelto_list_events",
       "Recent trigger events from the event log (newest first). Use for troubleshooting whether a "
       "trigger is firing.",
       {{"limit", "integer", "", {}, 50}}},
      {"zelto_list_action_history",
       "Recent action executions (newest first) with stdout, stderr, exit code and duration. Use "
       "to see what an action produced.",
       {{"limit", "integer", "", {}, 50}}},
  };
}

JSONArray stringArray(const std::vector<std::string_view>& strings) {
  return {strings.begin(), strings.end()};
}

JSONObject inputSchema(const ToolText& tool) {
  JSONObject properties = tool.hasRuleFields ? ruleFieldSchema() : JSONObject();
  for (const Property& property : tool.properties) {
    JSONObject schema = propertySchema(property.type, property.description);
    if (!property.choices.empty()) schema.set("enum", stringArray(property.choices));
    if (property.preset) schema.set("default", *property.preset);
    properties.set(property.name, std::move(schema));
  }
  JSONObject schema{{"type", "object"}, {"properties", std::move(properties)}};
  if (!tool.required.empty()) schema.set("required", stringArray(tool.required));
  return schema;
}

}  // namespace

const std::vector<MCPTool>& tools() {
  static const std::vector<MCPTool> catalogue = [] {
    std::vector<MCPTool> built;
    for (const ToolText& tool : toolTexts()) {
      built.push_back({tool.name, tool.description, inputSchema(tool), toolHandler(tool.name)});
    }
    return built;
  }();
  return catalogue;
}

const std::map<std::string_view, const MCPTool*>& toolsByName() {
  static const std::map<std::string_view, const MCPTool*> byName = [] {
    std::map<std::string_view, const MCPTool*> built;
    for (const MCPTool& tool : tools()) built.emplace(tool.name, &tool);
    return built;
  }();
  return byName;
}

}  // namespace zelto
