// Shell completion scripts for a whole command tree.
#pragma once

#include <string>

#include "ArgumentParser/CommandTree.h"
#include "ArgumentParser/CompletionRequest.h"
#include "ArgumentParser/ToolInfo.h"

namespace ArgumentParser {

/// The script that completes the root's command line in the shell.
std::string completionScript(const CompletionShell& shell, const CommandTree& tree);

/// The scripts of the three shells, from the model of a root command and all below it.
std::string bashCompletionScript(const CommandInfoV0& root);
std::string zshCompletionScript(const CommandInfoV0& root);
std::string fishCompletionScript(const CommandInfoV0& root);

}  // namespace ArgumentParser
