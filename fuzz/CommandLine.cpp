// Any bytes as a command line, cut at NUL, of a tree with every form and of the program's own. Parsing ends
// in a command to run, whose values all stand in the line, or in a text: it is UTF-8, not empty, and its
// status is that of a request or of a wrong line, never of a failure within.
#include <algorithm>

#include "ArgumentParser/ArgumentParser.h"
#include "ArgumentParser/messages/MessageInfo.h"
#include "ArgumentParser/parsing/CommandParser.h"
#include "cli/root/ZeltoCommand.h"
#include "support/Fuzz.h"
#include "text/Unicode.h"

namespace ArgumentParser {

enum class Level { low, high };
template <>
struct EnumeratedValues<Level> {
  static std::vector<EnumeratedValue<Level>> values() { return {{Level::low, "low"}, {Level::high, "high"}}; }
};

namespace {

std::vector<std::string> arguments;

/// A value is an argument, what follows its option's name in the same argument, or a short option out
/// of a cluster that nothing else has claimed.
void expectGiven(const std::string& value) {
  const auto holds = [&](const std::string& argument) {
    return argument.ends_with(value) ||
           (value.starts_with('-') && argument.find(value.substr(1)) != argument.npos);
  };
  fuzz::expect(std::any_of(arguments.begin(), arguments.end(), holds), "a value stands in the line", value);
}
void expectGiven(const std::vector<std::string>& values) {
  for (const std::string& value : values) expectGiven(value);
}

using Single = SingleValueParsingStrategy;
using Array = ArrayParsingStrategy;

struct Everything {
  std::optional<std::string> text, scan, any, joined;
  std::vector<std::string> each, up, files;
  std::optional<double> number;
  std::optional<Level> level, mode;
  int count = 0;
  bool flag = false;
  std::optional<bool> index;

  static Declaration declaration() {
    return command<Everything>({.version = "1"}, [](auto& it) {
      it.option(&Everything::text, "text", {.name = shortAndLong, .defaultAsFlag = "none"});
      it.option(&Everything::scan, "scan", {.name = shortAndLong, .parsing = Single::scanningForValue});
      it.option(&Everything::any, "any", {.name = shortAndLong, .parsing = Single::unconditional});
      it.option(&Everything::joined, "joined", {.name = NameSpecification::customShort("j", true)});
      it.option(&Everything::each, "each",
                {.name = shortAndLong, .parsing = Array::unconditionalSingleValue});
      it.option(&Everything::up, "up", {.name = "-up", .parsing = Array::upToNextOption});
      it.option(&Everything::number, "number").option(&Everything::level, "level");
      it.enumeratedFlag(&Everything::mode, "mode",
                        {.cases = {{Level::low, "calm", shortAndLong}, {Level::high, "busy", shortAndLong}}});
      it.countedFlag(&Everything::count, "verbose", {.name = shortAndLong});
      it.flag(&Everything::flag, "flag", {.name = shortAndLong});
      it.flag(&Everything::index, "index", {.inversion = FlagInversion::prefixedNo});
      it.argument(&Everything::files, "files", {.atLeastOne = true});
    });
  }
  void run() {
    for (const auto& option : {text, scan, any, joined}) {
      if (option && option != "none") expectGiven(*option);
    }
    for (const auto& list : {each, up, files}) expectGiven(list);
    fuzz::expect(!files.empty() && static_cast<std::size_t>(count) <= text::joined(arguments, "").size(),
                 "what is required is there, and nothing counts twice");
  }
};

template <ArgumentArrayParsingStrategy strategy>
struct Rest {
  std::string first;
  std::vector<std::string> rest;
  std::vector<std::string> options;

  static Declaration declaration() {
    return command<Rest>({.commandName = std::to_string(static_cast<int>(strategy))}, [](auto& it) {
      it.argument(&Rest::first, "first").argument(&Rest::rest, "rest", {.parsing = strategy});
      it.option(&Rest::options, "options", {.name = shortAndLong, .parsing = Array::remaining});
    });
  }
  void run() {
    expectGiven(first);
    for (const auto& list : {rest, options}) expectGiven(list);
  }
};

struct Root {
  static Declaration declaration() {
    using Strategy = ArgumentArrayParsingStrategy;
    return command<Root>({.subcommands = {type<Everything>(), type<Rest<Strategy::allUnrecognized>>(),
                                          type<Rest<Strategy::postTerminator>>(),
                                          type<Rest<Strategy::captureForPassthrough>>()},
                          .defaultSubcommand = type<Everything>()});
  }
};

/// Parses, and runs the command if its values can be looked at.
void check(const CommandTree& tree, bool runs) {
  const Outcome outcome = CommandParser(tree).parse(arguments);
  if (const Run* run = std::get_if<Run>(&outcome)) {
    if (runs) run->record->run();
    return;
  }
  const MessageInfo info = messageInfo(outcome, tree);
  const std::string message = info.fullText();
  fuzz::expectUTF8(message, "a message");
  fuzz::expect(!message.empty() && info.status() == (info.goesToStandardOutput() ? 0 : 64),
               "a line that names no command to run is a request or a fault of the line", message);
}

}  // namespace
}  // namespace ArgumentParser

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace ArgumentParser;
  static const CommandTree everything(type<Root>()), program(type<zelto::ZeltoCommand>());
  arguments.clear();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  for (const std::string_view each : text::split(bytes, '\0')) arguments.push_back(text::repairedUTF8(each));
  check(everything, true);
  check(program, false);
  return 0;
}
