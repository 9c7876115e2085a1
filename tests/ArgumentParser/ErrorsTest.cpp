// Every way in which a command line can end other than by running: words, stream and status.

#include <utility>

#include <gtest/gtest.h>

#include "ArgumentParser/messages/ErrorMessageGenerator.h"
#include "Outcome.h"
#include "support/Surroundings.h"

namespace ArgumentParser {
namespace {

/// An enumeration of `count` values: a, b, c ...
template <int count>
struct Letter {
  int index;
  friend bool operator==(const Letter&, const Letter&) = default;
};

}  // namespace

template <int count>
struct EnumeratedValues<Letter<count>> {
  static std::vector<EnumeratedValue<Letter<count>>> values() {
    std::vector<EnumeratedValue<Letter<count>>> result;
    for (int i = 0; i < count; ++i) result.push_back({{i}, std::string(1, static_cast<char>('a' + i))});
    return result;
  }
};

namespace {

struct Runnable {
  void run() {}
};

struct Add : Runnable {
  std::string name;
  std::optional<std::string> icon, note, secret;
  std::optional<int> count;
  bool force = false;

  static Declaration declaration() {
    return command<Add>({.abstract = "Create"}, [](auto& it) {
      it.argument(&Add::name, "name", {.help = "What to call it"});
      it.option(&Add::icon, "icon", {.help = "Symbol", .name = shortAndLong});
      it.option(&Add::note, "note", {.name = "-note"});
      it.option(&Add::count, "count", {.help = {"How many", {}, "n"}});
      it.option(&Add::secret, "secretMode", {.help = ArgumentHelp::hidden()});
      it.flag(&Add::force, "force", {.name = shortAndLong});
    });
  }
};

struct Remove : Runnable {
  std::vector<std::string> ids;
  std::string reason;
  static Declaration declaration() {
    return command<Remove>({.commandName = "rm", .aliases = {"del"}}, [](auto& it) {
      it.argument(&Remove::ids, "ids", {.help = "Which", .atLeastOne = true});
      it.option(&Remove::reason, "reason");
    });
  }
};

struct Mode : Runnable {
  Letter<2> letter{};
  bool index = false;
  static Declaration declaration() {
    return command<Mode>({}, [](auto& it) {
      it.enumeratedFlag(&Mode::letter, "letter",
                        {.cases = {{{0}, "alpha", shortAndLong}, {{1}, "beta", shortAndLong, "Second"}}});
      it.flag(&Mode::index, "index", {.inversion = FlagInversion::prefixedNo});
    });
  }
};

struct Pick : Runnable {
  std::optional<Letter<2>> two;
  std::optional<Letter<3>> three;
  std::optional<Letter<5>> five;
  std::optional<Letter<6>> six;
  std::optional<std::string> odd, host;
  static Declaration declaration() {
    return command<Pick>({}, [](auto& it) {
      it.argument(&Pick::two, "two", {.help = "One of two"});
      it.option(&Pick::three, "three").option(&Pick::five, "five");
      it.option(&Pick::six, "six", {.help = "One of six"});
      it.option(&Pick::odd, "odd", {.transform = [](const std::string& text) -> std::optional<std::string> {
        if (text == "4") throw 4;
        throw ValidationError("It is even.");
      }});
      it.option(&Pick::host, "host", {.help = ArgumentHelp::hidden(), .name = "-h"});
    });
  }
};

struct Late : Runnable {
  std::vector<std::string> words;
  std::string hidden;
  static Declaration declaration() {
    return command<Late>({.usage = ""}, [](auto& it) {
      it.argument(
          &Late::words, "words",
          {.help = "Words", .atLeastOne = true, .parsing = ArgumentArrayParsingStrategy::postTerminator});
      it.option(&Late::hidden, "hidden", {.help = ArgumentHelp::hidden()});
    });
  }
};

struct Throw {
  std::string stage, what;
  static Declaration declaration() {
    return command<Throw>(
        {.usage = "throw things\nor not", .helpNames = NameSpecification::none()},
        [](auto& it) { it.argument(&Throw::stage, "stage").argument(&Throw::what, "what"); });
  }
  void validate() {
    if (stage == "validate") act();
  }
  void run() { act(); }
  void act() const {
    if (what == "invalid") throw ValidationError("Not so.");
    if (what == "silent") throw ValidationError("");
    if (what == "runtime") throw std::runtime_error("Broken.");
    if (what == "number") throw 7;
    if (what == "three") throw ExitCode(3);
    if (what == "success") throw ExitCode::success;
    if (what == "failure") throw ExitCode::failure;
    if (what == "message") throw CleanExit::message("Done.");
    if (what == "help") throw CleanExit::helpRequest(type<Remove>().identity());
    if (what == "dump") throw CleanExit::dumpRequest(type<Remove>().identity());
  }
};

struct Group {
  struct List : Runnable {
    bool json = false;
    static Declaration declaration() {
      return command<List>({}, [](auto& it) { it.flag(&List::json, "json"); });
    }
  };
  struct Show : Runnable {
    int id = 0;
    std::optional<std::string> region;
    static Declaration declaration() {
      return command<Show>({.helpNames = "--info"},
                           [](auto& it) { it.argument(&Show::id, "id").option(&Show::region, "region"); });
    }
  };
  static Declaration declaration() {
    return command<Group>(
        {.version = "2.0", .subcommands = {type<List>(), type<Show>()}, .defaultSubcommand = type<List>()});
  }
};

struct Tool {
  static Declaration declaration() {
    return command<Tool>({.abstract = "A tool",
                          .subcommands = {type<Add>(), type<Remove>(), type<Mode>(), type<Pick>(),
                                          type<Late>(), type<Throw>(), type<Group>()}});
  }
};

TEST(Errors, HaveTheirWordsUsageAndStatus) {
  for (const support::Case& each : support::casesIn(SOURCES "/expected/errors.txt", "=!")) {
    const auto place = each.place();
    outcome(type<Tool>(), words(each.input)).expect(each);
  }
}

TEST(Errors, RequestsComeToWhatTheyAskFor) {
  const support::ScopedVariable columns("COLUMNS", "80"), rows("LINES", "25");
  for (const support::Case& row : support::casesIn(SOURCES "/expected/requests.txt", ":")) {
    const auto place = row.place();
    const End actual = outcome(type<Tool>(), words(row.input));
    EXPECT_EQ(actual.text, outcome(type<Tool>(), words(text::trimmed(row.all(":")))).text);
    EXPECT_EQ(actual.status, 0);
  }
  EXPECT_NE(outcome(type<Tool>(), {"add", "--help-hidden"}).text.find("--secret-mode"), std::string::npos);
}

struct Greet : Runnable {
  static Declaration declaration() { return command<Greet>({}); }
  void validate() { throw CleanExit::message("Hello."); }
};

TEST(Errors, WithoutAnyArgumentShowTheWholeHelp) {
  const support::ScopedVariable columns("COLUMNS", "80"), rows("LINES", "25");
  EXPECT_EQ(outcome(type<Add>(), {}).text,
            "Error: Missing expected argument '<name>'\n\n" + outcome(type<Add>(), {"--help"}).text);
  EXPECT_EQ(outcome(type<Add>(), {}).status, 64);
  EXPECT_EQ(outcome(type<Greet>(), {}).text, "Hello.");
}

TEST(Errors, OfEveryOtherKindHaveWords) {
  using namespace parser_error;
  const std::pair<ParserError, const char*> cases[] = {
      {NonAlphanumericShortOption{"!"}, "Invalid option: -!"},
      {MissingValueForOption{{}, Name::makeLong("x")}, "Missing value for '--x'"},
      {NotParentCommand{"x"}, "Command 'x' is not a parent of the current command."},
      {MissingSubcommand{}, "Missing required subcommand."},
      {NotImplemented{}, "Internal error. Parsing command-line arguments hit unimplemented code path."},
      {InvalidState{}, "Internal error. Invalid state while parsing command-line arguments."},
      {UnableToParseValue{{}, Name::makeShort("x"), "1", {"other"}, {}}, "The value '1' is invalid for '-x'"},
      {UnableToParseValue{{}, {}, "1", {"other"}, "No."}, "The value '1' is invalid.: No."},
  };
  const CommandTree tree(type<Tool>());
  for (const auto& [error, message] : cases) {
    EXPECT_EQ(endOf(Fault{{&tree.root()}, error}, tree).text,
              std::string("Error: ") + message +
                  "\nUsage: tool <subcommand>\n  See 'tool --help' for more information.");
  }
}

TEST(EditDistance, CountsCharacters) {
  for (const char* row : {"'' '' 0", "abc '' 3", "abc abc 0", "kitten sitting 3", "abcd acbd 2", "aaa aa 1",
                          "abab ab 2", "é👩‍👧 e 2", "sunday saturday 3"}) {
    const auto word = words(row);
    EXPECT_EQ(std::to_string(editDistance(word[0], word[1])), word[2]) << row;
    EXPECT_EQ(std::to_string(editDistance(word[1], word[0])), word[2]) << row;
  }
}

// ---- Declarations that are malformed ----

template <int kind>
struct Malformed : Runnable {
  bool flag = false;
  std::optional<std::string> text;
  static Declaration declaration() {
    CommandConfiguration configuration{.commandName = "other"};
    if (kind == 0) configuration.subcommands = {type<Malformed<0>>()};
    if (kind == 1) configuration.subcommands = {type<Malformed<2>>()};
    if (kind == 2) configuration.subcommands = {type<Malformed<1>>()};
    if (kind == 3) configuration.aliases = {"another", "other"};
    if (kind == 4) configuration.defaultSubcommand = type<Add>();
    Declaration result = command<Malformed>(configuration, [](auto& it) {
      if (kind == 5) it.flag(&Malformed::flag, "key", {.name = NameSpecification::none()});
      if (kind == 6) it.flag(&Malformed::flag, "key", {.defaultValue = true});
      if (kind == 7) it.option(&Malformed::text, "key", {.defaultValue = "a", .defaulted = true});
      if (kind == 8) it.option(&Malformed::text, "");
    });
    if (kind == 9) result.hasRun = false;
    result.typeName = "Malformed" + std::to_string(kind);
    return result;
  }
};

/// A root that has a command like that two levels down, away from the road of any line in the tests.
template <int kind>
struct Upper {
  struct Middle {
    static Declaration declaration() {
      return command<Middle>({.groupedSubcommands = {{"Group", {type<Add>(), type<Malformed<kind>>()}}}});
    }
  };
  static Declaration declaration() { return command<Upper>({.subcommands = {type<Middle>()}}); }
};

template <class Attempt>
std::string fault(Attempt attempt) {
  try {
    attempt();
    return {};
  } catch (const DeclarationError& error) {
    return error.what();
  }
}

TEST(DeclarationErrors, StopTheProgram) {
  const auto tree = [](CommandType root) { return fault([&] { CommandTree{root}; }); };
  const std::string itself = " can't have itself as its own subcommand.";
  EXPECT_EQ(tree(type<Upper<0>>()), "The command \"Malformed0\"" + itself);
  EXPECT_EQ(tree(type<Upper<1>>()), "The command \"Malformed1\"" + itself);
  EXPECT_EQ(tree(type<Upper<3>>()),
            "The command \"Malformed3\" can't have an alias with the same name as the command itself.");
  EXPECT_EQ(tree(type<Upper<4>>()),
            "The default subcommand of the command \"Malformed4\" must be one of its subcommands.");
  EXPECT_EQ(tree(type<Upper<5>>()), "The option or flag 'key' has no name.");
  EXPECT_EQ(tree(type<Upper<6>>()),
            "The flag 'key' has a default, but without an inversion it can only become true.");
  EXPECT_EQ(tree(type<Upper<7>>()), "The argument 'key' has two defaults, its own and the field's.");
  EXPECT_EQ(tree(type<Upper<8>>()), "Key '' has not characters to form long option name.");
  EXPECT_EQ(tree(type<Upper<9>>()), "The command \"Malformed9\" has neither a run nor subcommands.");

  const char* tooManyDashes = "Can't have more than a two-dash prefix.";
  const std::pair<const char*, const char*> literals[] = {
      {"", "Can't use the empty string as a name."},
      {"--a b!", "Can't use spaces in a name."},
      {"é", "Must use only letters, numbers, underscores, or dashes."},
      {"name", "Need one or two prefix dashes."},
      {"-", "Need at least one character after the dash prefix."},
      {"--", "Need at least one character after the dash prefix."},
      {"---", tooManyDashes},
      {"---name", tooManyDashes},
  };
  for (const auto& [literal, message] : literals) {
    EXPECT_EQ(fault([&, text = literal] { NameSpecification(text).makeNames("key"); }),
              std::string("Invalid literal name '") + literal + "' for property 'key': " + message);
  }
  EXPECT_EQ(fault([] { NameSpecification(shortAndLong).makeNames(""); }),
            "Key '' has not characters to form short option name.");
  using Element = NameSpecification::Element;
  const std::pair<Element, const char*> custom[] = {
      {NameSpecification::CustomShort{"ab"}, "'ab' for property 'key': A short name is one character"},
      {NameSpecification::CustomShort{""}, "'' for property 'key': A short name is one character"},
      {NameSpecification::CustomShort{"-"}, "'-' for property 'key': A short name is one character"},
      {NameSpecification::CustomLong{"--bee"}, "'--bee' for property 'key': The dashes are added"},
      {NameSpecification::CustomLong{""}, "'' for property 'key': Can't use the empty string"},
      {NameSpecification::CustomLong{"a=b"}, "'a=b' for property 'key': Can't use '='"},
      {NameSpecification::CustomLong{"it's"}, "'it's' for property 'key': Can't use a character"},
      {NameSpecification::CustomShort{"$"}, "'$' for property 'key': Can't use a character"},
  };
  for (const auto& [element, message] : custom) {
    const std::string said = fault([&, one = element] { NameSpecification(one).makeNames("key"); });
    EXPECT_TRUE(said.starts_with(std::string("Invalid name ") + message)) << said;
  }
  const std::pair<const char*, Name> good[] = {
      {"--name", Name::makeLong("name")},
      {"-n", Name::makeShort("n")},
      {"-name", Name::makeLongWithSingleDash("name")},
      {"--n_1-", Name::makeLong("n_1-")},
  };
  for (const auto& [literal, name] : good) {
    EXPECT_EQ(NameSpecification(literal).makeNames("key"), std::vector<Name>{name});
  }
}

TEST(Name, FollowsTheFieldsName) {
  const auto fields = words("noColor JSONFile retryURL a URLs already-there two2Three X-Axis éÜber");
  const auto names = words("no-color json-file retry-url a ur-ls already-there two2-three x-axis é-über");
  for (std::size_t i = 0; i < fields.size(); ++i) EXPECT_EQ(convertedToSnakeCase(fields[i]), names.at(i));
}

}  // namespace
}  // namespace ArgumentParser
