// What each tool does: the arguments become one call of the application's API, its answer comes back as it
// is.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "api/APICall.h"

namespace zelto {

/// What a handler gives: a text for the agent as it stands, or a value that is put into a text.
using ToolOutput = std::variant<std::string, JSONValue>;

/// Takes a tool's arguments, its required ones present. Raises `MCPError`.
using ToolHandler = std::function<ToolOutput(const JSONObject& arguments)>;

/// One call of the API, in the terms of `apiCall`.
struct APIRequest {
  std::string_view method;
  std::string path;
  Query query = {};
  std::optional<JSONValue> body = {};
  double timeout = 15;  ///< seconds
};

/// The request that `tool` makes for these arguments; nothing for one that makes no request of its own.
std::optional<APIRequest> plannedRequest(std::string_view tool, const JSONObject& arguments);

/// The handler of the catalogue's tool `tool`. The name must outlive it.
ToolHandler toolHandler(std::string_view tool);

/// A value as the text of a path segment, not yet encoded: a string as it is, a number in its shortest form,
/// anything else as JSON.
std::string argumentText(const JSONValue& value);

/// The members of `arguments` whose key is among `keys`, unchanged.
JSONObject filterKeys(const JSONObject& arguments, const std::vector<std::string_view>& keys);

}  // namespace zelto
