#include "commands/Script.h"

#include "cli/CLICall.h"
#include "cli/CLIError.h"
#include "cli/Out.h"
#include "client/Timeouts.h"
#include "client/Wire.h"
#include "platform/Environment.h"
#include "platform/FileDescriptor.h"
#include "platform/Files.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

using ArgumentParser::command;
using ArgumentParser::type;
using Out::Style;

std::string readScript(const std::string& file) {
  if (file == "-") {
    auto input = platform::readToEnd(platform::standardInput);
    return input && text::isUTF8(*input) ? *std::move(input) : std::string();
  }
  auto contents = platform::readFile(platform::expandTilde(file));
  if (!contents || !text::isUTF8(*contents)) throw CLIError("cannot read " + file);
  return *std::move(contents);
}

JSONObject parseValues(const std::vector<std::string>& texts) {
  JSONObject values;
  for (const std::string& text : texts) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) throw CLIError(text + " is not key=value");
    values.set(text.substr(0, equals), text.substr(equals + 1));
  }
  return values;
}

void printOutput(JSONView result, const char* key, bool isError) {
  const std::string output = Out::text(result, key);
  const std::string_view trimmed = text::trimmed(output);
  if (trimmed.empty()) return;
  Out::section(key);
  Out::line(isError ? Out::paint(trimmed, Style::red) : trimmed);
}

void printValues(JSONView values) {
  std::vector<Out::Pair> pairs;
  for (const auto& [key, value] : values.members())
    pairs.emplace_back("{{" + std::string(key) + "}}", Out::text(value));
  if (pairs.empty()) return;
  Out::section("Values the action would get");
  Out::fields(pairs);
}

}  // namespace

ArgumentParser::Declaration Script::declaration() {
  return command<Script>({.abstract = "Scripts, without a rule around them",
                          .subcommands = {type<Test>()},
                          .defaultSubcommand = type<Test>()});
}

ArgumentParser::Declaration Script::Test::declaration() {
  return command<Test>(
      {.abstract = "Run a script the way a rule would, and print what it returns",
       .discussion = "zelto script test check.sh\necho 'uptime' | zelto script test -"},
      [](auto& it) {
        it.argument(&Test::file, "file", {.help = "Path to the script, or - for stdin"});
        it.option(
            &Test::runner, "runner",
            {.help = "/bin/zsh, /usr/bin/python3, or any executable taking -c", .defaultValue = "/bin/zsh"});
        it.option(&Test::timeout, "timeout",
                  {.help = "Seconds before it is killed", .defaultValue = 30.0, .transform = parseSeconds});
        it.option(&Test::value, "value", {.help = "key=value to hand the script, repeatable"});
        it.group(&Test::options, "options");
      });
}

void Script::Test::run() const {
  options.apply();
  std::string script = readScript(file);
  if (text::trimmed(script).empty()) throw CLIError("the script is empty");
  JSONObject body{{"runner", runner}, {"script", std::move(script)}, {"timeout", timeout}};
  if (!value.empty()) body.set("values", parseValues(value));
  const JSONDocument result = expectObject(cliCall({.method = "POST",
                                                    .path = "/scripts",
                                                    .body = std::move(body),
                                                    .timeout = timeout + timeouts::scriptMargin}));
  if (settings.jsonMode) return Out::json(result);

  const std::int64_t exitCode = integerIn(result, "exitCode");
  Out::fields({{"exit", Out::paint(std::to_string(exitCode), exitCode == 0 ? Style::green : Style::red)},
               {"took", Out::seconds(numberIn(result, "duration"))},
               {"runner", Out::text(result, "runner")}});
  printOutput(result, "stdout", false);
  printOutput(result, "stderr", true);
  printValues(result.root()["parsedValues"]);
}

}  // namespace zelto
