#include "ArgumentParser/dump/MakeToolInfo.h"

#include <algorithm>
#include <iterator>

#include "ArgumentParser/declarations/BuiltIns.h"

namespace ArgumentParser {
namespace {

std::string kindText(Name::Kind kind) {
  switch (kind) {
    case Name::Kind::long_:
      return "long";
    case Name::Kind::short_:
      return "short";
    default:
      return "longWithSingleDash";
  }
}

std::string strategyText(ParsingStrategy strategy) {
  constexpr const char* texts[] = {"default",        "scanningForValue",  "unconditional",
                                   "upToNextOption", "allRemainingInput", "postTerminator",
                                   "allUnrecognized"};
  return texts[static_cast<std::size_t>(strategy)];
}

std::optional<CompletionKindV0> completionInfo(const CompletionKind& completion) {
  if (completion.kind == CompletionKind::Kind::default_) return std::nullopt;
  constexpr const char* names[] = {"default",      "list",   "file",        "directory",
                                   "shellCommand", "custom", "customAsync", "customDeprecated"};
  return CompletionKindV0{names[static_cast<std::size_t>(completion.kind)], completion.texts};
}

NameInfoV0 nameInfo(const Name& name) {
  return {kindText(name.kind), name.text};
}

ArgumentInfoV0 argumentInfo(const ArgumentDefinition& definition) {
  ArgumentInfoV0 info;
  info.kind = definition.isPositional() ? "positional" : definition.isFlag() ? "flag" : "option";
  info.shouldDisplay = definition.isVisible(Visibility::default_);
  info.sectionTitle = definition.help.parentTitle;
  info.isOptional = definition.help.isOptional;
  info.isRepeating = definition.help.isRepeating;
  info.parsingStrategy = strategyText(definition.parsingStrategy);
  std::transform(definition.names.begin(), definition.names.end(), std::back_inserter(info.names), nameInfo);
  if (!definition.names.empty()) info.preferredName = nameInfo(preferredName(definition.names));
  info.valueName = definition.valueName();
  info.defaultValue = definition.help.defaultValue;
  info.allValues = definition.help.allValueStrings;
  for (const auto& [value, text] : definition.help.discussion.values) {
    if (!text.empty()) info.allValueDescriptions.emplace(value, text);
  }
  info.completionKind = completionInfo(definition.completion);
  info.abstract = definition.help.abstract;
  info.discussion = definition.help.discussion.text;
  return info;
}

/// Adds a further flag of the same value to the record of a composite flag.
void merge(ArgumentInfoV0& info, const ArgumentInfoV0& further) {
  info.names.insert(info.names.end(), further.names.begin(), further.names.end());
  if (info.preferredName->kind == "short" && further.preferredName->kind != "short") {
    info.preferredName = further.preferredName;
  }
  if (!info.defaultValue) info.defaultValue = further.defaultValue;
  if (info.abstract.empty()) info.abstract = further.abstract;
  if (info.discussion.empty()) info.discussion = further.discussion;
}

std::vector<ArgumentInfoV0> argumentInfos(const CommandStack& stack) {
  std::vector<ArgumentDefinition> definitions = stack.back()->arguments().content;
  for (ArgumentDefinition& builtIn : builtInDefinitions(stack)) definitions.push_back(std::move(builtIn));
  std::vector<ArgumentInfoV0> infos;
  const ArgumentDefinition* previous = nullptr;
  for (const ArgumentDefinition& definition : definitions) {
    const bool continues =
        definition.help.isComposite && previous != nullptr && previous->key == definition.key;
    if (continues) {
      merge(infos.back(), argumentInfo(definition));
    } else {
      infos.push_back(argumentInfo(definition));
    }
    previous = &definition;
  }
  return infos;
}

CommandInfoV0 commandInfo(const CommandStack& stack) {
  const CommandNode& node = *stack.back();
  CommandInfoV0 info;
  if (const auto& above = stack.front()->configuration().superCommandName)
    info.superCommands.push_back(*above);
  for (const CommandNode* each : stack) {
    if (each != &node) info.superCommands.push_back(each->name());
  }
  info.shouldDisplay = node.configuration().shouldDisplay;
  info.commandName = node.name();
  info.aliases = node.configuration().aliases;
  info.abstract = node.configuration().abstract;
  info.discussion = node.configuration().discussion;
  if (const CommandNode* child = node.defaultSubcommand()) info.defaultSubcommand = child->name();
  for (const auto& child : node.children()) {
    if (isHelpCommand(*child)) continue;
    CommandStack below = stack;
    below.push_back(child.get());
    info.subcommands.push_back(commandInfo(below));
  }
  info.arguments = argumentInfos(stack);
  return info;
}

}  // namespace

ToolInfoV0 makeToolInfo(const CommandStack& stack) {
  ToolInfoV0 info{0, commandInfo(stack)};
  const CommandNode help(type<HelpCommand>(), stack.back());
  CommandStack below = stack;
  below.push_back(&help);
  info.command.subcommands.push_back(commandInfo(below));
  return info;
}

}  // namespace ArgumentParser
