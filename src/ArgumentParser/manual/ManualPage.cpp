// Pages in the macros of mdoc(7), written so that `mandoc -Tlint` finds no fault: a sentence begins a
// line, lines are short, and no section is empty.
#include <algorithm>

#include "ArgumentParser/manual/ManualParts.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

using namespace manual;

constexpr std::size_t lineWidth = 76;

/// `text` escaped so that roff prints it unchanged anywhere in a line.
std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\\') {
      result += "\\e";
    } else if (c == '"') {
      result += "\\(dq";
    } else {
      result += c;
    }
  }
  return result;
}

/// One argument of a macro, which must not be taken for a macro itself or for a delimiter.
std::string word(std::string_view text) {
  std::string result = "\\&" + escaped(text);
  for (std::size_t at = 0; (at = result.find(' ', at)) != std::string::npos; at += 2)
    result.replace(at, 1, "\\ ");
  return result;
}

/// Whether that word ends a sentence.
bool endsSentence(std::string_view each) {
  while (!each.empty() && (each.back() == ')' || each.back() == '\'' || each.back() == '"'))
    each.remove_suffix(1);
  return !each.empty() && (each.back() == '.' || each.back() == '!' || each.back() == '?');
}

/// `text` filled into short lines, each sentence beginning one, each line ended.
std::string filledLines(std::string_view text) {
  std::string result, line;
  const auto end = [&] {
    if (!line.empty()) result += line + "\n";
    line.clear();
  };
  for (const std::string_view each : text::split(text, ' ')) {
    if (each.empty()) continue;
    if (!line.empty() && line.size() + escaped(each).size() > lineWidth) end();
    const bool isControl = line.empty() && (each.front() == '.' || each.front() == '\'');
    line += (line.empty() ? (isControl ? "\\&" : "") : " ") + escaped(each);
    if (endsSentence(each)) end();
  }
  end();
  return result;
}

/// Paragraphs of a text, a macro between them.
std::string paragraphs(std::string_view text) {
  std::string result;
  bool isNew = false;
  for (const std::string_view line : text::split(text, '\n')) {
    if (text::trimmed(line).empty()) {
      isNew = !result.empty();
      continue;
    }
    if (isNew) result += ".Pp\n";
    isNew = false;
    result += filledLines(line);
  }
  return result;
}

std::string flag(const NameInfoV0& name) {
  return "Fl " + word((name.kind == "long" ? "-" : "") + name.name);
}

/// How an argument stands in a synopsis or, with all its names, at the start of its entry.
std::string synopsis(const ArgumentInfoV0& argument, bool withAllNames) {
  std::string value = argument.kind == "flag" ? "" : "Ar " + word(argument.valueName);
  if (argument.kind == "positional") return value;
  std::vector<std::string> texts;
  for (const NameInfoV0& name : argument.names) {
    if (withAllNames || name == argument.preferredName) texts.push_back(flag(name));
  }
  return text::joined(texts, " , ") + (value.empty() ? "" : " " + value);
}

std::string synopsisLine(const ArgumentInfoV0& argument) {
  std::string text = synopsis(argument, false);
  if (argument.isRepeating) text += " No ...";
  if (argument.parsingStrategy == "postTerminator") text = "Fl \\&- " + text;
  return (argument.isOptional ? ".Op " : ".") + text + "\n";
}

std::string nameLine(const CommandInfoV0& command) {
  std::string result =
      ".Nm " + word(command.superCommands.empty() ? command.commandName : command.superCommands.front());
  for (std::size_t i = 1; i < command.superCommands.size(); ++i)
    result += " Cm " + word(command.superCommands[i]);
  if (!command.superCommands.empty()) result += " Cm " + word(command.commandName);
  return result + "\n";
}

std::string synopsisOf(const CommandInfoV0& command) {
  std::string result = nameLine(command);
  for (const ArgumentInfoV0& argument : command.arguments) {
    if (argument.shouldDisplay) result += synopsisLine(argument);
  }
  if (!children(command).empty()) result += ".Op Ar subcommand\n";
  return result;
}

std::string valueList(const ArgumentInfoV0& argument) {
  if (argument.allValueDescriptions.empty()) return {};
  std::string result = ".Bl -tag -width Ds -compact\n";
  for (const std::string& value : argument.allValues) {
    const auto found = argument.allValueDescriptions.find(value);
    result += ".It Cm " + word(value) + "\n";
    if (found != argument.allValueDescriptions.end()) result += filledLines(found->second);
  }
  return result + ".El\n";
}

std::string argumentList(const CommandInfoV0& command) {
  std::string result;
  for (const ArgumentInfoV0* argument : arguments(command)) {
    result += ".It " + synopsis(*argument, true) + "\n" + filledLines(summary(*argument));
    if (!argument->discussion.empty()) result += ".Pp\n" + paragraphs(argument->discussion);
    result += valueList(*argument);
  }
  return result.empty() ? result : ".Bl -tag -width Ds\n" + result + ".El\n";
}

std::string childList(const CommandInfoV0& command) {
  std::string result;
  for (const CommandInfoV0* child : children(command)) {
    result += ".It Cm " + word(child->commandName) + "\n" + filledLines(child->abstract);
  }
  return result.empty() ? result : ".Bl -tag -width Ds\n" + result + ".El\n";
}

/// What is said of a command besides its names: its texts, arguments, and, with `listsChildren`, children.
std::string description(const CommandInfoV0& command, bool listsChildren) {
  std::string result = paragraphs(command.abstract);
  const auto add = [&](const std::string& lead, const std::string& text) {
    if (!text.empty()) result += (result.empty() ? "" : ".Pp\n") + lead + text;
  };
  add("", paragraphs(command.discussion));
  add("The arguments are as follows:\n", argumentList(command));
  if (listsChildren) add("The subcommands are as follows:\n", childList(command));
  return result;
}

/// The commands below one, a subsection each.
std::string subsections(const CommandInfoV0& command) {
  std::string result;
  for (const CommandInfoV0* child : children(command)) {
    result += ".Ss " + escaped(path(*child, " ")) + "\n" + synopsisOf(*child) + ".Pp\n" +
              description(*child, false) + subsections(*child);
  }
  return result;
}

std::string itemLine(const std::string& title, const Block& item) {
  if (title == "ENVIRONMENT") return ".It Ev " + word(item.term) + "\n";
  if (title == "FILES") return ".It Pa " + word(item.term) + "\n";
  return ".It " + word(item.term) + "\n";
}

/// "- name(1)" items as references: sorted, with commas between them.
std::string references(const std::vector<Block>& items) {
  std::string result;
  for (const Block& item : items) {
    const std::size_t open = std::min(item.term.find('('), item.term.size());
    if (!result.empty()) result += " ,\n";
    result += open < item.term.size() ? ".Xr " + escaped(item.term.substr(0, open)) + " " +
                                            item.term.substr(open + 1, item.term.find(')') - open - 1)
                                      : escaped(item.term);
  }
  return result + "\n";
}

std::string section(const ManualTexts::Section& texts) {
  const std::string title = text::uppercased(texts.title);
  const auto parts = blocks(texts.body);
  std::string result = ".Sh " + escaped(title) + "\n";
  if (title == "SEE ALSO") return result + references(parts);
  bool isList = false;
  for (const Block& part : parts) {
    const bool isItem = part.kind == Block::Kind::item;
    if (isList && !isItem) result += ".El\n.Pp\n";
    if (!isList && isItem) result += ".Bl -tag -width Ds\n";
    isList = isItem;
    if (isItem) {
      result += itemLine(title, part) + filledLines(part.text);
    } else if (part.kind == Block::Kind::paragraph) {
      if (!result.ends_with(".Pp\n") && &part != &parts.front()) result += ".Pp\n";
      result += filledLines(part.text);
    } else {
      result += ".Bd -literal -offset indent\n";
      for (const std::string_view line :
           text::split(std::string_view(part.text).substr(0, part.text.size() - 1), '\n')) {
        result += (line.starts_with('.') || line.starts_with('\'') ? "\\&" : "") + escaped(line) + "\n";
      }
      result += ".Ed\n";
    }
  }
  return result + (isList ? ".El\n" : "");
}

/// A section's place by the conventions of mdoc(7); sections of other titles come first.
std::ptrdiff_t place(std::string_view title) {
  constexpr std::string_view titles[] = {"",         "ENVIRONMENT", "FILES",    "EXIT STATUS",
                                         "EXAMPLES", "DIAGNOSTICS", "SEE ALSO", "STANDARDS",
                                         "HISTORY",  "AUTHORS",     "CAVEATS",  "BUGS"};
  const auto found = std::find(std::begin(titles), std::end(titles), text::uppercased(title));
  return found != std::end(titles) ? found - std::begin(titles) : 0;
}

/// The text of NAME: one line, without a full stop at its end.
std::string nameDescription(const CommandInfoV0& command) {
  std::string text = command.abstract.empty() ? path(command, " ") : command.abstract;
  std::replace(text.begin(), text.end(), '\n', ' ');
  while (text.ends_with('.')) text.pop_back();
  return escaped(text);
}

ManualPage page(const CommandInfoV0& command, const ManualOptions& options) {
  const std::string name = path(command, "-");
  std::string text = ".Dd " + options.date + "\n.Dt " + escaped(text::uppercased(name)) + " " +
                     options.section + "\n.Os\n.Sh NAME\n.Nm " + word(name) + "\n.Nd " +
                     nameDescription(command) + "\n.Sh SYNOPSIS\n" + synopsisOf(command) +
                     ".Sh DESCRIPTION\n" + description(command, options.isPageForEach);
  if (!options.isPageForEach && !children(command).empty()) text += ".Sh COMMANDS\n" + subsections(command);
  if (command.superCommands.empty() || !options.isPageForEach) {
    for (const auto& each : options.texts.sections) text += section(each);
  }
  return {name, text};
}

void addPages(std::vector<ManualPage>& pages, const CommandInfoV0& command, const ManualOptions& options) {
  pages.push_back(page(command, options));
  if (!options.isPageForEach) return;
  for (const CommandInfoV0* child : children(command)) addPages(pages, *child, options);
}

}  // namespace

std::vector<ManualPage> manualPages(const ToolInfoV0& info, const ManualOptions& options) {
  ManualOptions ordered = options;
  std::stable_sort(ordered.texts.sections.begin(), ordered.texts.sections.end(),
                   [](const auto& a, const auto& b) { return place(a.title) < place(b.title); });
  std::vector<ManualPage> pages;
  addPages(pages, info.command, ordered);
  return pages;
}

}  // namespace ArgumentParser
