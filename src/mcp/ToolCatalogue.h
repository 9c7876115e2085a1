// The tools that the server offers to an agent: their names, the texts that teach their use, the schemas of
// their arguments.
#pragma once

#include <map>
#include <string_view>
#include <vector>

#include "mcp/ToolHandlers.h"

namespace zelto {

/// One tool.
struct MCPTool {
  std::string_view name;
  std::string_view description;
  JSONObject inputSchema;  ///< JSON Schema of the arguments, an object
  ToolHandler handler;
};

/// The catalogue in the order in which agents see it; built on first use.
const std::vector<MCPTool>& tools();

/// From a tool's name to the tool; built on first use.
const std::map<std::string_view, const MCPTool*>& toolsByName();

}  // namespace zelto
