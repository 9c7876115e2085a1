// Help and usage texts: wrapping, layout, sections, and the width of the screen.

#include <gtest/gtest.h>

#include "ArgumentParser/messages/HelpGenerator.h"
#include "ArgumentParser/messages/TextLayout.h"
#include "ArgumentParser/messages/UsageGenerator.h"
#include "Outcome.h"
#include "support/Surroundings.h"

namespace ArgumentParser {

enum class Speed { slow, fast };
enum class Plan { none, breadthFirstly, once };

template <>
struct EnumeratedValues<Speed> {
  static std::vector<EnumeratedValue<Speed>> values() {
    return {{Speed::slow, "slow"}, {Speed::fast, "fast"}};
  }
};
template <>
struct EnumeratedValues<Plan> {
  static std::vector<EnumeratedValue<Plan>> values() {
    return {{Plan::none, "none", "No plan at all, which is how most of us live from day to day"},
            {Plan::breadthFirstly, "breadth-first-ish", "Wide"},
            {Plan::once, "breadth-first-ishy", "Wider"}};
  }
};

namespace {

TEST(Wrapping, CutsAtTheLastBlankThatFits) {
  // A text, the width, the indent, and the lines. A blank just behind the last column is not looked at: the
  // word before it moves on too.
  for (const auto& row : support::rowsIn(SOURCES "/expected/wrapping.json")) {
    EXPECT_EQ(wrapped(row[0], std::stoll(row[1]), std::stoi(row[2])), row[3]) << row[0] << " " << row[1];
  }
  EXPECT_EQ(hangingIndented(": ", "a\nb\n\nc"), ": a\n  b\n\n  c");
  EXPECT_EQ(hangingIndented(": ", "a"), ": a");
}

struct Inner {
  std::string token;
  bool deep = false;
  static void arguments(Arguments<Inner>& it) {
    it.option(&Inner::token, "token", {.help = "Who asks"});
    it.flag(&Inner::deep, "deep", {.help = ArgumentHelp::hidden()});
  }
};

struct Build {
  std::string source;
  std::optional<std::string> target;
  std::vector<std::string> sets, rest;
  double timeout = 0;
  std::optional<Speed> speed;
  std::optional<Plan> plan;
  bool index = false, wide = false, wider = false, secret = false;
  std::optional<Speed> mode;
  int verbose = 0;
  std::optional<std::string> colour;
  Inner inner;

  static Declaration declaration() {
    return command<Build>(
        {.abstract = "Build it",
         .discussion = "Takes its time. Takes even more of it if asked to.\n\n  build --all",
         .version = "3.1"},
        [](auto& it) {
          it.argument(&Build::source, "source", {.help = "From where"});
          it.argument(&Build::target, "target", {.help = {"To where", "Made if it is missing.", "out"}});
          it.option(&Build::sets, "sets",
                    {.help = {"A field", {}, "set"}, .name = NameSpecification::literals({"--set", "-s"})});
          it.option(&Build::timeout, "timeout", {.help = "Patience", .defaultValue = 15.0});
          it.option(&Build::speed, "speed", {.defaultValue = Speed::fast});
          it.option(&Build::plan, "plan",
                    {.help = {"What to do", "Think first."}, .defaultValue = Plan::none});
          it.option(&Build::colour, "colour", {.help = "When", .defaultAsFlag = "always"});
          it.flag(&Build::index, "index",
                  {.help = "Keep an index", .inversion = FlagInversion::prefixedNo, .defaultValue = false});
          it.group(&Build::inner, "inner", {.title = "Who is whö"});
          it.enumeratedFlag(
              &Build::mode, "mode",
              {.cases = {{Speed::slow, "slow"}, {Speed::fast, "fast", shortAndLong, "Second case"}}});
          it.countedFlag(&Build::verbose, "verbose", {.help = "Louder", .name = shortAndLong});
          it.flag(&Build::wide, "wide", {.help = "Label of 23", .name = "--aaaaaaaaaaaaaaaaaaaaa"});
          it.flag(&Build::wider, "wider", {.help = "Label of 24", .name = "--aaaaaaaaaaaaaaaaaaaaaa"});
          it.flag(&Build::secret, "secret", {.help = {"Hush", {}, {}, Visibility::hidden}});
          it.argument(&Build::rest, "rest", {.parsing = ArgumentArrayParsingStrategy::postTerminator});
        });
  }
  void run() {}
};

std::string helpOf(CommandType command, std::int64_t width, Visibility visibility = Visibility::default_) {
  const CommandTree tree(command);
  return HelpGenerator({&tree.root()}, visibility).rendered(width);
}

TEST(Help, LaysOutEveryForm) {
  using support::expectSnapshot;
  expectSnapshot("ArgumentParser/every_form.txt", helpOf(type<Build>(), 60));
  expectSnapshot("ArgumentParser/every_form_narrow.txt", helpOf(type<Build>(), 26));
  expectSnapshot("ArgumentParser/every_form_hidden.txt", helpOf(type<Build>(), 80, Visibility::hidden));
  EXPECT_EQ(helpOf(type<Build>(), 0).find("USAGE: build"), 2u);
}

// ---- Subcommands ----

template <int number>
struct Plain {
  static Declaration declaration() {
    const std::string digit = std::to_string(number);
    CommandConfiguration configuration{.commandName = "plain" + digit, .abstract = "Number " + digit};
    configuration.shouldDisplay = number != 2;
    if (number == 3) configuration.aliases = {"three", "iii"};
    return command<Plain>(configuration);
  }
  void run() {}
};

struct Nest {
  static Declaration declaration() {
    return command<Nest>({.superCommandName = "super",
                          .discussion = "Only that.",
                          .subcommands = {type<Plain<1>>(), type<Plain<2>>(), type<Plain<3>>()},
                          .groupedSubcommands = {{"More", {type<Plain<4>>()}},
                                                 {"None", {type<Plain<2>>()}},
                                                 {"Last", {type<Plain<5>>()}}},
                          .defaultSubcommand = type<Plain<3>>(),
                          .helpNames = NameSpecification{NameSpecification::CustomShort{"?"},
                                                         NameSpecification::CustomLong{"assist"}}});
  }
};

TEST(Help, ListsSubcommands) {
  support::expectSnapshot("ArgumentParser/subcommands.txt", helpOf(type<Nest>(), 80));
}

TEST(Help, CommandFollowsTheNames) {
  const support::ScopedVariable columns("COLUMNS", "80"), rows("LINES", "25");
  const auto first = [](const char* line) {
    const std::string text = outcome(type<Nest>(), words(line)).text;
    return text.substr(0, text.find("OPTIONS"));
  };
  const std::string root = "OVERVIEW: \nOnly that.\n\nUSAGE: super nest <subcommand>\n\n";
  const std::pair<const char*, std::string> cases[] = {
      {"help", root},
      {"help plain2", "OVERVIEW: Number 2\n\nUSAGE: super nest plain2\n\n"},
      {"help iii plain1", "OVERVIEW: Number 3\n\nUSAGE: super nest plain3\n\n"},
      {"help nothing plain1", root},
      {"help -h plain4", "OVERVIEW: Number 4\n\nUSAGE: super nest plain4\n\n"},
      {"plain5 --assist", "OVERVIEW: Number 5\n\nUSAGE: super nest plain5\n\n"},
      {"help help",
       "OVERVIEW: Show subcommand help information.\n\nUSAGE: super nest help [<subcommands> ...]\n\n"
       "ARGUMENTS:\n  <subcommands>\n"},
  };
  for (const auto& [line, expected] : cases) EXPECT_EQ(first(line), expected) << line;
}

// ---- Usage ----

/// `optional` optional options, then `required` required ones.
template <int optional, int required>
struct Many {
  std::optional<std::string> given;
  std::string needed;
  static Declaration declaration() {
    return command<Many>({.commandName = "many"}, [](auto& it) {
      for (int i = 0; i < optional; ++i) it.option(&Many::given, "o" + std::to_string(i));
      for (int i = 0; i < required; ++i) it.option(&Many::needed, "r" + std::to_string(i));
    });
  }
  void run() {}
};

struct Bare {
  static Declaration declaration() {
    return command<Bare>({.usage = "", .helpNames = NameSpecification::none()});
  }
  void run() {}
};

TEST(Usage, ShortensALongLine) {
  const auto of = [](CommandType command) {
    const CommandTree tree(command);
    return usageMessage({&tree.root()});
  };
  EXPECT_EQ(of(type<Many<1, 1>>()), "Usage: many [--o0 <o0>] --r0 <r0>");
  const std::string twelve = of(type<Many<12, 0>>());
  EXPECT_EQ(twelve.substr(twelve.size() - 12), "--o11 <o11>]");
  EXPECT_EQ(of(type<Many<13, 0>>()), "Usage: many <options>");
  EXPECT_EQ(of(type<Many<12, 1>>()), "Usage: many [<options>] --r0 <r0>");
  EXPECT_EQ(of(type<Many<0, 13>>()), "Usage: many <options>");
  EXPECT_EQ(of(type<Many<0, 0>>()), "Usage: many");
  EXPECT_EQ(of(type<Bare>()), "");
  EXPECT_EQ(helpOf(type<Bare>(), 80), "");
}

// ---- The screen ----

TEST(ScreenSize, ReadsTheEnvironmentStrictly) {
  const ScreenSize own = [] {
    const support::ScopedVariable columns("COLUMNS", {}), rows("LINES", {});
    return screenSize();
  }();
  std::vector<std::pair<std::string, std::int64_t>> cases{
      {"50", 50}, {"+50", 50}, {"-3", -3}, {"0", 0}, {"007", 7}, {"4294967377", 4294967377}};
  for (const char* no : {"", " 50", "50x", "50 ", "0x50", "5.0", "+", "+-5", "99999999999999999999"})
    cases.push_back({no, own.columns});
  const support::ScopedVariable rows("LINES", {});
  for (const auto& [value, expected] : cases) {
    const support::ScopedVariable columns("COLUMNS", value);
    EXPECT_EQ(screenSize().columns, expected) << '"' << value << '"';
    EXPECT_EQ(screenSize().rows, own.rows);
    outcome(type<Build>(), {"--help"});
  }
  const support::ScopedVariable columns("COLUMNS", "7"), lines("LINES", "8");
  EXPECT_EQ(screenSize().columns, 7);
  EXPECT_EQ(screenSize().rows, 8);
}

}  // namespace
}  // namespace ArgumentParser
