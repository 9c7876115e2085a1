#include "ArgumentParser/completion/CompletionRequest.h"

#include <algorithm>

#include "ArgumentParser/completion/CompletionShell.h"
#include "ArgumentParser/dump/MakeToolInfo.h"
#include "ArgumentParser/parsing/ArgumentMatcher.h"
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

/// The script that completes the root's command line in the shell.
std::string completionScript(CompletionShell shell, const CommandTree& tree) {
  CommandInfoV0 root = makeToolInfo({&tree.root()}).command;
  // A command without children has no `help` child either.
  if (tree.root().children().empty()) root.subcommands.clear();
  return traits(shell).script(root);
}

}  // namespace

std::optional<Request> completionScriptRequest(const SplitArguments& split, const CommandTree& tree) {
  if (tree.root().configuration().superCommandName) return std::nullopt;
  const Name name = Name::makeLong(scriptOption);
  const auto names = [&](const SplitArguments::Element& element) {
    return element.option() != nullptr && element.option()->name == name;
  };
  if (std::none_of(split.elements().begin(), split.elements().end(), names)) return std::nullopt;

  // It is read as an option first; on a line that gives it no value, it is a flag and the shell is detected.
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
  std::optional<std::string> shellName;
  if (const auto option = given(Update::unary)) {
    shellName = option->text();
  } else if (!given(Update::nullary)) {
    return std::nullopt;
  }
  const CompletionShell shell = chosenShell(shellName);
  return Request{[shell, &tree] { return completionScript(shell, tree); }};
}

std::optional<Request> completionCall(const std::vector<std::string>& arguments, const CommandTree& tree) {
  if (arguments.empty() || arguments.front() != "---completion") return std::nullopt;
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
  const std::string shellName = platform::environment("SAP_SHELL").value_or("");
  if (const auto shell = shellNamed(shellName)) {
    // The deprecated kind of function gets no index, so the empty word at the cursor stays among its words.
    const bool isIndexed = definition->completion.kind != CompletionKind::Kind::customDeprecated;
    for (std::size_t word = 0; word < words.size(); ++word) {
      if ((!isIndexed || word == wordIndex) && words[word] == traits(*shell).emptyWord) words[word].clear();
    }
  }
  return Request{[answers = response(definition->completion.function(words, wordIndex, cursorIndex),
                                     shellName)] { return answers; }};
}

}  // namespace ArgumentParser
