#include "ArgumentParser/messages/HelpGenerator.h"

#include <algorithm>

#include "ArgumentParser/declarations/BuiltIns.h"
#include "ArgumentParser/messages/TextLayout.h"
#include "ArgumentParser/messages/UsageGenerator.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

using Section = HelpGenerator::Section;
using Element = HelpGenerator::Section::Element;

constexpr int helpIndent = 2;
constexpr int labelColumnWidth = 26;
constexpr int discussionIndent = 8;
constexpr int valueDescriptionIndent = 28;

std::string blanks(int count) {
  return std::string(static_cast<std::size_t>(count), ' ');
}

/// "(values: a, b; default: x)"; empty if there is nothing to say.
std::string valueNote(const ArgumentDefinition& definition) {
  std::vector<std::string> values;
  if (!definition.help.discussion.isEnumerated()) values = definition.help.allValueStrings;
  std::erase_if(values, [](const std::string& value) { return value.empty(); });
  std::vector<std::string> notes;
  if (!values.empty()) notes.push_back("values: " + text::joined(values, ", "));
  if (const auto& value = definition.help.defaultValue) {
    const bool asFlag = definition.update == ArgumentDefinition::Update::optionalUnary;
    notes.push_back((asFlag ? "default as flag: " : "default: ") + *value);
  }
  return notes.empty() ? std::string() : "(" + text::joined(notes, "; ") + ")";
}

std::string joinedNonEmpty(const std::string& a, const std::string& b, const char* between) {
  return a.empty() || b.empty() ? a + b : a + between + b;
}

Element makeElement(const ArgumentDefinition& definition) {
  return {longSynopsis(definition), joinedNonEmpty(definition.help.abstract, valueNote(definition), " "),
          definition.help.discussion};
}

/// Flags that fill one value, one after the other, are one entry.
Element makeElement(const std::vector<const ArgumentDefinition*>& group) {
  Element result = makeElement(*group.front());
  if (group.size() == 1) return result;
  std::vector<std::string> labels;
  std::string abstract, note;
  for (const ArgumentDefinition* each : group) {
    labels.push_back(longSynopsis(*each));
    if (abstract.empty()) abstract = each->help.abstract;
    if (note.empty()) note = valueNote(*each);
    if (result.discussion.text.empty()) result.discussion.text = each->help.discussion.text;
  }
  result.label = text::joined(labels, "/");
  result.abstract = joinedNonEmpty(abstract, note, " ");
  return result;
}

std::vector<std::vector<const ArgumentDefinition*>> grouped(
    const std::vector<ArgumentDefinition>& definitions, Visibility visibility) {
  std::vector<std::vector<const ArgumentDefinition*>> groups;
  for (const ArgumentDefinition& each : definitions) {
    if (!each.isVisible(visibility)) continue;
    const bool continues = each.help.isComposite && !groups.empty() && groups.back().back()->key == each.key;
    if (!continues) groups.emplace_back();
    groups.back().push_back(&each);
  }
  return groups;
}

/// `label` indented by `indent`, and `description`, which is wrapped and indented, on the same line from the
/// column after the labels, or on the next line if the label is too long. The description's first line
/// starts `hang` columns to the left of its other lines.
std::string besideLabel(const std::string& label, int indent, std::string description, int hang) {
  const std::string start = blanks(indent) + label;
  const std::size_t width = text::clusterCount(start);
  const bool fits = width < labelColumnWidth;
  const std::size_t covered = static_cast<std::size_t>(hang) + (fits ? width : 0);
  description.erase(0, std::min(covered, description.size()));
  return start + (fits ? "" : "\n") + description + "\n";
}

std::string renderedDiscussion(const ArgumentDiscussion& discussion, std::int64_t width) {
  std::string result;
  if (!discussion.text.empty()) result = wrapped(discussion.text, width, discussionIndent) + "\n";
  for (const auto& [value, description] : discussion.values) {
    result += besideLabel(value, discussionIndent, wrapped("- " + description, width, valueDescriptionIndent),
                          valueDescriptionIndent - labelColumnWidth);
  }
  return result;
}

std::string rendered(const Element& element, std::int64_t width) {
  const std::string first =
      element.abstract.empty()
          ? blanks(helpIndent) + element.label + "\n"
          : besideLabel(element.label, helpIndent, wrapped(element.abstract, width, labelColumnWidth), 0);
  return first + renderedDiscussion(element.discussion, width);
}

std::string rendered(const Section& section, std::int64_t width) {
  std::string result = text::uppercased(section.header) + ":\n";
  for (const Element& element : section.elements) result += rendered(element, width);
  return result;
}

}  // namespace

HelpGenerator::HelpGenerator(CommandStack stack, Visibility visibility) : commandStack(std::move(stack)) {
  const CommandConfiguration& configuration = commandStack.back()->configuration();
  abstract = configuration.abstract;
  if (!configuration.discussion.empty()) {
    abstract += (abstract.empty() ? "\n" : "\n\n") + configuration.discussion;
  }
  usage = ArgumentParser::usage(commandStack);
  addArgumentSections(visibility);
  addSubcommandSections();
}

void HelpGenerator::addArgumentSections(Visibility visibility) {
  std::vector<ArgumentDefinition> definitions = commandStack.back()->arguments().content;
  for (ArgumentDefinition& builtIn : builtInDefinitions(commandStack))
    definitions.push_back(std::move(builtIn));

  Section positionals{"Arguments"}, options{"Options"};
  std::vector<Section> titled;
  for (const auto& group : grouped(definitions, visibility)) {
    const ArgumentDefinition& first = *group.front();
    const std::string& title = first.help.parentTitle;
    Section* target = first.isPositional() ? &positionals : &options;
    if (!title.empty()) {
      const auto found = std::find_if(titled.begin(), titled.end(),
                                      [&](const Section& section) { return section.header == title; });
      target = found != titled.end() ? &*found : &titled.emplace_back(Section{title});
    }
    target->elements.push_back(makeElement(group));
  }
  sections.push_back(std::move(positionals));
  std::move(titled.begin(), titled.end(), std::back_inserter(sections));
  sections.push_back(std::move(options));
}

void HelpGenerator::addSubcommandSections() {
  const CommandNode& command = *commandStack.back();
  auto child = command.children().begin();
  const auto addSection = [&](const std::string& header, std::size_t count) {
    Section section{header, {}, true};
    for (; count > 0; --count, ++child) {
      const CommandConfiguration& configuration = (*child)->configuration();
      if (!configuration.shouldDisplay) continue;
      std::string label = (*child)->name();
      for (const std::string& alias : configuration.aliases) label += ", " + alias;
      if (child->get() == command.defaultSubcommand()) label += " (default)";
      section.elements.push_back({label, configuration.abstract});
    }
    if (!section.elements.empty()) sections.push_back(std::move(section));
  };
  addSection("Subcommands", command.configuration().subcommands.size());
  for (const CommandGroup& group : command.configuration().groupedSubcommands) {
    addSection(group.name + " Subcommands", group.subcommands.size());
  }
}

std::string HelpGenerator::rendered(std::optional<std::int64_t> screenWidth) const {
  const std::int64_t width = screenWidth ? *screenWidth : screenSize().columns;
  std::string result;
  if (!abstract.empty()) result += wrapped("OVERVIEW: " + abstract, width, 0) + "\n\n";
  if (!usage.empty()) result += hangingIndented("USAGE: ", usage) + "\n\n";
  std::vector<std::string> texts;
  bool listsSubcommands = false;
  for (const Section& section : sections) {
    if (section.elements.empty()) continue;
    texts.push_back(ArgumentParser::rendered(section, width));
    listsSubcommands = listsSubcommands || section.isSubcommands;
  }
  result += text::joined(texts, "\n");
  if (!listsSubcommands) return result;

  std::string names = toolName(commandStack);
  names.insert(std::min(names.find(' '), names.size()), " help");
  return result + "\n  See '" + names + " <subcommand>' for detailed help.";
}

}  // namespace ArgumentParser
