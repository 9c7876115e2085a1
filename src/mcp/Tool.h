// What a tool is declared by, and what the server makes of it: a JSON Schema for the agent to read, and a
// handler that turns an agent's arguments into one call of the application's API, whose answer comes back as
// it is.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "client/APICall.h"

namespace zelto {

/// An argument of a tool.
struct ToolArgument {
  std::string_view name;
  std::string_view type;  ///< in the terms of JSON Schema
  std::string_view description = {};
  std::vector<std::string_view> choices = {};
  std::optional<JSONValue> preset = {};  ///< goes out where the agent gives none
  bool showsPreset = false;              ///< whether the schema names the preset
  bool isRequired = false;
};

/// Which of an agent's arguments the body of a request holds.
enum class Body {
  none,
  declared,    ///< those of the tool's row
  everything,  ///< all that the agent gave
  ruleFields,  ///< the settable fields of a rule, which the schema then lists as well
};

/// How the arguments of a tool become a request. Neither part of it can be left out of a row.
struct Endpoint {
  Endpoint(std::string_view verb, std::string_view target, Body content = Body::none,
           void (*change)(APIRequest&, JSONView) = nullptr)
      : method(verb), path(target), body(content), adjust(change) {}

  std::string_view method;
  std::string_view path;  ///< "<x>" in it stands for the argument x
  Body body;              ///< with "GET", the arguments that are not in the path go to the query
  void (*adjust)(APIRequest& request, JSONView arguments);  ///< what the rules above do not cover
};

/// A call of the API, or an operation of the client that takes no arguments and may raise `MCPError`.
using ToolAction = std::variant<Endpoint, JSONDocument (*)()>;

/// A tool, as its row says.
struct ToolDeclaration {
  std::string_view name;
  ToolAction action;
  std::string_view description;
  std::vector<ToolArgument> arguments = {};
};

/// What a handler gives: a text for the agent as it stands, or an answer that is put into a text.
using ToolOutput = std::variant<std::string, JSONDocument>;

/// Takes a tool's arguments, its required ones present. Raises `MCPError`.
using ToolHandler = std::function<ToolOutput(JSONView arguments)>;

/// A tool, as the server needs it.
struct MCPTool {
  std::string_view name;
  std::string_view description;
  JSONObject inputSchema;  ///< JSON Schema of the arguments, an object
  ToolHandler handler;
};

/// The tools of the catalogue, in its order; built on first use.
const std::vector<MCPTool>& tools();

/// From a tool's name to the tool; built on first use.
const std::map<std::string_view, const MCPTool*>& toolsByName();

/// The request that a tool makes for these arguments.
APIRequest plannedRequest(const ToolDeclaration& tool, const Endpoint& endpoint, JSONView arguments);

/// The members of `arguments` whose key is among `keys`, unchanged.
JSONObject filterKeys(JSONView arguments, const std::vector<std::string_view>& keys);

}  // namespace zelto
