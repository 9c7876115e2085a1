#include "client/StartAPI.h"

#include "client/ControlFile.h"
#include "client/Errors.h"
#include "client/Timeouts.h"
#include "platform/Clock.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "platform/Launcher.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

/// The path that the application last recorded, if the application is still there. Without it, the system
/// finds the application itself.
std::optional<std::string> recordedApplication() {
  const auto text = platform::readSmallFile(platform::expandTilde("~/.well-known/mcp/zelto.json"));
  const auto locator = text ? JSONDocument::parse(*text) : std::nullopt;
  if (!locator) return std::nullopt;
  const auto path = locator->root()["app"]["path"].string();
  if (!path || !platform::fileExists(std::string(*path))) return std::nullopt;
  return std::string(*path);
}

}  // namespace

std::string openURL(const std::string& url) {
  const auto complaint = platform::openURL(launcherPath, url, recordedApplication());
  if (!complaint) throw MCPError(Cause::launcher, "could not run /usr/bin/open");
  return text::isUTF8(*complaint) ? std::string(text::trimmed(*complaint)) : std::string();
}

JSONDocument ensureAPIRunning(double timeout) {
  const std::string complaint = openURL("zelto://mcp/start");
  if (!complaint.empty()) throw MCPError(Cause::launcher, "could not reach Zelto: " + complaint);
  const double deadline = platform::steadySeconds() + timeout;
  while (platform::steadySeconds() < deadline) {
    // A look that fails is made again.
    if (platform::fileExists(controlFilePath())) {
      try {
        return apiCall({.method = "GET", .path = "/health"});
      } catch (const MCPError&) {
        // Not up yet. Whatever the reason, the deadline ends the wait.
      }
    }
    platform::sleepSeconds(timeouts::startPause);
  }
  throw MCPError(
      Cause::notStarted,
      "asked Zelto to start its API but it did not come up in time. Open Zelto and check Settings, AI "
      "agents.");
}

JSONDocument stopAPI() {
  try {
    openURL("zelto://mcp/stop");
  } catch (const MCPError&) {
    // If the application cannot be reached, there is no API to stop.
  }
  constexpr std::string_view outcome =
      R"({"ok":true,"stopped":true,"note":"The API is off and will stay off until it is started again."})";
  return JSONDocument::parse(outcome).value();
}

}  // namespace zelto
