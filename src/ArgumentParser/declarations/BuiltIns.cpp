#include "ArgumentParser/declarations/BuiltIns.h"

#include <algorithm>

namespace ArgumentParser {

std::vector<Name> helpNames(const CommandStack& stack, Visibility visibility) {
  std::vector<Name> names{Name::makeShort("h"), Name::makeLong("help")};
  for (const CommandNode* node : stack) {
    if (const auto& own = node->configuration().helpNames) names = own->makeNames("help");
  }
  if (visibility == Visibility::default_) return names;
  std::erase_if(names, [](const Name& name) { return name.isShort(); });
  for (Name& name : names) name.text += "-hidden";
  return names;
}

std::optional<Version> version(const CommandStack& stack) {
  std::optional<Version> result;
  for (const CommandNode* node : stack) {
    if (!node->configuration().version.isEmpty()) result = node->configuration().version;
  }
  return result;
}

std::vector<ArgumentDefinition> builtInDefinitions(const CommandStack& stack) {
  std::vector<ArgumentDefinition> result;
  const auto add = [&](std::vector<Name> names, const char* key, const char* abstract) {
    ArgumentDefinition definition;
    definition.key = {key, {"_built-in"}};
    definition.names = std::move(names);
    definition.help.isOptional = true;
    definition.help.abstract = abstract;
    result.push_back(std::move(definition));
  };
  if (version(stack)) add({Name::makeLong("version")}, "version", "Show the version.");
  if (auto names = helpNames(stack); !names.empty()) add(std::move(names), "help", "Show help information.");
  return result;
}

bool isHelpCommand(const CommandNode& node) {
  return node.type == type<HelpCommand>();
}

Declaration HelpCommand::declaration() {
  return command<HelpCommand>({.commandName = "help",
                               .abstract = "Show subcommand help information.",
                               .helpNames = NameSpecification::none()},
                              [](Arguments<HelpCommand>& it) {
                                it.argument(&HelpCommand::subcommands, "subcommands");
                                // `help --help` asks for nothing more than `help`.
                                it.flag(&HelpCommand::help, "help",
                                        {.help = ArgumentHelp::private_(), .name = shortAndLong});
                              });
}

}  // namespace ArgumentParser
