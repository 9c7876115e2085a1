// The tree of commands, grown from the root's declaration as far as something looks at it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ArgumentParser/declarations/Command.h"

namespace ArgumentParser {

/// One command in its place in the tree. What stands below it, and its arguments, are made when something
/// looks at them, so that a command line pays for the declarations on its way alone.
struct CommandNode {
  CommandNode(CommandType type, const CommandNode* above);

  const CommandConfiguration& configuration() const { return declaration.configuration; }
  /// The name typed by the user.
  const std::string& name() const { return commandName; }
  /// Ungrouped children, then those of each group, then the built-in `help` of a root that has any.
  const std::vector<std::unique_ptr<CommandNode>>& children() const;
  /// The child of that name or alias, or null; of several the first.
  const CommandNode* child(std::string_view text) const;
  /// The child chosen when none is named, or null.
  const CommandNode* defaultSubcommand() const;
  /// The definitions, made on first use.
  const ArgumentSet& arguments() const;

  CommandType type;
  Declaration declaration;
  const CommandNode* parent;

 private:
  std::string commandName;
  mutable std::optional<std::vector<std::unique_ptr<CommandNode>>> nodes;
  mutable std::optional<ArgumentSet> definitions;
};

/// A command and those above it, root first.
using CommandStack = std::vector<const CommandNode*>;

/// The tree of a root command.
class CommandTree {
 public:
  /// Raises `DeclarationError` if a declaration anywhere in the tree is malformed.
  explicit CommandTree(CommandType root);

  const CommandNode& root() const { return rootNode; }
  /// The stack of the first command of that identity, in declared order; empty if there is none.
  CommandStack stackOf(CommandIdentity command) const;
  /// Looks at the declarations once more. Raises `DeclarationError` as the constructor does.
  void checkDeclarations() const;

 private:
  CommandNode rootNode;
};

/// The names of the commands of the stack joined by blanks, after the name of the root's super-command.
std::string toolName(const CommandStack& stack);

}  // namespace ArgumentParser
