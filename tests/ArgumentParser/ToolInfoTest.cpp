// The dump: what it holds, and that reading it gives back what was written.

#include <gmock/gmock.h>

#include "ArgumentParser/dump/MakeToolInfo.h"
#include "Outcome.h"

namespace ArgumentParser {

enum class Tone { low, high };
template <>
struct EnumeratedValues<Tone> {
  static std::vector<EnumeratedValue<Tone>> values() {
    return {{Tone::low, "low", "Far down"}, {Tone::high, "high"}};
  }
};

namespace {

struct Common {
  bool hidden = false, index = false;
  static void arguments(Arguments<Common>& it) {
    it.flag(&Common::hidden, "hidden", {.help = ArgumentHelp::hidden()});
    it.flag(&Common::index, "index",
            {.help = "Keep\tit",
             .name = shortAndLong,
             .inversion = FlagInversion::prefixedNo,
             .defaultValue = false});
  }
};

struct Play {
  std::vector<std::string> files, rest;
  std::optional<std::string> folder, command_, word, other, chosen;
  Tone tone = Tone::low;
  Common common;

  static Declaration declaration() {
    return command<Play>({.abstract = "Play a/b", .discussion = "Loud.", .aliases = {"p"}}, [](auto& it) {
      it.argument(&Play::files, "files",
                  {.help = "Which", .atLeastOne = true, .completion = CompletionKind::file({"wav", "ogg"})});
      it.option(&Play::tone, "tone", {.defaultValue = Tone::high});
      it.option(&Play::folder, "folder", {.completion = CompletionKind::directory()});
      it.option(&Play::command_, "command", {.completion = CompletionKind::shellCommand("ls -1 \"é\"")});
      it.option(&Play::word, "word",
                {.parsing = SingleValueParsingStrategy::scanningForValue,
                 .completion = CompletionKind::custom(
                     [](const auto&, auto, auto) { return std::vector<std::string>(); })});
      it.option(&Play::other, "other",
                {.name = "-x",
                 .completion = CompletionKind::customDeprecated([](const auto& words) { return words; })});
      it.option(&Play::chosen, "chosen", {.completion = CompletionKind::list({"", "b"})});
      it.group(&Play::common, "common", {.title = "Shared"});
      it.argument(&Play::rest, "rest", {.parsing = ArgumentArrayParsingStrategy::allUnrecognized});
    });
  }
  void run() {}
};

struct Player {
  static Declaration declaration() {
    return command<Player>({.superCommandName = "super",
                            .version = "1",
                            .subcommands = {type<Play>()},
                            .defaultSubcommand = type<Play>()});
  }
};

TEST(ToolInfo, IsWrittenWholeAndReadBack) {
  const CommandTree tree(type<Player>());
  const ToolInfoV0 info = makeToolInfo({&tree.root()});
  support::expectSnapshot("ArgumentParser/dump.json", dumpText(info));
  EXPECT_EQ(readToolInfo(dumpText(info)), info);
  EXPECT_EQ(outcome(type<Player>(), {"--experimental-dump-help"}).text, dumpText(info));

  // Asked alone, a command says the same, and has the help command below it.
  CommandInfoV0 play = makeToolInfo({&tree.root(), tree.root().children().front().get()}).command;
  ASSERT_EQ(play.subcommands.size(), 1u);
  EXPECT_EQ(play.subcommands.front().commandName, "help");
  play.subcommands.clear();
  EXPECT_EQ(play, info.command.subcommands.front());
}

TEST(ToolInfo, ReaderIsStrictAboutShape) {
  const CommandInfoV0 read =
      readToolInfo(R"({"serializationVersion" : 0, "command" : {"commandName" : "c", "arguments" : [
      {"kind" : "flag", "isOptional" : true, "isRepeating" : false, "parsingStrategy" : "default",
       "completionKind" : {"customAsync" : {}}}], "subcommands" : [{"commandName" : "d", "shouldDisplay" : false}]}})")
          .command;
  EXPECT_TRUE(read.shouldDisplay);
  EXPECT_TRUE(read.arguments.front().shouldDisplay);
  EXPECT_EQ(read.arguments.front().completionKind, CompletionKindV0{"customAsync"});
  EXPECT_FALSE(read.subcommands.front().shouldDisplay);
  EXPECT_EQ(readToolInfoHeader(R"({"serializationVersion" : 1, "later" : []})").serializationVersion, 1);
  for (const auto& row : support::rowsIn(SOURCES "/expected/unreadable_dumps.json")) {
    EXPECT_THAT([&] { readToolInfo(row[0]); }, testing::ThrowsMessage<ToolInfoError>(row[1])) << row[0];
  }
}

}  // namespace
}  // namespace ArgumentParser
