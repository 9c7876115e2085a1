// Any bytes as a command line, cut at NUL: whatever they are, parsing ends in a command to run or in a text,
// and the text is UTF-8.
#include <cstdlib>

#include "ArgumentParser/ArgumentParser.h"
#include "ArgumentParser/messages/MessageInfo.h"
#include "ArgumentParser/parsing/CommandParser.h"
#include "text/Unicode.h"

namespace ArgumentParser {

enum class Level { low, high };
template <>
struct EnumeratedValues<Level> {
  static std::vector<EnumeratedValue<Level>> values() { return {{Level::low, "low"}, {Level::high, "high"}}; }
};

namespace {

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
  void run() {}
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
  void run() {}
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

}  // namespace
}  // namespace ArgumentParser

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace ArgumentParser;
  static const CommandTree tree(type<Root>());
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> arguments;
  for (const std::string_view each : text::split(bytes, '\0')) arguments.push_back(text::repairedUTF8(each));
  const Outcome outcome = CommandParser(tree).parse(arguments);
  const std::string message = messageInfo(outcome, tree).fullText();
  const bool isRun = std::holds_alternative<Run>(outcome);
  if (message.empty() != isRun || !text::isUTF8(message)) std::abort();
  return 0;
}
