#include "commands/Api.h"

#include "cli/CLICall.h"
#include "cli/CLIError.h"
#include "cli/Out.h"
#include "client/ControlFile.h"
#include "client/Errors.h"
#include "client/StartAPI.h"
#include "client/Timeouts.h"
#include "text/TextError.h"

namespace zelto {
namespace {

using ArgumentParser::command;
using ArgumentParser::type;
using Out::Style;

/// The credentials, or nothing if the API counts as off. This command reports every failure as a state, never
/// as an error.
std::optional<APICredentials> credentialsIfOn() {
  try {
    return readCredentials();
  } catch (const MCPError&) {
    return std::nullopt;
  }
}

/// Asks without starting anything, even if the API goes away in between.
std::optional<JSONDocument> healthIfAnswering() {
  try {
    return expectObject(apiCall({.method = "GET", .path = "/health", .timeout = settings.requestTimeout}));
  } catch (const text::TextError&) {
    return std::nullopt;
  }
}

void reportOff() {
  if (settings.jsonMode) return Out::json(JSONObject{{"running", false}, {"controlFile", controlFilePath()}});
  Out::fields({{"api", Out::paint("off", Style::yellow)}});
  Out::hint("Turn it on with: zelto api start");
}

}  // namespace

ArgumentParser::Declaration Api::declaration() {
  return command<Api>({.commandName = "api",
                       .abstract = "Zelto's local API",
                       .subcommands = {type<Status>(), type<Start>(), type<Stop>()},
                       .defaultSubcommand = type<Status>()});
}

ArgumentParser::Declaration Api::Status::declaration() {
  return command<Status>({.abstract = "Whether the API is up, and where"},
                         [](auto& it) { it.group(&Status::options, "options"); });
}

void Api::Status::run() const {
  options.apply();
  const auto credentials = credentialsIfOn();
  if (!credentials) return reportOff();
  const auto health = healthIfAnswering();
  if (settings.jsonMode) {
    return Out::json(JSONObject{{"running", health.has_value()},
                                {"host", credentials->host},
                                {"port", credentials->port},
                                {"controlFile", controlFilePath()},
                                {"health", health ? JSONValue(health->root()) : JSONObject()}});
  }
  Out::fields(
      {{"api", health ? Out::paint("running", Style::green) : Out::paint("not answering", Style::red)},
       {"address", credentials->host + ":" + std::to_string(credentials->port)},
       {"control", controlFilePath()},
       {"version", health ? Out::text(*health, "version") : ""}});
}

ArgumentParser::Declaration Api::Start::declaration() {
  return command<Start>(
      {.abstract = "Start the local API", .discussion = "Launches Zelto if it is not running."},
      [](auto& it) { it.group(&Start::options, "options"); });
}

void Api::Start::run() const {
  options.apply();
  JSONDocument health;
  try {
    health = ensureAPIRunning(timeouts::start);
  } catch (const MCPError& error) {
    throw CLIError(error.message);
  }
  if (settings.jsonMode) return Out::json(health);
  const std::string version = Out::text(health, "version");
  if (version.empty()) return Out::line(Out::paint(Out::Deed::running));
  Out::done(Out::Deed::running, version);
}

ArgumentParser::Declaration Api::Stop::declaration() {
  return command<Stop>({.abstract = "Stop the local API"},
                       [](auto& it) { it.group(&Stop::options, "options"); });
}

void Api::Stop::run() const {
  options.apply();
  const JSONDocument outcome = stopAPI();
  if (settings.jsonMode) return Out::json(outcome);
  Out::done(Out::Deed::stopped, "and it stays off until it is started again");
}

}  // namespace zelto
