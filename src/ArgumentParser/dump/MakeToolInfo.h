// Makes the model of a command tree from its declarations.
#pragma once

#include "ArgumentParser/ToolInfo.h"
#include "ArgumentParser/declarations/CommandTree.h"

namespace ArgumentParser {

/// The model of the stack's last command and all below it, the built-in `help` command its last child.
ToolInfoV0 makeToolInfo(const CommandStack& stack);

}  // namespace ArgumentParser
