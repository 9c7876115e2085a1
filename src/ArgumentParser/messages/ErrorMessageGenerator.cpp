#include "ArgumentParser/messages/ErrorMessageGenerator.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "ArgumentParser/completion/CompletionShell.h"
#include "ArgumentParser/messages/UsageGenerator.h"
#include "text/TextError.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

using namespace parser_error;

constexpr std::size_t greatestSuggestedDistance = 3;

std::string quoted(const std::string& text) {
  return "'" + text + "'";
}

/// "--name <value>", with the value only if the name belongs to a definition that takes one.
std::string nameWithValue(const ArgumentSet& set, const Name& name) {
  const ArgumentDefinition* definition = set.find(name);
  return name.synopsisString() + (definition != nullptr ? " <" + definition->valueName() + ">" : "");
}

std::string missingValue(const ArgumentSet& set, const Name& name) {
  return "Missing value for '" + nameWithValue(set, name) + "'";
}

std::string unknownOption(const ArgumentSet& set, const Name& typed) {
  const std::string text = typed.synopsisString();
  std::string message = "Unknown option '" + text + "'";
  if (typed.isShort()) return message;
  const auto length = static_cast<std::ptrdiff_t>(text::clusterCount(text));
  std::string best;
  std::size_t bestDistance = greatestSuggestedDistance + 1;
  for (const ArgumentDefinition& definition : set.content) {
    for (const Name& name : definition.names) {
      if (name.isShort()) continue;
      const std::string known = name.synopsisString();
      // The distance is at least the difference of the lengths; that spares a huge input the full
      // computation.
      const auto difference = std::abs(static_cast<std::ptrdiff_t>(text::clusterCount(known)) - length);
      if (static_cast<std::size_t>(difference) >= bestDistance) continue;
      const std::size_t distance = editDistance(known, text);
      if (distance >= bestDistance) continue;
      bestDistance = distance;
      best = known;
    }
  }
  return best.empty() ? message : message + ". Did you mean '" + best + "'?";
}

std::string place(const Index& origin, const std::vector<std::string>& input) {
  const std::string& typed = input[origin.inputIndex];
  if (origin.isComplete()) return "flag " + quoted(typed);
  const auto members = text::clusters(std::string_view(typed).substr(1));
  return "flag " + quoted(std::string(members[*origin.subIndex])) + " in " + quoted(typed);
}

std::string noValue(const ArgumentSet& set, const InputKey& key) {
  std::vector<std::string> synopses;
  for (const ArgumentDefinition& definition : set.content) {
    if (definition.key != key) continue;
    if (const auto text = synopsisForError(definition)) synopses.push_back(*text);
  }
  if (synopses.empty()) {
    return "No value set for non-argument var " + key.name +
           ". Replace with a static variable, or let constant.";
  }
  if (synopses.size() == 1) return "Missing expected argument " + quoted(synopses.front());
  return "Missing one of: " + quoted(text::joined(synopses, "', '"));
}

std::string valueList(const std::vector<std::string>& values) {
  if (values.empty()) return {};
  if (values.size() >= 6) {
    std::string result = ". Please provide one of the following:";
    for (const std::string& value : values) result += "\n  - " + value;
    return result;
  }
  std::vector<std::string> texts;
  std::transform(values.begin(), values.end(), std::back_inserter(texts), quoted);
  if (texts.size() <= 2) return ". Please provide one of " + text::joined(texts, " and ") + ".";
  const std::string last = texts.back();
  texts.pop_back();
  return ". Please provide one of " + text::joined(texts, ", ") + " or " + last + ".";
}

std::string badValue(const ArgumentSet& set, const UnableToParseValue& error) {
  const ArgumentDefinition* definition = set.find(error.key);
  std::string target;
  if (error.name) target = error.name->synopsisString();
  if (definition != nullptr) {
    target += (target.empty() ? "<" : " <") + definition->valueName() + ">";
  }
  const std::string suffix = error.reason            ? ": " + *error.reason
                             : definition != nullptr ? valueList(definition->help.allValueStrings)
                                                     : std::string();
  const std::string message = "The value " + quoted(error.value) + " is invalid";
  return target.empty() ? message + "." + suffix : message + " for " + quoted(target) + suffix;
}

std::string unsupportedShell(const UnsupportedShell& error) {
  std::vector<std::string> shells;
  for (const CompletionShell shell : allShells) shells.emplace_back(traits(shell).name);
  return (error.shell ? "Can't generate completion scripts for " + quoted(*error.shell) + "."
                      : std::string("Can't autodetect a supported shell.")) +
         "\nPlease use --generate-completion-script=<shell> with one of:\n    " + text::joined(shells, " ");
}

struct Messages {
  const ArgumentSet& set;

  std::string operator()(const UnknownOption& e) const { return unknownOption(set, e.name); }
  std::string operator()(const InvalidOption& e) const { return "Invalid option: " + e.text; }
  std::string operator()(const NonAlphanumericShortOption& e) const {
    return "Invalid option: -" + e.character;
  }
  std::string operator()(const MissingValueForOption& e) const { return missingValue(set, e.name); }
  std::string operator()(const MissingValueOrUnknownCompositeOption& e) const {
    return missingValue(set, e.name) + "\n   or: " + unknownOption(set, e.composite) + " in " +
           quoted(e.composite.synopsisString());
  }
  std::string operator()(const UnexpectedValueForOption& e) const {
    return "The option " + quoted(e.name.synopsisString()) + " does not take any value, but " +
           quoted(e.value) + " was specified.";
  }
  std::string operator()(const UnexpectedExtraValues& e) const {
    std::vector<std::string> texts;
    for (const auto& [origin, value] : e.values) texts.push_back(value);
    if (texts.size() == 1) return "Unexpected argument " + quoted(texts.front());
    return std::to_string(texts.size()) + " unexpected arguments: " + quoted(text::joined(texts, "', '"));
  }
  std::string operator()(const DuplicateExclusiveValues& e) const {
    return "Value to be set with " + place(e.duplicate, e.originalInput) + " had already been set with " +
           place(e.previous, e.originalInput);
  }
  std::string operator()(const NoValue& e) const { return noValue(set, e.key); }
  std::string operator()(const UnableToParseValue& e) const { return badValue(set, e); }
  std::string operator()(const UserValidationError& e) const { return e.message; }
  std::string operator()(const UserError& e) const { return e.description; }
  std::string operator()(const NotParentCommand& e) const {
    return "Command " + quoted(e.command) + " is not a parent of the current command.";
  }
  std::string operator()(const MissingSubcommand&) const { return "Missing required subcommand."; }
  std::string operator()(const NotImplemented&) const {
    return "Internal error. Parsing command-line arguments hit unimplemented code path.";
  }
  std::string operator()(const InvalidState&) const {
    return "Internal error. Invalid state while parsing command-line arguments.";
  }
  std::string operator()(const UnsupportedShell& e) const { return unsupportedShell(e); }
};

/// "label  abstract", if there is an abstract.
std::string helpLine(const ArgumentDefinition* definition, const std::string& label) {
  if (definition == nullptr || definition->help.abstract.empty()) return {};
  return label + "  " + definition->help.abstract;
}

}  // namespace

std::string ErrorMessageGenerator::makeErrorMessage() const {
  return std::visit(Messages{set}, parserError.error);
}

std::string ErrorMessageGenerator::makeHelpMessage() const {
  if (const auto* missing = parserError.as<MissingValueForOption>()) {
    return helpLine(set.find(missing->name), nameWithValue(set, missing->name));
  }
  if (const auto* none = parserError.as<NoValue>()) {
    for (const ArgumentDefinition& definition : set.content) {
      const auto label = definition.key == none->key ? synopsisForError(definition) : std::nullopt;
      if (label) return helpLine(&definition, *label);
    }
    return {};
  }
  if (const auto* bad = parserError.as<UnableToParseValue>()) {
    const ArgumentDefinition* definition = set.find(bad->key);
    if (definition == nullptr) return {};
    const std::string value = "<" + definition->valueName() + ">";
    return helpLine(definition, bad->name ? bad->name->synopsisString() + " " + value : value);
  }
  return {};
}

std::string description(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& known) {
    return text::errorText(known);
  } catch (...) {
    return "unknown error";
  }
}

std::size_t editDistance(std::string_view a, std::string_view b) {
  auto from = text::clusters(a), to = text::clusters(b);
  const auto prefix = std::mismatch(from.begin(), from.end(), to.begin(), to.end());
  from.erase(from.begin(), prefix.first);
  to.erase(to.begin(), prefix.second);
  while (!from.empty() && !to.empty() && from.back() == to.back()) {
    from.pop_back();
    to.pop_back();
  }
  std::vector<std::size_t> previous(to.size() + 1), current(to.size() + 1);
  std::iota(previous.begin(), previous.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    current[0] = i + 1;
    for (std::size_t j = 0; j < to.size(); ++j) {
      const std::size_t substitution = previous[j] + (from[i] == to[j] ? 0 : 1);
      current[j + 1] = std::min({substitution, previous[j + 1] + 1, current[j] + 1});
    }
    std::swap(previous, current);
  }
  return previous.back();
}

}  // namespace ArgumentParser
