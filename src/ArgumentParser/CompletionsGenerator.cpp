#include "ArgumentParser/CompletionsGenerator.h"

namespace ArgumentParser {

std::string completionScript(const CompletionShell& shell, const CommandTree& tree) {
  CommandInfoV0 root = makeToolInfo({&tree.root()}).command;
  // A command without children has no `help` child either.
  if (tree.root().children().empty()) root.subcommands.clear();
  if (shell.rawValue == "bash") return bashCompletionScript(root);
  return shell.rawValue == "zsh" ? zshCompletionScript(root) : fishCompletionScript(root);
}

}  // namespace ArgumentParser
