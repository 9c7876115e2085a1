#include "mcp/ToolHandlers.h"

#include "api/StartOnDemand.h"
#include "json/JSONText.h"
#include "mcp/RuleFields.h"

namespace zelto {
namespace {

struct QueryKey {
  std::string_view name;
  std::optional<JSONValue> preset = {};  ///< goes out when the argument is absent
};

/// How the arguments of one tool become a request.
struct Endpoint {
  std::string_view tool;
  std::string_view method;
  std::string_view path;  ///< "<x>" in it stands for the argument x
  std::vector<QueryKey> query = {};
  JSONObject (*body)(const JSONObject& arguments) = nullptr;
  void (*adjust)(APIRequest& request, const JSONObject& arguments) = nullptr;
};

JSONValue argument(const JSONObject& arguments, std::string_view name) {
  const JSONValue* value = arguments.find(name);
  return value != nullptr ? *value : JSONValue();
}

JSONObject allArguments(const JSONObject& arguments) {
  return arguments;
}

JSONObject ruleBody(const JSONObject& arguments) {
  return filterKeys(arguments, ruleBodyKeys());
}

JSONObject profileBody(const JSONObject& arguments) {
  static const std::vector<std::string_view> profileBodyKeys{"name", "icon"};
  return filterKeys(arguments, profileBodyKeys);
}

JSONObject shortcutBody(const JSONObject& arguments) {
  return {{"name", argument(arguments, "name")}};
}

JSONObject renameBody(const JSONObject& arguments) {
  return {{"name", argument(arguments, "newName")}};
}

/// A script may run for as long as it was given, and starting it takes a while too.
void waitForScript(APIRequest& request, const JSONObject& arguments) {
  const double given = argument(arguments, "timeout").number();
  request.timeout = given > 0 ? given + 15 : 45;
}

/// The application holds the call for up to `wait` seconds, which must not look like a time-out.
void pollFeed(APIRequest& request, const JSONObject& arguments) {
  request.timeout = 20 + argument(arguments, "wait").number();
  if (argument(arguments, "kind") == JSONValue("events")) request.path = "/events";
}

const std::vector<Endpoint>& endpoints() {
  static const std::vector<Endpoint> table{
      {"zelto_health", "GET", "/health"},
      {"zelto_schema", "GET", "/schema"},
      {"zelto_list_rules", "GET", "/rules", {{"scope", "all"}}},
      {"zelto_get_rule", "GET", "/rules/<id>"},
      {"zelto_create_rule", "POST", "/rules", {}, ruleBody},
      {"zelto_update_rule", "PATCH", "/rules/<id>", {}, ruleBody},
      {"zelto_test_script", "POST", "/scripts", {}, allArguments, waitForScript},
      {"zelto_generator_prompt", "GET", "/generator/prompt", {{"kind", "shell"}, {"subEvent"}, {"runner"}}},
      {"zelto_docs", "GET", "/docs/<name>"},
      {"zelto_list_runners", "GET", "/runners"},
      {"zelto_list_shortcuts", "GET", "/shortcuts"},
      {"zelto_install_shortcut", "POST", "/shortcuts/install", {}, shortcutBody},
      {"zelto_watch", "GET", "/action-history", {{"since"}, {"wait"}, {"limit"}}, nullptr, pollFeed},
      {"zelto_enable_rule", "POST", "/rules/<id>/enable"},
      {"zelto_disable_rule", "POST", "/rules/<id>/disable"},
      {"zelto_fire_rule", "POST", "/rules/<id>/fire"},
      {"zelto_delete_rule", "DELETE", "/rules/<id>"},
      {"zelto_list_groups", "GET", "/groups"},
      {"zelto_enable_group", "POST", "/groups/<name>/enable"},
      {"zelto_disable_group", "POST", "/groups/<name>/disable"},
      {"zelto_rename_group", "PATCH", "/groups/<name>", {}, renameBody},
      {"zelto_list_profiles", "GET", "/profiles"},
      {"zelto_create_profile", "POST", "/profiles", {}, profileBody},
      {"zelto_activate_profile", "POST", "/profiles/<id>/activate"},
      {"zelto_list_events", "GET", "/events", {{"limit", 50}}},
      {"zelto_list_action_history", "GET", "/action-history", {{"limit", 50}}},
  };
  return table;
}

std::string filledIn(std::string_view path, const JSONObject& arguments) {
  const std::size_t open = path.find('<'), close = path.find('>');
  if (open == std::string_view::npos) return std::string(path);
  const JSONValue* value = arguments.find(path.substr(open + 1, close - open - 1));
  std::string filled(path.substr(0, open));
  if (value != nullptr) filled += percentEncode(argumentText(*value));
  return filled.append(path.substr(close + 1));
}

}  // namespace

std::optional<APIRequest> plannedRequest(std::string_view tool, const JSONObject& arguments) {
  for (const Endpoint& endpoint : endpoints()) {
    if (endpoint.tool != tool) continue;
    APIRequest request{endpoint.method, filledIn(endpoint.path, arguments)};
    for (const auto& [name, preset] : endpoint.query) {
      const JSONValue* given = arguments.find(name);
      request.query.emplace(name, given != nullptr ? *given : preset);
    }
    if (endpoint.body != nullptr) request.body = endpoint.body(arguments);
    if (endpoint.adjust != nullptr) endpoint.adjust(request, arguments);
    return request;
  }
  return std::nullopt;
}

ToolHandler toolHandler(std::string_view tool) {
  if (tool == "zelto_start_server") return [](const JSONObject&) { return ensureAPIRunning(startTimeout); };
  if (tool == "zelto_stop_server") return [](const JSONObject&) { return stopAPI(); };
  return [tool](const JSONObject& arguments) {
    const APIRequest request = plannedRequest(tool, arguments).value();
    return apiCall(request.method, request.path, request.body, request.query, request.timeout);
  };
}

std::string argumentText(const JSONValue& value) {
  if (const auto* string = value.string()) return *string;
  if (value.isNumber()) return json::numberText(value);
  return json::text(value, json::compact).value_or(std::string());
}

JSONObject filterKeys(const JSONObject& arguments, const std::vector<std::string_view>& keys) {
  JSONObject kept;
  for (const std::string_view key : keys) {
    if (const JSONValue* value = arguments.find(key)) kept.set(key, *value);
  }
  return kept;
}

}  // namespace zelto
