#include "client/ControlFile.h"

#include <optional>

#include "client/Errors.h"
#include "json/JSONText.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "text/Number.h"

namespace zelto {
namespace {

constexpr const char* notRunning =
    "Zelto's local API is not running, so there are no credentials to use. Turn it on with the "
    "zelto_start_server tool (or in Zelto: Settings, AI agents, Start). It stays on across launches until "
    "it is stopped.";

std::optional<std::int64_t> portNumber(const json::JSONValue& port) {
  if (const auto* digits = port.string()) return text::decimal<std::int64_t>(*digits);
  return port.exactInteger();
}

std::optional<APICredentials> credentialsFrom(const std::string& contents) {
  const auto value = json::parse(contents);
  const json::JSONObject* object = value ? value->object() : nullptr;
  if (object == nullptr) return std::nullopt;
  const json::JSONValue* host = object->find("host");
  const json::JSONValue* port = object->find("port");
  const json::JSONValue* token = object->find("token");
  if (host == nullptr || port == nullptr || token == nullptr) return std::nullopt;
  const auto number = portNumber(*port);
  if (!host->string() || !number || !token->string()) return std::nullopt;
  return APICredentials{*host->string(), *number, *token->string()};
}

}  // namespace

std::string controlFilePath() {
  if (const auto named = platform::environment("ZELTO_CONTROL_FILE"); named && !named->empty()) {
    return platform::expandTilde(*named);
  }
  return platform::expandTilde("~/Library/Application Support/Zelto/control.json");
}

APICredentials readCredentials() {
  const std::string path = controlFilePath();
  const auto text = platform::readSmallFile(path);
  if (!text) throw MCPError(Cause::off, notRunning);
  if (auto credentials = credentialsFrom(*text)) return *std::move(credentials);
  throw MCPError(Cause::controlFile, "could not read " + path);
}

}  // namespace zelto
