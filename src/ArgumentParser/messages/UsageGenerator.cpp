#include "ArgumentParser/messages/UsageGenerator.h"

#include <algorithm>
#include <vector>

#include "ArgumentParser/declarations/BuiltIns.h"
#include "ArgumentParser/messages/TextLayout.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

constexpr std::size_t mostSynopses = 12;

/// " <value>", or " [<value>]" if it may be left out; empty for a flag.
std::string valuePart(const ArgumentDefinition& definition) {
  switch (definition.update) {
    case ArgumentDefinition::Update::nullary:
      return {};
    case ArgumentDefinition::Update::optionalUnary:
      return " [<" + definition.valueName() + ">]";
    default:
      return " <" + definition.valueName() + ">";
  }
}

std::string baseSynopsis(const ArgumentDefinition& definition) {
  if (definition.isPositional()) return "<" + definition.valueName() + ">";
  return preferredName(definition.names).synopsisString() + valuePart(definition);
}

std::optional<std::string> markedSynopsis(const ArgumentDefinition& definition, bool isOptional) {
  if (!definition.isVisible(Visibility::default_)) return std::nullopt;
  std::string result = baseSynopsis(definition);
  if (definition.help.isRepeating) result += " ...";
  if (isOptional) result = "[" + result + "]";
  if (definition.parsingStrategy == ParsingStrategy::postTerminator) result = "-- " + result;
  return result;
}

std::vector<std::string> synopses(const ArgumentSet& set, bool onlyNeeded) {
  std::vector<std::string> result;
  for (const ArgumentDefinition& definition : set.content) {
    if (onlyNeeded && !definition.isPositional() && definition.help.isOptional) continue;
    if (auto text = synopsis(definition)) result.push_back(*std::move(text));
  }
  return result;
}

}  // namespace

std::optional<std::string> synopsis(const ArgumentDefinition& definition) {
  return markedSynopsis(definition, definition.help.isOptional);
}

std::optional<std::string> synopsisForError(const ArgumentDefinition& definition) {
  return markedSynopsis(definition, false);
}

std::string longSynopsis(const ArgumentDefinition& definition) {
  if (definition.isPositional()) return baseSynopsis(definition);
  std::vector<Name> names = definition.names;
  std::stable_partition(names.begin(), names.end(), [](const Name& name) { return name.isShort(); });
  std::vector<std::string> texts;
  for (const Name& name : names) texts.push_back(name.synopsisString());
  return text::joined(texts, ", ") + valuePart(definition);
}

std::string usage(const CommandStack& stack) {
  const CommandNode& command = *stack.back();
  if (const auto& declared = command.configuration().usage) return *declared;
  std::string result = toolName(stack);
  const auto all = synopses(command.arguments(), false);
  if (all.size() <= mostSynopses) {
    if (!all.empty()) result += " " + text::joined(all, " ");
  } else {
    const auto needed = synopses(command.arguments(), true);
    if (needed.empty() || needed.size() > mostSynopses) {
      result += " <options>";
    } else {
      result += " [<options>] " + text::joined(needed, " ");
    }
  }
  const bool hasChildren = std::any_of(command.children().begin(), command.children().end(),
                                       [](const auto& child) { return !isHelpCommand(*child); });
  if (hasChildren) result += " <subcommand>";
  return result;
}

std::string usageMessage(const CommandStack& stack) {
  const std::string text = usage(stack);
  return text.empty() ? text : hangingIndented("Usage: ", text);
}

}  // namespace ArgumentParser
