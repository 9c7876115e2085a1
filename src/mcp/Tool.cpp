#include "mcp/Tool.h"

#include <utility>

#include "mcp/RuleFields.h"
#include "mcp/ToolCatalogue.h"

namespace zelto {
namespace {

JSONArray stringArray(const std::vector<std::string_view>& strings) {
  return {strings.begin(), strings.end()};
}

JSONObject argumentSchema(const ToolArgument& argument) {
  JSONObject schema = propertySchema(argument.type, argument.description);
  if (!argument.choices.empty()) schema.set("enum", stringArray(argument.choices));
  if (argument.preset && argument.showsPreset) schema.set("default", *argument.preset);
  return schema;
}

JSONObject inputSchema(const ToolDeclaration& tool) {
  const auto* endpoint = std::get_if<Endpoint>(&tool.action);
  const bool hasRuleFields = endpoint != nullptr && endpoint->body == Body::ruleFields;
  JSONObject properties = hasRuleFields ? ruleFieldSchema() : JSONObject();
  std::vector<std::string_view> required;
  for (const ToolArgument& argument : tool.arguments) {
    properties.set(argument.name, argumentSchema(argument));
    if (argument.isRequired) required.push_back(argument.name);
  }
  JSONObject schema{{"type", "object"}, {"properties", std::move(properties)}};
  if (!required.empty()) schema.set("required", stringArray(required));
  return schema;
}

/// The path of a request, and the name of the argument that it holds, empty if it holds none.
std::pair<std::string, std::string_view> filledIn(std::string_view path, JSONView arguments) {
  const std::size_t open = path.find('<'), close = path.find('>');
  if (open == std::string_view::npos) return {std::string(path), {}};
  const std::string_view name = path.substr(open + 1, close - open - 1);
  std::string filled(path.substr(0, open));
  if (const auto value = arguments.find(name)) filled += percentEncode(argumentText(*value));
  return {filled.append(path.substr(close + 1)), name};
}

std::optional<JSONValue> bodyOf(const ToolDeclaration& tool, Body body, JSONView arguments) {
  switch (body) {
    case Body::none:
      return std::nullopt;
    case Body::everything:
      return arguments.isObject() ? JSONValue(arguments) : JSONObject();
    case Body::ruleFields:
      return filterKeys(arguments, ruleBodyKeys());
    case Body::declared:
      break;
  }
  std::vector<std::string_view> keys;
  for (const ToolArgument& argument : tool.arguments) keys.push_back(argument.name);
  return filterKeys(arguments, keys);
}

ToolHandler handlerOf(const ToolDeclaration& tool) {
  if (const auto* operation = std::get_if<JSONDocument (*)()>(&tool.action)) {
    return [operation](JSONView) { return (*operation)(); };
  }
  return [&tool, endpoint = std::get_if<Endpoint>(&tool.action)](JSONView arguments) {
    return apiCall(plannedRequest(tool, *endpoint, arguments));
  };
}

}  // namespace

const std::vector<MCPTool>& tools() {
  static const std::vector<MCPTool> built = [] {
    std::vector<MCPTool> all;
    for (const ToolDeclaration& tool : toolDeclarations()) {
      all.push_back({tool.name, tool.description, inputSchema(tool), handlerOf(tool)});
    }
    return all;
  }();
  return built;
}

const std::map<std::string_view, const MCPTool*>& toolsByName() {
  static const std::map<std::string_view, const MCPTool*> byName = [] {
    std::map<std::string_view, const MCPTool*> built;
    for (const MCPTool& tool : tools()) built.emplace(tool.name, &tool);
    return built;
  }();
  return byName;
}

APIRequest plannedRequest(const ToolDeclaration& tool, const Endpoint& endpoint, JSONView arguments) {
  auto [path, inPath] = filledIn(endpoint.path, arguments);
  APIRequest request{.method = endpoint.method, .path = std::move(path)};
  request.body = bodyOf(tool, endpoint.body, arguments);
  for (const ToolArgument& argument : tool.arguments) {
    if (endpoint.method != "GET" || argument.name == inPath) continue;
    const auto given = arguments.find(argument.name);
    request.query.emplace(argument.name, given ? JSONValue(*given) : argument.preset);
  }
  if (endpoint.adjust != nullptr) endpoint.adjust(request, arguments);
  return request;
}

JSONObject filterKeys(JSONView arguments, const std::vector<std::string_view>& keys) {
  JSONObject kept;
  for (const std::string_view key : keys) {
    if (const auto value = arguments.find(key)) kept.set(key, JSONValue(*value));
  }
  return kept;
}

}  // namespace zelto
