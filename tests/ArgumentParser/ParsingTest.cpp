// Cutting, matching, descending and decoding: which line fills which fields.

#include <ctime>
#include <map>

#include <gtest/gtest.h>

#include "Outcome.h"

namespace ArgumentParser {

enum class Shade { light, dark };
template <>
struct EnumeratedValues<Shade> {
  static std::vector<EnumeratedValue<Shade>> values() {
    return {{Shade::light, "light"}, {Shade::dark, "dark"}};
  }
};

namespace {

/// Ends a run by saying which fields are set, as "key=value" pairs; `keys` are their blank-separated names.
template <class... Fields>
[[noreturn]] void tell(std::string_view keys, const Fields&... fields) {
  std::vector<std::string> result;
  const auto all = text::split(keys, ' ');
  auto key = all.begin();
  const auto add = [&]<class Field>(const Field& field) {
    if (field != Field{}) result.push_back(std::string(*key) + "=" + detail::defaultText(field));
    ++key;
  };
  (add(fields), ...);
  throw CleanExit::message(result.empty() ? "nothing" : text::joined(result, " "));
}

struct Options {
  std::optional<std::string> name, scan, any, define, dashed;
  std::vector<std::string> tags, each, up, rest;
  std::optional<std::string> level;
  std::vector<std::string> files;

  static Declaration declaration() {
    return command<Options>({}, [](auto& it) {
      using Single = SingleValueParsingStrategy;
      using Array = ArrayParsingStrategy;
      it.option(&Options::name, "name", {.name = shortAndLong});
      it.option(&Options::scan, "scan",
                {.name = NameSpecification::literals({"-s", "--scan"}), .parsing = Single::scanningForValue});
      it.option(&Options::any, "any",
                {.name = NameSpecification::literals({"-y", "--any"}), .parsing = Single::unconditional});
      it.option(&Options::define, "define", {.name = NameSpecification::customShort("D", true)});
      it.option(&Options::dashed, "dashed", {.name = "-dashed"});
      it.option(&Options::tags, "tags",
                {.name = shortAndLong, .defaultValue = std::vector<std::string>{"x", "y"}});
      it.option(&Options::each, "each", {.parsing = Array::unconditionalSingleValue});
      it.option(&Options::up, "up", {.name = shortAndLong, .parsing = Array::upToNextOption});
      it.option(&Options::rest, "rest", {.name = shortAndLong, .parsing = Array::remaining});
      it.option(&Options::level, "level", {.name = shortAndLong, .defaultAsFlag = "9"});
      it.argument(&Options::files, "files");
    });
  }
  void run() const {
    const auto given = tags == std::vector<std::string>{"x", "y"} ? std::vector<std::string>() : tags;
    tell("name scan any define dashed tags each up rest level files", name, scan, any, define, dashed, given,
         each, up, rest, level, files);
  }
};

struct Flags {
  bool quiet = false, all = false, accent = false;
  int verbose = 0;
  std::optional<bool> index;
  bool colour = false;
  std::optional<Shade> only, first, last;
  std::vector<Shade> each;

  static Declaration declaration() {
    return command<Flags>({}, [](auto& it) {
      const auto cases = [](const char* prefix) {
        const std::string start = prefix;
        return std::vector<FlagCase<Shade>>{
            {Shade::light, "light", NameSpecification::customLong(start + "-light")},
            {Shade::dark, "dark", NameSpecification::customLong(start + "-dark")}};
      };
      it.flag(&Flags::quiet, "quiet", {.name = shortAndLong});
      it.flag(&Flags::all, "all", {.name = NameSpecification::literals({"-a", "--all", "--everything"})});
      it.flag(&Flags::accent, "accent", {.name = NameSpecification::customShort("é")});
      it.countedFlag(&Flags::verbose, "verbose", {.name = shortAndLong});
      it.flag(&Flags::index, "_index", {.inversion = FlagInversion::prefixedNo});
      it.flag(&Flags::colour, "colour",
              {.name = shortAndLong,
               .inversion = FlagInversion::prefixedEnableDisable,
               .exclusivity = FlagExclusivity::chooseFirst,
               .defaultValue = true});
      it.enumeratedFlag(&Flags::only, "only", {.cases = cases("only")});
      it.enumeratedFlag(&Flags::first, "first",
                        {.cases = cases("first"), .exclusivity = FlagExclusivity::chooseFirst});
      it.enumeratedFlag(&Flags::last, "last",
                        {.cases = cases("last"), .exclusivity = FlagExclusivity::chooseLast});
      it.enumeratedFlag(&Flags::each, "each", {.cases = cases("each")});
    });
  }
  void run() const {
    tell("quiet all accent verbose index colour only first last each", quiet, all, accent, verbose, index,
         colour, only, first, last, each);
  }
};

/// A repeated positional of the strategy, behind one of its own unless it stands alone.
template <ArgumentArrayParsingStrategy strategy, bool isAlone = false>
struct Positionals {
  std::optional<std::string> first;
  std::vector<std::string> rest;
  bool flag = false;

  static Declaration declaration() {
    return command<Positionals>({.commandName = "positionals"}, [](auto& it) {
      if (!isAlone) it.argument(&Positionals::first, "first");
      it.argument(&Positionals::rest, "rest", {.parsing = strategy});
      it.flag(&Positionals::flag, "flag", {.name = shortAndLong});
    });
  }
  void run() const { tell("first rest flag", first, rest, flag); }
};

struct Values {
  std::optional<int> integer;
  std::optional<unsigned char> byte;
  std::optional<double> number;
  std::optional<bool> truth;
  std::optional<Shade> shade;
  std::optional<std::string> upper;

  static Declaration declaration() {
    return command<Values>({}, [](auto& it) {
      it.option(&Values::integer, "integer").option(&Values::byte, "byte").option(&Values::number, "number");
      it.option(&Values::truth, "truth").option(&Values::shade, "shade");
      it.option(&Values::upper, "upper", {.transform = [](const std::string& text) {
        if (text == "throw") throw ValidationError("Too loud.");
        return text == "none" ? std::nullopt : std::optional(text + "!");
      }});
    });
  }
  void run() const {
    tell("integer byte number truth shade upper", integer, byte, number, truth, shade, upper);
  }
};

TEST(Parsing, FillsFieldsOrTellsTheFault) {
  using Strategy = ArgumentArrayParsingStrategy;
  const std::map<std::string_view, CommandType> declarations{
      {"options", type<Options>()},
      {"flags", type<Flags>()},
      {"values", type<Values>()},
      {"remaining", type<Positionals<Strategy::remaining>>()},
      {"unrecognized", type<Positionals<Strategy::allUnrecognized>>()},
      {"terminated", type<Positionals<Strategy::postTerminator>>()},
      {"captured", type<Positionals<Strategy::captureForPassthrough>>()},
      {"alone", type<Positionals<Strategy::captureForPassthrough, true>>()}};
  for (const support::Case& row : support::casesIn(SOURCES "/expected/parsing.txt", "=!")) {
    const auto place = row.place();
    auto arguments = words(row.input);
    const std::string names = arguments.front();
    arguments.erase(arguments.begin());
    for (const std::string_view name : text::split(names, ',')) {
      SCOPED_TRACE(name);
      outcome(declarations.at(name), arguments).expect(row);
    }
  }
}

TEST(Parsing, TakesTimeInProportionToTheLine) {
  // Each of these took minutes if any stage looked at all arguments again for each one. The processor's time
  // is counted, so that a busy machine takes no longer.
  constexpr std::size_t count = 100'000;
  std::vector<std::string> values(count, "a"), scans(count, "--scan");
  scans.insert(scans.end(), values.begin(), values.end());
  std::vector<std::string> cluster{"-" + std::string(count, 't')};
  cluster.insert(cluster.end(), values.begin(), values.end());
  const std::vector<std::string> unknown{"--" + std::string(count, 'x')};
  const std::clock_t start = std::clock();
  EXPECT_EQ(outcome(type<Options>(), values).status, 0);
  EXPECT_EQ(outcome(type<Options>(), scans).status, 0);
  EXPECT_EQ(outcome(type<Options>(), cluster).status, 0);
  EXPECT_EQ(outcome(type<Options>(), unknown).status, 64);
  EXPECT_EQ(outcome(type<Flags>(), {"-" + std::string(count, 'v')}).status, 0);
  EXPECT_LT(std::clock() - start, 20 * CLOCKS_PER_SEC);
}

}  // namespace
}  // namespace ArgumentParser
