// Every form of argument, each as the table in the library's README has it. Its help shows
// how each form looks.
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "ArgumentParser/ArgumentParser.h"

using namespace ArgumentParser;

enum class Mode { fast, safe };

template <>
struct ArgumentParser::EnumeratedValues<Mode> {
  static std::vector<EnumeratedValue<Mode>> values() {
    return {{Mode::fast, "fast", "Takes risks"}, {Mode::safe, "safe", "Takes its time"}};
  }
};

namespace {

struct Output {
  bool json = false;
  static void arguments(Arguments<Output>& it) { it.flag(&Output::json, "json"); }
};

struct Tool {
  std::string config = "tool.conf";
  static Declaration declaration();
};

struct C {
  std::string user, since, name;
  std::optional<int> count, number;
  int size = 10, retries = 3, verbosity = 0;
  std::vector<std::string> tags, labels, words, rest, needed, files;
  std::optional<std::vector<int>> days;
  std::optional<std::string> scan, offset, define, file;
  std::optional<unsigned> port;
  Mode level = Mode::safe;
  bool force = false, fan = true, log = false, dry = false;
  std::optional<Mode> mode;
  std::vector<Mode> modes;
  Output output;
  ParentCommand<Tool> tool;

  static Declaration declaration() {
    return command<C>({.commandName = "all"}, [](Arguments<C>& it) {
      it.option(&C::user, "user");
      it.option(&C::count, "count");
      it.option(&C::size, "size", {.defaulted = true});
      it.option(&C::retries, "retries", {.defaultValue = 3});
      it.option(&C::since, "since", {.defaultAsFlag = "today"});
      it.option(&C::tags, "tag");
      it.option(&C::needed, "needed", {.atLeastOne = true});
      it.option(&C::days, "day");
      it.option(&C::labels, "label", {.parsing = ArrayParsingStrategy::upToNextOption});
      it.option(&C::words, "word", {.parsing = ArrayParsingStrategy::unconditionalSingleValue});
      it.option(&C::rest, "rest", {.parsing = ArrayParsingStrategy::remaining});
      it.option(&C::scan, "scan", {.parsing = SingleValueParsingStrategy::scanningForValue});
      it.option(&C::offset, "offset", {.parsing = SingleValueParsingStrategy::unconditional});
      it.option(&C::define, "define", {.name = NameSpecification::customShort("D", true)});
      it.option(&C::file, "file", {.name = {"-f", "--file", "-input"}});
      it.option(&C::level, "level", {.defaulted = true});
      it.option(&C::port, "port", {.transform = [](const std::string& text) {
        return text == "http" ? std::optional(80u) : ArgumentValue<unsigned>::parse(text);
      }});
      it.flag(&C::force, "force", {.name = shortAndLong});
      it.flag(&C::fan, "fan", {.inversion = FlagInversion::prefixedNo, .defaulted = true});
      it.flag(&C::log, "log", {.inversion = FlagInversion::prefixedEnableDisable, .defaultValue = false});
      it.flag(&C::dry, "dry", {.help = ArgumentHelp::hidden()});
      it.countedFlag(&C::verbosity, "verbosity", {.name = "-v"});
      it.enumeratedFlag(&C::mode, "mode", {.cases = {{Mode::fast, "quick"}, {Mode::safe, "careful"}}});
      it.enumeratedFlag(&C::modes, "modes",
                        {.cases = {{Mode::fast, "a"}, {Mode::safe, "b"}}, .defaultValue = Mode::safe});
      it.group(&C::output, "output", {.title = "Output"});
      it.parent(&C::tool);
      it.argument(&C::name, "name");
      it.argument(&C::number, "number");
      it.argument(&C::files, "files", {.atLeastOne = true});
    });
  }
  void run() const {
    std::printf("printed\n");
    throw CleanExit::message("told");
  }
};

/// A repeated positional of another strategy.
template <ArgumentArrayParsingStrategy strategy>
struct Rest {
  std::vector<std::string> line;

  static Declaration declaration() {
    return command<Rest>({.commandName = "rest" + std::to_string(static_cast<int>(strategy))},
                         [](Arguments<Rest>& it) {
                           it.argument(&Rest::line, "line", {.help = "All of it", .parsing = strategy});
                         });
  }
  int run() const { return static_cast<int>(line.size()); }
};

Declaration Tool::declaration() {
  using Strategy = ArgumentArrayParsingStrategy;
  return command<Tool>({.commandName = "forms",
                        .version = [] { return std::string("1.0"); },
                        .subcommands = {type<C>(), type<Rest<Strategy::postTerminator>>(),
                                        type<Rest<Strategy::allUnrecognized>>(),
                                        type<Rest<Strategy::captureForPassthrough>>()}},
                       [](Arguments<Tool>& it) { it.option(&Tool::config, "config", {.defaulted = true}); });
}

}  // namespace

int main(int argc, char** argv) {
  return ArgumentParser::main(type<Tool>(), argc, argv);
}
