// The tools that the server offers to an agent, one row each. A new tool is a row here; what the server needs
// of it is made from the row (Tool.h).
#pragma once

#include <vector>

#include "mcp/Tool.h"

namespace zelto {

/// All tools, in the order in which agents see them.
const std::vector<ToolDeclaration>& toolDeclarations();

}  // namespace zelto
