// An imaginary tool that looks after a greenhouse: what a program built on ArgumentParser looks like. It only
// says what it would do.
#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "ArgumentParser/ArgumentParser.h"

namespace AP = ArgumentParser;

enum class Flow { drip, steady, flood };
enum class Order { name, size };

/// The values of `--sort`: this is all that makes an enumeration an argument type.
template <>
struct AP::EnumeratedValues<Order> {
  static std::vector<EnumeratedValue<Order>> values() {
    return {{Order::name, "name", "From A to Z"}, {Order::size, "size", "The largest first"}};
  }
};

namespace {

/// The beds to go on with the word at the cursor that are not on the line yet.
std::vector<std::string> bedsLeft(const std::vector<std::string>& words, std::size_t wordIndex, std::size_t) {
  const std::string typed = wordIndex < words.size() ? words[wordIndex] : "";
  std::vector<std::string> beds{"ferns", "herbs", "tom's corner", "$HOME bed", "back\\slash"};
  std::erase_if(beds, [&](const std::string& bed) {
    const bool isGiven = bed != typed && std::find(words.begin(), words.end(), bed) != words.end();
    return isGiven || !bed.starts_with(typed);
  });
  return beds;
}

/// Options that several commands share: an option group, shown in help under its title.
struct Reporting {
  bool json = false;
  int verbosity = 0;

  static void arguments(AP::Arguments<Reporting>& it) {
    it.flag(&Reporting::json, "json", {.help = "Print JSON: one object a line"});
    it.countedFlag(&Reporting::verbosity, "verbosity",
                   {.help = "Say more; give it again for still more", .name = "-v"});
  }
};

struct Water {
  std::vector<std::string> beds;
  double litres = 2.5;
  bool fan = true;
  Flow flow = Flow::drip;
  std::optional<std::string> secret;
  Reporting reporting;

  static AP::Declaration declaration() {
    return AP::command<Water>(
        {.abstract = "Water beds: the \"thirsty\" [or all], it's quick", .aliases = {"wet"}},
        [](AP::Arguments<Water>& it) {
          it.argument(&Water::beds, "beds",
                      {.help = "Beds to water: it's [all] if none is given",
                       .completion = AP::CompletionKind::custom(bedsLeft)});
          it.option(&Water::litres, "litres",
                    {.help = "Litres for each", .name = AP::shortAndLong, .defaulted = true});
          it.flag(&Water::fan, "fan",
                  {.help = "Run the fan: [off] isn't \"still\" \\ air",
                   .inversion = AP::FlagInversion::prefixedNo,
                   .defaulted = true});
          it.enumeratedFlag(
              &Water::flow, "flow",
              {.cases = {{Flow::drip, "drip"}, {Flow::steady, "steady"}, {Flow::flood, "flood"}},
               .defaultValue = Flow::drip,
               .help = "How fast it runs"});
          it.option(&Water::secret, "secret", {.help = AP::ArgumentHelp::hidden()});
          it.group(&Water::reporting, "reporting", {.title = "Reporting"});
        });
  }
  void validate() const {
    if (litres <= 0) throw AP::ValidationError("--litres must be more than nothing.");
  }
  void run() const {
    std::printf("%zu beds, %.1f litres, flow %d, fan %s, verbosity %d\n", beds.size(), litres,
                static_cast<int>(flow), fan ? "on" : "off", reporting.verbosity);
  }
};

struct Beds {
  struct List {
    Order order = Order::name;
    std::optional<std::string> since;
    Reporting reporting;

    static AP::Declaration declaration() {
      return AP::command<List>({.abstract = "List beds"}, [](AP::Arguments<List>& it) {
        it.option(&List::order, "sort", {.help = "What to go by", .defaulted = true});
        it.option(&List::since, "since",
                  {.help = "Only those planted since", .defaultAsFlag = std::string("spring")});
        it.group(&List::reporting, "reporting", {.title = "Reporting"});
      });
    }
    void run() const { std::printf("by %s\n", order == Order::name ? "name" : "size"); }
  };

  struct Add {
    std::string name;
    std::vector<std::string> crops, set, labels;
    std::optional<std::string> photo, notes, plan, store, neighbour, likeness, offset, net;

    static AP::Declaration declaration() {
      using AP::CompletionKind;
      return AP::command<Add>({.abstract = "Add a bed"}, [](AP::Arguments<Add>& it) {
        it.argument(&Add::name, "name", {.help = "What to call it"});
        it.option(&Add::crops, "crop",
                  {.help = "What grows in it",
                   .completion = CompletionKind::list({"beans", "peas", "lady's mantle", "a:b", "1\\2"})});
        it.option(&Add::set, "set", {.help = "A field: name=value"});
        it.option(&Add::labels, "label",
                  {.help = "Its labels", .parsing = AP::ArrayParsingStrategy::upToNextOption});
        it.option(&Add::photo, "photo",
                  {.help = "A picture", .completion = CompletionKind::file({"png", "jpg"})});
        it.option(&Add::notes, "notes", {.help = "Its notes", .completion = CompletionKind::file({"md"})});
        it.option(&Add::plan, "plan", {.help = "Its plan", .completion = CompletionKind::file()});
        it.option(&Add::store, "store",
                  {.help = "Where to keep it", .completion = CompletionKind::directory()});
        it.option(&Add::neighbour, "neighbour",
                  {.help = "The bed beside it",
                   .completion = CompletionKind::shellCommand("printf '%s\\n' bed:1 'bed 2' | tr : -")});
        it.option(
            &Add::likeness, "like",
            {.help = "A bed to copy", .completion = CompletionKind::customDeprecated([](const auto& words) {
                                        const auto empty = std::count(words.begin(), words.end(), "");
                                        return std::vector{std::to_string(words.size()) + "-words-" +
                                                           std::to_string(empty) + "-empty"};
                                      })});
        it.option(&Add::offset, "offset",
                  {.help = "Steps to the side, -5 as well",
                   .parsing = AP::SingleValueParsingStrategy::unconditional});
        it.option(&Add::net, "net",
                  {.help = "Its net", .name = AP::NameSpecification::customLong("shade.net")});
      });
    }
    void run() const {
      std::printf("bed %s, %zu crops, %zu labels, offset %s\n", name.c_str(), crops.size(), labels.size(),
                  offset.value_or("0").c_str());
    }
  };

  static AP::Declaration declaration() {
    return AP::command<Beds>({.abstract = "The beds",
                              .subcommands = {AP::type<List>(), AP::type<Add>()},
                              .defaultSubcommand = AP::type<List>()});
  }
};

/// What follows "--" is for another program.
struct During {
  std::string season;
  std::vector<std::string> line;

  static AP::Declaration declaration() {
    return AP::command<During>({.abstract = "Run something for a season"}, [](AP::Arguments<During>& it) {
      it.argument(&During::season, "season",
                  {.help = "When", .completion = AP::CompletionKind::list({"spring", "summer"})});
      it.argument(&During::line, "line",
                  {.help = "What to run", .parsing = AP::ArgumentArrayParsingStrategy::postTerminator});
    });
  }
  void run() const { std::printf("in %s: %zu words\n", season.c_str(), line.size()); }
};

struct Compost {
  static AP::Declaration declaration() {
    return AP::command<Compost>({.abstract = "Not for visitors", .shouldDisplay = false});
  }
  void run() const { throw AP::ExitCode(3); }
};

struct Greenhouse {
  static AP::Declaration declaration() {
    return AP::command<Greenhouse>(
        {.abstract = "Look after a greenhouse",
         .version = "1.0",
         .subcommands = {AP::type<Water>(), AP::type<Beds>()},
         .groupedSubcommands = {{"Rare", {AP::type<During>(), AP::type<Compost>()}}}});
  }
};

}  // namespace

int main(int argc, char** argv) {
  return AP::main(AP::type<Greenhouse>(), argc, argv);
}
