// Shell completion scripts, from the model of a root command and all below it.
#pragma once

#include <string>

#include "ArgumentParser/ToolInfo.h"

namespace ArgumentParser {

std::string bashCompletionScript(const CommandInfoV0& root);
std::string zshCompletionScript(const CommandInfoV0& root);
std::string fishCompletionScript(const CommandInfoV0& root);

}  // namespace ArgumentParser
