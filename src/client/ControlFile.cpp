#include "client/ControlFile.h"

#include <optional>

#include "client/Errors.h"
#include "json/JSONDocument.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "text/Number.h"

namespace zelto {
namespace {

constexpr const char* notRunning =
    "Zelto's local API is not running, so there are no credentials to use. Turn it on with the "
    "zelto_start_server tool (or in Zelto: Settings, AI agents, Start). It stays on across launches until "
    "it is stopped.";

std::optional<std::int64_t> portNumber(json::JSONView port) {
  if (const auto digits = port.string()) return text::decimal<std::int64_t>(*digits);
  const auto number = port.number();
  return number ? number->exactInteger() : std::nullopt;
}

std::optional<APICredentials> credentialsFrom(const std::string& contents) {
  const auto document = json::JSONDocument::parse(contents);
  if (!document) return std::nullopt;
  const auto host = document->root()["host"].string(), token = document->root()["token"].string();
  const auto port = portNumber(document->root()["port"]);
  if (!host || !port || !token) return std::nullopt;
  return APICredentials{std::string(*host), *port, std::string(*token)};
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
