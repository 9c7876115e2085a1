// From the arguments to the command about to run: the whole tree declared, one line parsed.
#include <benchmark/benchmark.h>

#include "ArgumentParser/ArgumentParser.h"
#include "cli/root/ZeltoCommand.h"

namespace {

void parse(benchmark::State& state, const std::vector<std::string>& arguments) {
  for (auto _ : state) {
    const ArgumentParser::CommandTree tree(ArgumentParser::type<zelto::ZeltoCommand>());
    benchmark::DoNotOptimize(ArgumentParser::parseAsRoot(tree, arguments));
  }
}

BENCHMARK_CAPTURE(parse, health, {});
BENCHMARK_CAPTURE(parse, rulesList, {"rules", "--scope", "visible", "--json"});
BENCHMARK_CAPTURE(parse, rulesAdd,
                  {"rules", "add", "--trigger", "cron", "--set", "cronExpression=0 9 * * *", "--set",
                   "shellScript=say morning", "--action", "shellScript", "-t", "3"});
BENCHMARK_CAPTURE(parse, rulesRemove100000, [] {
  std::vector<std::string> arguments(100'002, "3f2a");
  arguments[0] = "rules";
  arguments[1] = "rm";
  return arguments;
}());

}  // namespace
