// Cutting, matching, descending and decoding: which line fills which fields.

#include <chrono>

#include <gtest/gtest.h>

#include "ArgumentParser/SplitArguments.h"
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

/// The fields that are set as "key=value" pairs; `keys` are their blank-separated names.
template <class... Fields>
std::string shownFields(std::string_view keys, const Fields&... fields) {
  std::vector<std::string> result;
  auto key = text::split(keys, ' ');
  std::size_t next = 0;
  const auto add = [&]<class Field>(const Field& field) {
    const std::string start = std::string(key[next++]) + "=";
    bool isSet = field != Field{};
    if constexpr (FieldShape<Field>::isOptional && !FieldShape<Field>::isRepeating) isSet = field.has_value();
    if (isSet) result.push_back(start + detail::defaultText(field));
  };
  (add(fields), ...);
  return text::joined(result, " ");
}

std::string cut(const std::vector<std::string>& arguments) {
  try {
    std::string result;
    const SplitArguments split(arguments);
    for (const auto& element : split.elements()) {
      result += std::to_string(element.index.inputIndex);
      if (!element.index.isComplete()) result += "." + std::to_string(*element.index.subIndex);
      if (const ParsedArgument* option = element.option()) {
        result += ":" + option->name.synopsisString() + (option->value ? "=" + *option->value : "");
      } else {
        result += element.isTerminator() ? ":terminator" : "'" + *element.text() + "'";
      }
      result += " ";
    }
    return result;
  } catch (const ParserError& error) {
    return "invalid " + error.as<parser_error::InvalidOption>()->text;
  }
}

TEST(SplitArguments, CutsEveryForm) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"", "-", "a-b", "−x"}, "0'' 1'-' 2'a-b' 3'−x' "},
      {{"--name", "--name=", "--name=a=b", "--=x"}, "0:--name 1:--name 2:--name=a=b 3:--=x "},
      {{"-n", "-n=", "-n=5", "-long=a=b"}, "0:-n 1:-n= 2:-n=5 3:-long=a=b "},
      {{"-abc"}, "0:-abc 0.0:-a 0.1:-b 0.2:-c "},
      {{"-éx", "-👩‍👧"}, "0:-éx 0.0:-é 0.1:-x 1:-👩‍👧 "},
      {{"a", "--", "-b", "--", "--c"}, "0'a' 1:terminator 2'-b' 3'--' 4'--c' "},
      {{"-\u0301x", "-a=\u0338b"}, "0'-\u0301x' 1:-a=\u0338b 1.0:-a 1.1:-=\u0338 1.2:-b "},
      {{"a", "---"}, "invalid ---"},
      {{"---x=1"}, "invalid ---x=1"},
      {{"-=x"}, "invalid -=x"},
      {{"--", "---x"}, "0:terminator 1'---x' "},
  };
  for (const auto& [arguments, expected] : cases) EXPECT_EQ(cut(arguments), expected);
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
  std::string shown() const {
    const auto given = tags == std::vector<std::string>{"x", "y"} ? std::vector<std::string>() : tags;
    return shownFields("name scan any define dashed tags each up rest level files", name, scan, any, define,
                       dashed, given, each, up, rest, level, files);
  }
  void run() {}
};

TEST(Parsing, TakesAnOptionsValue) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"--name a b", "name=a files=b"},
      {"a -n b", "name=b files=a"},
      {"--name=a=b", "name=a=b"},
      {"--name= a", "name=a"},
      {"-n=", "name="},
      {"--name=-5", "name=-5"},
      {"--name -5", "Error: Missing value for '--name <name>'"},
      {"--name -- a", "Error: Missing value for '--name <name>'"},
      {"--name a --name b", "name=b"},
      {"-dashed a", "dashed=a"},
      {"-dashed=a", "dashed=a"},
      {"--dashed a", "Error: Unknown option '--dashed'. Did you mean '-dashed'?"},
      {"--scan --name a b", "name=b scan=a"},
      {"--scan -- a", "scan=a"},
      {"-ss a b", "scan=b"},
      {"--scan --scan a --name n b", "name=b scan=n"},
      {"a --scan", "Error: Missing value for '--scan <scan>'"},
      {"--any --name a", "any=--name files=a"},
      {"--any -- --name a", "any=-- files=--name, a"},
      {"-y -ab", "any=-ab"},
      {"--any", "Error: Missing value for '--any <any>'"},
      {"--each -1 --each=-2 --each --", "each=-1, -2, --"},
      {"-n 1 -t a -t b", "name=1 tags=a, b"},
      {"--up a b --up c -n d e", "name=d up=a, b, c files=e"},
      {"--up=a b -- c", "up=a, b files=c"},
      {"--up", "Error: Missing value for '--up <up>'"},
      {"--up= --name a", "Error: Missing value for '--up <up>'"},
      {"-n a --rest b -n -- --c", "name=a rest=b, -n, --, --c"},
      {"--rest=a -bc -n", "rest=a, -bc, -n"},
      {"a --rest", "files=a"},
      {"--level", "level=9"},
      {"--level 3 a", "level=3 files=a"},
      {"--level=3 --level", "level=9"},
      {"--level --name a", "name=a level=9"},
  };
  for (const auto& [line, expected] : cases) EXPECT_EQ(filled<Options>(line), expected) << line;
}

TEST(Parsing, TakesClustersAndJoinedValues) {
  const std::pair<const char*, const char*> cases[] = {
      {"-nt a b c", "name=a tags=b files=c"},
      {"-nt a", "Error: Missing value for '-t <tags>'"},
      {"-nn a b", "name=b"},
      {"-rt a b", "Error: Missing value for '-t <tags>'"},
      {"-tr a b", "tags=a rest=b"},
      {"-ln a", "Error: Missing value for '-n <name>'"},
      {"-nl a", "name=a level=9"},
      {"-Dvalue", "define=value"},
      {"-Dlonger=b", "Error: Unknown option '-Dlonger'"},
      {"-D=b", "define=b"},
      {"-D b", "define=b"},
      {"-nD a b", "name=a define=b"},
      {"-Dn a", "define=n files=a"},
      {"-nDx a b", "Error: Unknown option '-x'"},
      {"-dashed", "Error: Missing value for '-dashed <dashed>'"},
  };
  for (const auto& [line, expected] : cases) EXPECT_EQ(filled<Options>(line), expected) << line;
}

struct Flags {
  bool quiet = false, all = false;
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
  std::string shown() const {
    return shownFields("quiet all verbose index colour only first last each", quiet, all, verbose, index,
                       colour, only, first, last, each);
  }
  void run() {}
};

TEST(Parsing, TakesEveryFormOfFlag) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "colour=true"},
      {"-q --quiet --disable-colour", "quiet=true"},
      {"--everything --disable-colour", "all=true"},
      {"-vvv --verbose --disable-colour", "verbose=4"},
      {"-vqa --disable-colour", "quiet=true all=true verbose=1"},
      {"--index", "index=true colour=true"},
      {"--no-index --no-index", "index=false colour=true"},
      {"--index --no-index",
       "Error: Value to be set with flag '--no-index' had already been set with flag '--index'"},
      {"--disable-colour --enable-colour", ""},
      {"-c --disable-colour", "colour=true"},
      {"--only-dark --only-dark", "colour=true only=dark"},
      {"--first-dark --first-light --last-dark --last-light", "colour=true first=dark last=light"},
      {"--each-dark --each-light --each-dark", "colour=true each=dark, light, dark"},
      {"--quiet=1", "Error: The option '--quiet' does not take any value, but '1' was specified."},
      {"--quiet= --disable-colour", "quiet=true"},
      {"-q=", "Error: The option '-q' does not take any value, but '' was specified."},
      {"-q x", "Error: Unexpected argument 'x'"},
  };
  for (const auto& [line, expected] : cases) EXPECT_EQ(filled<Flags>(line), expected) << line;
}

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
  std::string shown() const { return shownFields("first rest flag", first, rest, flag); }
  void run() {}
};

TEST(Parsing, FillsPositionals) {
  using Strategy = ArgumentArrayParsingStrategy;
  struct Case {
    const char *line, *remaining, *allUnrecognized, *postTerminator, *captureForPassthrough;
  };
  const char* unknown = "Error: Unknown option '--x'";
  const char* noValue = "Error: The option '--flag' does not take any value, but '1' was specified.";
  const Case cases[] = {
      {"", "", "", "", ""},
      {"a", "first=a", "first=a", "first=a", "first=a"},
      {"a b c", "first=a rest=b, c", "first=a rest=b, c", "Error: 2 unexpected arguments: 'b', 'c'",
       "first=a rest=b, c"},
      {"-f a b -f", "first=a rest=b flag=true", "first=a rest=b flag=true", "Error: Unexpected argument 'b'",
       "first=a rest=b, -f flag=true"},
      {"a --x -f b", unknown, "first=a rest=--x, b flag=true", unknown, "first=a rest=--x, -f, b"},
      {"a -xy b", "Error: Unknown option '-xy'", "first=a rest=-xy, b", "Error: Unknown option '-xy'",
       "first=a rest=-xy, b"},
      {"--x a b", unknown, "first=a rest=--x, b", unknown, unknown},
      {"a -- b --flag", "first=a rest=b, --flag", "first=a rest=--, b, --flag", "first=a rest=b, --flag",
       "first=a rest=--, b, --flag"},
      {"-- a b", "first=a rest=b", "first=a rest=--, b", "rest=a, b", "first=a rest=b"},
      {"a --flag=1", noValue, noValue, noValue, "first=a rest=--flag=1"},
      {"-ff a", "first=a flag=true", "first=a flag=true", "first=a flag=true", "first=a flag=true"},
      {"a --help", "USAGE: positionals [<first>] [<rest> ...] [--flag]",
       "USAGE: positionals [<first>] [<rest> ...] [--flag]",
       "USAGE: positionals [<first>] -- [<rest> ...] [--flag]", "first=a rest=--help"},
      {"'' -", "first= rest=-", "first= rest=-", "Error: Unexpected argument '-'", "first= rest=-"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.line);
    EXPECT_EQ(filled<Positionals<Strategy::remaining>>(each.line), each.remaining);
    EXPECT_EQ(filled<Positionals<Strategy::allUnrecognized>>(each.line), each.allUnrecognized);
    EXPECT_EQ(filled<Positionals<Strategy::postTerminator>>(each.line), each.postTerminator);
    EXPECT_EQ(filled<Positionals<Strategy::captureForPassthrough>>(each.line), each.captureForPassthrough);
  }
  using Alone = Positionals<Strategy::captureForPassthrough, true>;
  EXPECT_EQ(filled<Alone>("-f -- a --x --"), "rest=a, --x, -- flag=true");
  EXPECT_EQ(filled<Alone>("--x -f a"), unknown);
}

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
  std::string shown() const {
    return shownFields("integer byte number truth shade upper", integer, byte, number, truth, shade, upper);
  }
  void run() {}
};

TEST(Parsing, ConvertsValues) {
  const std::pair<const char*, const char*> good[] = {
      {"--integer=-2147483648", "integer=-2147483648"},
      {"--integer +7", "integer=7"},
      {"--byte 255", "byte=255"},
      {"--number 15", "number=15.0"},
      {"--number=-0.5", "number=-0.5"},
      {"--number 1e3", "number=1000.0"},
      {"--number +2.25", "number=2.25"},
      {"--number 1e999", "number=inf"},
      {"--truth true", "truth=true"},
      {"--truth false", "truth=false"},
      {"--shade dark", "shade=dark"},
      {"--upper a", "upper=a!"},
  };
  for (const auto& [line, value] : good) EXPECT_EQ(filled<Values>(line), value) << line;
  for (const char* line :
       {"--integer +",  "--integer +-7", "--integer 2147483648", "--integer 1.0",  "--integer 0x1",
        "--integer ''", "--integer 1_",  "--byte 256",           "--byte=-1",      "--number ''",
        "--number 1,5", "--number +-1",  "--number 1s",          "--number 0x1p3", "--truth yes",
        "--truth True", "--truth 1",     "--shade Dark",         "--shade ''",     "--upper none",
        "--upper throw"}) {
    EXPECT_TRUE(filled<Values>(line).starts_with("Error: The value '"))
        << line << " " << filled<Values>(line);
  }
}

TEST(Parsing, TakesTimeInProportionToTheLine) {
  // Each of these took minutes if any stage looked at all arguments again for each one.
  constexpr std::size_t count = 100'000;
  std::vector<std::string> values(count, "a"), scans(count, "--scan");
  scans.insert(scans.end(), values.begin(), values.end());
  std::vector<std::string> cluster{"-" + std::string(count, 't')};
  cluster.insert(cluster.end(), values.begin(), values.end());
  const std::vector<std::string> unknown{"--" + std::string(count, 'x')};
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(outcome(type<Options>(), values).status, 0);
  EXPECT_EQ(outcome(type<Options>(), scans).status, 0);
  EXPECT_EQ(outcome(type<Options>(), cluster).status, 0);
  EXPECT_EQ(outcome(type<Options>(), unknown).status, 64);
  EXPECT_EQ(outcome(type<Flags>(), {"-" + std::string(count, 'v')}).status, 0);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

}  // namespace
}  // namespace ArgumentParser
