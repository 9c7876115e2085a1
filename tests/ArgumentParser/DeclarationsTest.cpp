// What a declaration may say besides the plain forms: where defaults, parents and bases are looked for, and
// what a program that keeps its own life gets.

#include <gtest/gtest.h>

#include "Outcome.h"

namespace ArgumentParser {
namespace {

enum class Tone { low, high };

struct Common {
  bool quiet = true;
};

struct Zoo {
  std::string keeper = "Ann";
  static Declaration declaration();
};

struct Feed : Common {
  int meals = 15;
  double weight = 2.5;
  std::vector<std::string> animals, toys{"ball"};
  std::optional<std::vector<int>> days;
  std::vector<Tone> tones;
  ParentCommand<Zoo> zoo;

  static Declaration declaration() {
    return command<Feed>({.version = [] { return std::string("2.0"); }}, [](Arguments<Feed>& it) {
      it.flag(&Feed::quiet, "quiet", {.inversion = FlagInversion::prefixedNo, .defaulted = true});
      it.option(&Feed::meals, "meals", {.name = {"-m", "--times"}, .defaulted = true});
      it.option(&Feed::weight, "weight", {.defaultValue = 3});
      it.option(&Feed::animals, "animal", {.atLeastOne = true});
      it.option(&Feed::toys, "toy", {.defaulted = true});
      it.option(&Feed::days, "day");
      it.enumeratedFlag(&Feed::tones, "tones",
                        {.cases = {{Tone::low, "low"}, {Tone::high, "high"}}, .defaultValue = Tone::high});
      it.parent(&Feed::zoo);
    });
  }
  int run() const {
    const std::string text = zoo->keeper + " " + std::to_string(meals) + " " + detail::defaultText(weight) +
                             " " + detail::defaultText(animals) + " " + detail::defaultText(toys) + " " +
                             (days ? detail::defaultText(*days) : "none") + " " +
                             std::to_string(tones.size()) + (quiet ? " quiet" : "");
    if (meals == 99) return 7;
    throw CleanExit::message(text);
  }
};

Declaration Zoo::declaration() {
  return command<Zoo>({.subcommands = {type<Feed>()}},
                      [](auto& it) { it.option(&Zoo::keeper, "keeper", {.defaulted = true}); });
}

TEST(Declarations, FillFieldsFromWhereTheySay) {
  const std::pair<const char*, const char*> cases[] = {
      {"feed --animal a", "Ann 15 3.0 a ball none 1 quiet"},
      {"--keeper Bob feed --animal a --animal b -m 3 --no-quiet --day 1 --day 2 --toy x",
       "Bob 3 3.0 a, b x 1, 2 1"},
      {"feed --animal a --low --high --low --times 0", "Ann 0 3.0 a ball none 3 quiet"},
      {"feed", "Error: Missing expected argument '--animal <animal> ...'"},
      {"feed --version", "2.0"},
  };
  for (const auto& [line, expected] : cases)
    EXPECT_EQ(outcome(type<Zoo>(), words(line)).firstLine(), expected);
  EXPECT_EQ(outcome(type<Zoo>(), words("feed --animal a -m 99")).status, 7);
  EXPECT_EQ(outcome(type<Feed>(), words("--animal a")).firstLine(),
            "Error: Command 'Zoo' is not a parent of the current command.");

  const std::string help = outcome(type<Zoo>(), words("feed --help")).text;
  for (const char* part : {"--quiet/--no-quiet      (default: --quiet)", "(default: 15)", "(default: ball)",
                           "--low/--high            (default: --high)"}) {
    EXPECT_NE(help.find(part), std::string::npos) << part << " in\n" << help;
  }
  EXPECT_NE(help.find("[--quiet] [--no-quiet] [--times <times>] [--weight <weight>] --animal <animal> ..."),
            std::string::npos)
      << help;
}

struct Plain {
  std::string word;
  int count = 2;
  static Declaration declaration() {
    return command<Plain>({}, [](auto& it) {
      it.argument(&Plain::word, "word").option(&Plain::count, "count", {.defaulted = true});
    });
  }
  void run() const {}
};

TEST(ParseAsRoot, GivesTheRecordOrSaysWhyNot) {
  const auto plain = parseAsRoot<Plain>(words("hello --count 3"));
  EXPECT_EQ(plain.word + std::to_string(plain.count), "hello3");
  const std::tuple<const char*, const char*, int> ends[] = {
      {"a --count x", "Error: The value 'x' is invalid for '--count <count>'\n", 64},
      {"--help", "USAGE: plain <word>", 0},
  };
  for (const auto& [line, text, status] : ends) {
    try {
      parseAsRoot<Plain>(words(line));
      ADD_FAILURE() << line;
    } catch (const CommandError& end) {
      EXPECT_TRUE(std::string_view(end.what()).starts_with(text)) << end.what();
      EXPECT_EQ(end.status, status);
      EXPECT_EXIT(ArgumentParser::exit<Plain>(std::make_exception_ptr(end)), testing::ExitedWithCode(status),
                  status == 0 ? "" : text);
    }
  }
  EXPECT_THROW(parseAsRoot<Zoo>({}), DeclarationError);
  EXPECT_EXIT(ArgumentParser::exit<Plain>(), testing::ExitedWithCode(0), "^$");
  EXPECT_EXIT(ArgumentParser::exit<Plain>(std::make_exception_ptr(ExitCode(3))), testing::ExitedWithCode(3),
              "^$");
  EXPECT_EXIT(ArgumentParser::exit<Plain>(std::make_exception_ptr(std::runtime_error("No."))),
              testing::ExitedWithCode(1), "^Error: No.\n$");
  const auto record = parseAsRoot(CommandTree(type<Zoo>()), words("feed --animal a"));
  EXPECT_NE(record->as<Feed>(), nullptr);
  EXPECT_EQ(record->as<Zoo>(), nullptr);
}

}  // namespace
}  // namespace ArgumentParser
