// Requests for completion scripts, and the calls that the scripts make.

#include <gtest/gtest.h>

#include "Outcome.h"
#include "support/Surroundings.h"

namespace ArgumentParser {
namespace {

/// What a custom completion gets.
std::vector<std::string> echoed(const std::vector<std::string>& words, std::size_t word, std::size_t cursor) {
  return {std::to_string(word) + "," + std::to_string(cursor), words.empty() ? "-" : words.back()};
}

struct Pick {
  std::string first, second;
  std::optional<std::string> plain, old;
  static Declaration declaration() {
    return command<Pick>({.aliases = {"choose"}}, [](Arguments<Pick>& it) {
      it.argument(&Pick::first, "first", {.help = ArgumentHelp::hidden()});
      it.argument(&Pick::second, "second", {.completion = CompletionKind::custom(echoed)});
      it.option(&Pick::plain, "plain");
      it.option(&Pick::old, "old",
                {.name = shortAndLong, .completion = CompletionKind::customDeprecated([](const auto& words) {
                                         return std::vector{std::to_string(words.size())};
                                       })});
    });
  }
  void run() {}
};

struct Tool {
  static Declaration declaration() { return command<Tool>({.subcommands = {type<Pick>()}}); }
};
struct PlugIn {
  static Declaration declaration() {
    return command<PlugIn>({.superCommandName = "tool", .subcommands = {type<Pick>()}});
  }
};

struct Case {
  std::string line;
  std::string firstLine;
  std::string shell = "/usr/local/bin/fish";  ///< $SHELL, or $SAP_SHELL for a completion call
};

std::string firstLine(CommandType root, const Case& each) {
  const support::ScopedVariable shell("SHELL", each.shell), calling("SAP_SHELL", each.shell);
  const Outcome found = outcome(root, words(each.line));
  // Its errors are the root's.
  EXPECT_EQ(found.status != 0, found.text.find(" <subcommand>\n  See 'tool ") != std::string::npos)
      << each.line;
  return found.text.substr(0, found.text.find('\n'));
}

TEST(CompletionRequest, ChoosesTheShell) {
  const std::string bash = "#!/bin/bash", zsh = "#compdef tool", invalid = "Error: Invalid option: ---x";
  const std::string fish =
      "function __tool_should_offer_completions_for_flags_or_options -a expected_commands";
  const std::string undetected = "Error: Can't autodetect a supported shell.";
  for (const Case& each : std::vector<Case>{
           {"--generate-completion-script bash", bash},
           {"pick --plain --generate-completion-script=zsh --help", zsh},
           {"--generate-completion-script= zsh", zsh},
           {"--generate-completion-script --json", fish},
           {"--generate-completion-script --help pick", bash, "bash"},
           {"--generate-completion-script bash --generate-completion-script zsh", zsh},
           {"--generate-completion-script --generate-completion-script zsh", fish},
           {"--generate-completion-script -- zsh", fish},
           {"--generate-completion-script", undetected, "/bin/csh"},
           {"--generate-completion-script", undetected, ""},
           {"pick --generate-completion-script csh", "Error: Can't generate completion scripts for 'csh'."},
           {"--generate-completion-script bash ---x", invalid},
           {"-- --generate-completion-script", "Error: Unexpected argument '--generate-completion-script'"},
       }) {
    EXPECT_EQ(firstLine(type<Tool>(), each), each.firstLine) << each.line;
  }
  const Case plugIn{"--generate-completion-script bash",
                    "Error: Unknown option '--generate-completion-script'"};
  EXPECT_EQ(firstLine(type<PlugIn>(), plugIn), plugIn.firstLine);
}

TEST(CompletionRequest, AnswersTheCallsOfTheScripts) {
  const std::string invalid = "Error: Internal error. Invalid state while parsing command-line arguments.";
  for (const Case& each : std::vector<Case>{
           {"---completion pick -- positional@1 1 0 tool pick", "1,0\npick", ""},
           {"---completion choose -- positional@1 9 9", "9,9\n-", ""},
           {"---completion pick -- positional@1 2 0 tool pick ''", "2,0\n", "fish"},
           {"---completion pick -- positional@1 1 0 it's", "1,0\nit's", "fish"},
           {"---completion pick -- positional@1 1 0 $(it's)~<a", "1,0\n\\$(it\\'s)\\~\\<a", "bash"},
           {"---completion pick -- positional@1 1 0 it's", "1,0\nit's\n_", "zsh"},
           {"---completion pick -- --old -- pick", "2", ""},
       }) {
    const support::ScopedVariable calling("SAP_SHELL", each.shell);
    const Outcome found = outcome(type<Tool>(), words(each.line));
    EXPECT_EQ(found.text, each.firstLine) << each.line;
    EXPECT_EQ(found.status, 0);
  }
  for (const std::string line : {"", " pick", " pick --", " nope -- --old", " pick -- -o", " pick -- --plain",
                                 " pick -- positional@0 1 1", " pick -- positional@2 1 1",
                                 " pick -- positional@ 1 1", " pick -- positional@1 1 x"}) {
    EXPECT_EQ(firstLine(type<Tool>(), {"---completion" + line, {}}), invalid) << line;
  }
}

}  // namespace
}  // namespace ArgumentParser
