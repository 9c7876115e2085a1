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
                                         return std::vector{text::joined(words, ",")};
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

TEST(CompletionRequest, ComesToAScriptOrAnErrorOfTheRoot) {
  for (const support::Case& row : support::casesIn(SOURCES "/expected/completion.txt", "=!")) {
    const auto place = row.place();
    auto arguments = words(row.input);
    std::string path = "/usr/local/bin/fish";
    if (arguments.front().starts_with("SHELL=")) {
      path = arguments.front().substr(6);
      arguments.erase(arguments.begin());
    }
    const support::ScopedVariable shell("SHELL", path);
    const End found = outcome(type<Tool>(), arguments);
    found.expect(row);
    EXPECT_EQ(found.status != 0, found.text.find(" <subcommand>\n  See 'tool ") != std::string::npos);
  }
  EXPECT_EQ(outcome(type<PlugIn>(), words("--generate-completion-script bash")).firstLine(),
            "Error: Unknown option '--generate-completion-script'");
}

TEST(CompletionRequest, AnswersTheCallsOfTheScripts) {
  // The shell that calls, what stands behind "---completion", and the answer.
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"", "pick -- positional@1 1 0 tool pick", "1,0\npick"},
      {"", "choose -- positional@1 9 9", "9,9\n-"},
      {"fish", "pick -- positional@1 2 0 tool pick ''", "2,0\n"},
      {"fish", "pick -- positional@1 1 0 it's", "1,0\nit's"},
      {"bash", "pick -- positional@1 1 0 $(it's)~<a", "1,0\n\\$(it\\'s)\\~\\<a"},
      {"zsh", "pick -- positional@1 1 0 it's", "1,0\nit's\n_"},
      {"zsh", "pick -- positional@1 1 0 a\\b\\:c\\", "1,0\na\\\\b\\:c\\\\\n_"},
      {"", "pick -- --old -- pick", "--,pick"},
      {"fish", "pick -- --old tool '' pick", "tool,,pick"},
  };
  for (const auto& [shell, call, answer] : cases) {
    const support::ScopedVariable calling("SAP_SHELL", shell);
    const End found = outcome(type<Tool>(), words(std::string("---completion ") + call));
    EXPECT_EQ(found.text, answer) << call;
    EXPECT_EQ(found.status, 0) << call;
  }
}

}  // namespace
}  // namespace ArgumentParser
