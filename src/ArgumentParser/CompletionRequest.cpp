#include "ArgumentParser/CompletionRequest.h"

#include <algorithm>

#include "ArgumentParser/ArgumentMatcher.h"
#include "ArgumentParser/CompletionScriptParts.h"
#include "platform/Environment.h"
#include "text/Number.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

constexpr const char* scriptOption = "generate-completion-script";

/// The definition that a script names as "--name" or as "positional@" and a number.
const ArgumentDefinition* definitionNamed(const ArgumentSet& set, std::string_view id) {
  constexpr std::string_view positionalPrefix = "positional@";
  if (!id.starts_with(positionalPrefix)) {
    const auto found =
        std::find_if(set.content.begin(), set.content.end(), [&](const ArgumentDefinition& each) {
          return !each.names.empty() && preferredName(each.names).synopsisString() == id;
        });
    return found != set.content.end() ? &*found : nullptr;
  }
  auto index = text::decimal<std::size_t>(id.substr(positionalPrefix.size()));
  for (const ArgumentDefinition& each : set.content) {
    if (each.isPositional() && index && (*index)-- == 0) return &each;
  }
  return nullptr;
}

/// The completions, one a line, as the script of `shell` reads them.
std::string response(std::vector<std::string> completions, const std::string& shell) {
  if (shell == "bash") {
    for (std::string& each : completions) each = completions::escapedForWordList(each);
  }
  // zsh's script leaves the last line out.
  if (shell == "zsh") completions.emplace_back("_");
  return text::joined(completions, "\n");
}

}  // namespace

const std::array<std::string_view, 3> CompletionShell::allCases{"zsh", "bash", "fish"};

std::optional<CompletionShell> CompletionShell::named(std::string_view name) {
  if (std::find(allCases.begin(), allCases.end(), name) == allCases.end()) return std::nullopt;
  return CompletionShell{std::string(name)};
}

CompletionShell CompletionShell::chosen(const std::optional<std::string>& given) {
  if (given) {
    if (auto shell = named(*given)) return *shell;
    throw ParserError(parser_error::UnsupportedShell{given});
  }
  const std::string path = platform::environment("SHELL").value_or("");
  if (auto shell = named(path.substr(path.rfind('/') + 1))) return *shell;
  throw ParserError(parser_error::UnsupportedShell{});
}

void checkForCompletionScriptRequest(const SplitArguments& split, const CommandTree& tree) {
  if (tree.root().configuration().superCommandName) return;
  const Name name = Name::makeLong(scriptOption);
  const auto names = [&](const SplitArguments::Element& element) {
    return element.option() != nullptr && element.option()->name == name;
  };
  if (std::none_of(split.elements().begin(), split.elements().end(), names)) return;

  // First as an option; a line that gives it no value may still mean a flag: then the shell is detected.
  using Update = ArgumentDefinition::Update;
  const auto given = [&](Update update) -> std::optional<ParsedValue> {
    ArgumentSet set;
    ArgumentDefinition& option = set.content.emplace_back();
    option.key = {scriptOption};
    option.names = {name};
    option.update = update;
    SplitArguments copy = split;
    ArgumentMatcher matcher(set, copy, nullptr);
    try {
      matcher.matchOptions();
    } catch (const ParserError&) {
      return std::nullopt;
    }
    return matcher.values.find(option.key)->values.back();
  };
  if (const auto shell = given(Update::unary)) {
    throw ParserError(parser_error::CompletionScriptRequested{shell->text()});
  }
  if (given(Update::nullary)) throw ParserError(parser_error::CompletionScriptRequested{});
}

void checkForCompletionCall(const std::vector<std::string>& arguments, const CommandTree& tree) {
  if (arguments.empty() || arguments.front() != "---completion") return;
  const ParserError invalid{parser_error::InvalidState{}};
  const CommandNode* node = &tree.root();
  std::size_t at = 1;
  for (; at < arguments.size() && arguments[at] != "--"; ++at) {
    node = node->child(arguments[at]);
    if (node == nullptr) throw invalid;
  }
  if (++at >= arguments.size()) throw invalid;
  const ArgumentDefinition* definition = definitionNamed(node->arguments(), arguments[at++]);
  if (definition == nullptr || !definition->completion.function) throw invalid;

  std::size_t wordIndex = 0, cursorIndex = 0;
  if (definition->completion.kind != CompletionKind::Kind::customDeprecated) {
    for (std::size_t* index : {&wordIndex, &cursorIndex}) {
      const auto number = at < arguments.size() ? text::decimal<std::size_t>(arguments[at++]) : std::nullopt;
      if (!number) throw invalid;
      *index = *number;
    }
  }
  std::vector<std::string> words(arguments.begin() + static_cast<std::ptrdiff_t>(at), arguments.end());
  const std::string shell = platform::environment("SAP_SHELL").value_or("");
  // fish's script stands two quotes in for the empty word at the cursor.
  if (shell == "fish" && wordIndex < words.size() && words[wordIndex] == "''") words[wordIndex].clear();
  throw ParserError(parser_error::CompletionScriptCustomResponse{
      response(definition->completion.function(words, wordIndex, cursorIndex), shell)});
}

}  // namespace ArgumentParser
