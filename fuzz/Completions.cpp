// Any texts in the declaration of a command line: help, value names, words to offer, extensions, shell
// commands. In the completion scripts none of them gets out of its quotes: what the shell takes for its own
// is the same as with harmless texts in their places, and each text comes out of its quotes as it was. The
// dump, from which scripts may be made elsewhere, reads back as the same declaration.
#include <algorithm>

#include "ArgumentParser/ToolInfo.h"
#include "ArgumentParser/completion/CompletionShell.h"
#include "support/Fuzz.h"
#include "text/Unicode.h"

namespace {

using namespace ArgumentParser;
using fuzz::expect;

/// A script as its shell reads it: its own text with each stretch of quoted text as one "\1", and what those
/// stretches say.
struct Reading {
  std::string bare;
  std::vector<std::string> quoted;
};

/// Reads the quoting of a shell: bash and zsh, or fish. Broken quoting ends the process.
class Reader {
 public:
  Reader(std::string_view script, bool isFish) : text(script), fish(isFish) {}

  Reading read() {
    while (at < text.size()) step();
    expect(open.empty(), "every quote is closed", text);
    return std::move(result);
  }

 private:
  char next() {
    expect(at < text.size(), "every quote is closed", text);
    return text[at++];
  }
  bool follows(char expected) const { return at < text.size() && text[at] == expected; }
  void startQuoted() {
    if (result.bare.ends_with('\1')) return;
    result.bare += '\1';
    result.quoted.emplace_back();
  }

  /// Within double quotes the scripts have nothing but their own text, and commands that they call.
  void step() {
    const std::size_t plainEnd = std::min(text.find_first_of("\\'\"$#()", at), text.size());
    result.bare += text.substr(at, plainEnd - at);
    at = plainEnd;
    if (at == text.size()) return;
    const bool isWithinQuotes = !open.empty() && open.back() == '"';
    const char each = next();
    if (each == '\\') {
      startQuoted();
      result.quoted.back() += next();
    } else if (each == '\'' && !isWithinQuotes) {
      singleQuoted(fish);
    } else if (each == '$' && !fish && !isWithinQuotes && follows('\'')) {
      ++at;
      singleQuoted(true);
    } else if (each == '#' && !isWithinQuotes && startsWord()) {
      at = std::min(text.find('\n', at), text.size());
    } else {
      if (each == '"') isWithinQuotes ? open.pop_back() : open.push_back('"');
      if (each == '(' && (!isWithinQuotes || result.bare.ends_with('$'))) open.push_back('(');
      // The one after a case's label has no counterpart.
      if (each == ')' && !isWithinQuotes && !open.empty()) open.pop_back();
      result.bare += each;
    }
  }

  bool startsWord() const {
    return result.bare.empty() || result.bare.ends_with('\n') || result.bare.ends_with(' ');
  }

  void singleQuoted(bool hasEscapes) {
    startQuoted();
    std::string& said = result.quoted.back();
    for (char each; (each = next()) != '\'';) {
      if (hasEscapes && each == '\\') {
        each = next();
        // fish leaves the backslash before all but these two.
        if (fish && each != '\\' && each != '\'') said += '\\';
        if (!fish && each == 'n') each = '\n';
      }
      said += each;
    }
  }

  std::string_view text;
  bool fish;
  std::size_t at = 0;
  std::string open;
  Reading result;
};

using Shell = CompletionShell;

std::string scriptOf(Shell shell, const CommandInfoV0& root) {
  return traits(shell).script(root);
}

/// What the completion system reads in a quoted stretch: the words of a list, the parts of an option as zsh
/// wants it told. How to cut it up is judged by `model`, the stretch with harmless texts.
std::vector<std::string> partsOf(Shell shell, const std::string& stretch, const std::string& model) {
  std::vector<std::string> parts(1);
  if (shell == Shell::fish) {
    // A list of words has quotes of its own; anything else is taken as it is.
    if (model.find('\'') == model.npos) return {stretch};
    const Reading words = Reader(stretch, true).read();
    auto said = words.quoted.begin();
    for (const char each : words.bare) {
      if (each == ' ')
        parts.emplace_back();
      else
        parts.back() += each == '\1' ? *said++ : std::string(1, each);
    }
    return parts;
  }
  const bool hasDescription = shell == Shell::zsh && model.find('[') < model.find(':');
  for (std::size_t i = 0; i < stretch.size(); ++i) {
    const char each = stretch[i];
    const bool isBracket = hasDescription && parts.size() < 3 && (each == '[' || each == ']');
    if (each == '\\' && i + 1 < stretch.size())
      parts.back() += stretch[++i];
    else if (shell == Shell::bash ? each == '\n' : each == ':' || isBracket)
      parts.emplace_back();
    else if (shell == Shell::bash && std::string_view("'\"$`{}~<>").find(each) != std::string_view::npos)
      parts.back() += "what bash expands in the words it offers";
    else
      parts.back() += each;
  }
  return parts;
}

/// A declaration made of an input, with its texts or with harmless ones.
struct Model {
  explicit Model(bool isHostile) : hostile(isHostile) {}

  /// Adds what a piece stands for: letters for the kind and for what the text is, and the text.
  void add(fuzz::Input piece) {
    const std::size_t kind = piece.choice(5), field = piece.choice(5);
    std::vector<std::string> given;
    for (const std::string_view each : text::split(piece.rest, '\x1f'))
      given.push_back(take(std::string(each)));
    if (kind == 4) return addCommand(given.front());
    ArgumentInfoV0 argument{.kind = kind == 3 ? "positional" : kind == 2 ? "flag" : "option"};
    argument.isOptional = true;
    argument.isRepeating = kind == 1;
    const NameInfoV0 name{"long", "name" + std::to_string(root.arguments.size())};
    argument.valueName = name.name;
    if (kind != 3) argument.names = {name}, argument.preferredName = name;
    if (field == 0) argument.abstract = given.front();
    if (field == 1) argument.valueName = given.front();
    if (field == 2) argument.completionKind = {"list", given};
    if (field == 3) argument.completionKind = {"file", given};
    if (field == 4) argument.completionKind = {"shellCommand", {given.front()}};
    root.arguments.push_back(std::move(argument));
  }

  CommandInfoV0 root{.commandName = "tool"};
  std::vector<std::string> texts;

 private:
  void addCommand(const std::string& abstract) {
    CommandInfoV0 command{.superCommands = {"tool"},
                          .commandName = "sub" + std::to_string(root.subcommands.size())};
    command.abstract = abstract;
    root.subcommands.push_back(std::move(command));
  }

  std::string take(std::string text) {
    // No shell knows NUL, and words that are offered stand one on a line.
    std::erase_if(text, [](char each) { return each == '\0' || each == '\n'; });
    text = text::repairedUTF8(text);
    if (!hostile && !text.empty()) text = "harmless " + std::to_string(texts.size());
    return texts.emplace_back(text);
  }

  bool hostile;
};

/// The parts of both stretches are the same but for the texts, each in its place. What a text is within a
/// part, code of the declaration's own or a pattern, is not judged.
void compare(Shell shell, const std::string& stretch, const std::string& model, const Model& hostile,
             const Model& harmless) {
  const auto said = partsOf(shell, stretch, model), meant = partsOf(shell, model, model);
  const auto place = [&](const std::string& part) {
    return std::find(harmless.texts.begin(), harmless.texts.end(), part) - harmless.texts.begin();
  };
  const auto isText = [&](const std::string& part) {
    return std::size_t(place(part)) < harmless.texts.size();
  };
  const auto holdsText = [&](const std::string& part) {
    return !isText(part) && part.find("harmless ") != part.npos;
  };
  if (said.size() != meant.size() && std::any_of(meant.begin(), meant.end(), holdsText)) return;
  expect(said.size() == meant.size(), "a text is one part", stretch);
  for (std::size_t i = 0; i < meant.size(); ++i) {
    const std::string& expected = isText(meant[i]) ? hostile.texts[std::size_t(place(meant[i]))] : meant[i];
    // A command is handed on as it is, so its own backslashes stand in it.
    expect(said[i] == expected || stretch == expected || holdsText(meant[i]),
           "a text comes out of its quotes as it was", stretch);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  Model hostile(true), harmless(false);
  for (const std::string& piece : fuzz::Input(data, size).pieces()) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(piece.data());
    hostile.add({bytes, piece.size()});
    harmless.add({bytes, piece.size()});
  }
  for (const Shell shell : allShells) {
    const std::string script = scriptOf(shell, hostile.root);
    const Reading read = Reader(script, shell == Shell::fish).read();
    const Reading meant = Reader(scriptOf(shell, harmless.root), shell == Shell::fish).read();
    expect(read.bare == meant.bare && read.quoted.size() == meant.quoted.size(),
           "no text gets out of its quotes", script);
    for (std::size_t i = 0; i < meant.quoted.size(); ++i)
      compare(shell, read.quoted[i], meant.quoted[i], hostile, harmless);
  }
  const ToolInfoV0 info{0, hostile.root};
  expect(readToolInfo(dumpText(info)) == info, "the dump reads back", dumpText(info));
  return 0;
}
