#include "ArgumentParser/declarations/CommandTree.h"

#include <algorithm>

#include "ArgumentParser/declarations/BuiltIns.h"

namespace ArgumentParser {
namespace {

bool findStack(const CommandNode& node, CommandIdentity command, CommandStack& stack) {
  stack.push_back(&node);
  if (node.type.identity() == command) return true;
  for (const auto& child : node.children()) {
    if (findStack(*child, command, stack)) return true;
  }
  stack.pop_back();
  return false;
}

void checkBelow(const CommandNode& node) {
  for (const auto& child : node.children()) checkBelow(*child);
  node.arguments();
}

}  // namespace

CommandNode::CommandNode(CommandType commandType, const CommandNode* above)
    : type(commandType),
      declaration(commandType.declaration()),
      parent(above),
      commandName(configuration().commandName ? *configuration().commandName
                                              : convertedToSnakeCase(declaration.typeName)) {
  const auto& aliases = configuration().aliases;
  if (std::find(aliases.begin(), aliases.end(), name()) != aliases.end()) {
    throw DeclarationError("The command \"" + declaration.typeName +
                           "\" can't have an alias with the same name as the command itself.");
  }
}

void CommandNode::addChild(CommandType childType) const {
  // A command further up would be as endless as the node itself.
  for (const CommandNode* above = this; above != nullptr; above = above->parent) {
    if (childType != above->type) continue;
    throw DeclarationError("The command \"" + above->declaration.typeName +
                           "\" can't have itself as its own subcommand.");
  }
  nodes->push_back(std::make_unique<CommandNode>(childType, this));
}

const std::vector<std::unique_ptr<CommandNode>>& CommandNode::children() const {
  if (nodes) return *nodes;
  nodes.emplace();
  for (const CommandType child : configuration().subcommands) addChild(child);
  for (const CommandGroup& group : configuration().groupedSubcommands) {
    for (const CommandType child : group.subcommands) addChild(child);
  }
  if (configuration().defaultSubcommand && defaultSubcommand() == nullptr) {
    throw DeclarationError("The default subcommand of the command \"" + declaration.typeName +
                           "\" must be one of its subcommands.");
  }
  if (parent == nullptr && !nodes->empty()) addChild(ArgumentParser::type<HelpCommand>());
  return *nodes;
}

const CommandNode* CommandNode::child(std::string_view text) const {
  for (const auto& each : children()) {
    const auto& aliases = each->configuration().aliases;
    if (each->name() == text || std::find(aliases.begin(), aliases.end(), text) != aliases.end())
      return each.get();
  }
  return nullptr;
}

const CommandNode* CommandNode::defaultSubcommand() const {
  if (!configuration().defaultSubcommand) return nullptr;
  for (const auto& each : children()) {
    if (each->type == configuration().defaultSubcommand) return each.get();
  }
  return nullptr;
}

const ArgumentSet& CommandNode::arguments() const {
  if (!definitions) declaration.declareArguments(definitions.emplace());
  return *definitions;
}

CommandStack CommandTree::stackOf(CommandIdentity command) const {
  CommandStack stack;
  findStack(rootNode, command, stack);
  return stack;
}

void CommandTree::checkDeclarations() const {
  checkBelow(rootNode);
}

std::string toolName(const CommandStack& stack) {
  std::string result = stack.front()->configuration().superCommandName.value_or("");
  for (const CommandNode* node : stack) {
    if (!result.empty()) result += ' ';
    result += node->name();
  }
  return result;
}

}  // namespace ArgumentParser
