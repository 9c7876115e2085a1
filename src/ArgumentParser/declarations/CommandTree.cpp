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

/// A command that is being checked, linked to those above it.
struct Level {
  CommandType type;
  const Declaration& declaration;
  const Level* above;

  [[noreturn]] void raise(const char* fault) const {
    throw DeclarationError("The command \"" + declaration.typeName + "\" " + fault);
  }
};

std::string nameOf(const Declaration& declaration) {
  const auto& declared = declaration.configuration.commandName;
  return declared ? *declared : convertedToSnakeCase(declaration.typeName);
}

void check(const Level& level, ArgumentSet& arguments);

void checkChildren(const Level& level, const std::vector<CommandType>& children, ArgumentSet& arguments) {
  for (const CommandType child : children) {
    // A command further up would be as endless as the command itself.
    for (const Level* each = &level; each != nullptr; each = each->above) {
      if (child == each->type) each->raise("can't have itself as its own subcommand.");
    }
    check({child, child.declaration(), &level}, arguments);
  }
}

void check(const Level& level, ArgumentSet& arguments) {
  const CommandConfiguration& configuration = level.declaration.configuration;
  bool hasChildren = false, hasDefault = !configuration.defaultSubcommand;
  const auto look = [&](const std::vector<CommandType>& children) {
    const auto isDefault = [&](CommandType child) { return child == configuration.defaultSubcommand; };
    hasChildren = hasChildren || !children.empty();
    hasDefault = hasDefault || std::any_of(children.begin(), children.end(), isDefault);
    checkChildren(level, children, arguments);
  };
  look(configuration.subcommands);
  for (const CommandGroup& group : configuration.groupedSubcommands) look(group.subcommands);

  const auto& aliases = configuration.aliases;
  if (!aliases.empty() &&
      std::find(aliases.begin(), aliases.end(), nameOf(level.declaration)) != aliases.end()) {
    level.raise("can't have an alias with the same name as the command itself.");
  }
  if (!hasDefault) {
    throw DeclarationError("The default subcommand of the command \"" + level.declaration.typeName +
                           "\" must be one of its subcommands.");
  }
  if (!hasChildren && !level.declaration.hasRun) level.raise("has neither a run nor subcommands.");
  level.declaration.declareArguments(arguments);
}

}  // namespace

CommandNode::CommandNode(CommandType commandType, const CommandNode* above)
    : type(commandType),
      declaration(commandType.declaration()),
      parent(above),
      commandName(nameOf(declaration)) {}

const std::vector<std::unique_ptr<CommandNode>>& CommandNode::children() const {
  if (nodes) return *nodes;
  nodes.emplace();
  const auto add = [&](CommandType child) { nodes->push_back(std::make_unique<CommandNode>(child, this)); };
  for (const CommandType child : configuration().subcommands) add(child);
  for (const CommandGroup& group : configuration().groupedSubcommands) {
    for (const CommandType child : group.subcommands) add(child);
  }
  if (parent == nullptr && !nodes->empty()) add(ArgumentParser::type<HelpCommand>());
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

CommandTree::CommandTree(CommandType root) : rootNode(root, nullptr) {
  checkDeclarations();
}

void CommandTree::checkDeclarations() const {
  ArgumentSet arguments{.onlyChecks = true};
  check({rootNode.type, rootNode.declaration, nullptr}, arguments);
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
