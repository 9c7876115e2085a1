// Turning the API on, by itself and by hand, and all that can go wrong on the way.
#include <filesystem>

#include "e2e/Zelto.h"

namespace zelto {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

constexpr const char* starting = "Starting Zelto's local API…\n";

TEST(Start, HappensOnDemandAndOnce) {
  Zelto zelto;
  EXPECT_THAT(zelto.shell("zelto docs; zelto api status").output, HasSubstr("api  off\n"));
  // The start takes longer than a request may.
  zelto.environment["ZELTO_STANDIN_START_DELAY"] = "2";
  const auto first = zelto.shell("zelto groups -t 1 --json"), second = zelto.shell("zelto groups --json");
  EXPECT_EQ(first.error, starting);
  EXPECT_THAT(first.output, StartsWith("[\n  {"));
  EXPECT_EQ(second.error, "");
  EXPECT_EQ(second.output, first.output);
  EXPECT_EQ(zelto.shell("zelto api stop").output, "Stopped and it stays off until it is started again\n");
  EXPECT_THAT(zelto.shell("zelto api").output, StartsWith("api  off\n"));
}

/// The program with a launcher that a test writes; an empty one does not exist.
struct Launched : support::Application {
  Launched() : Application(ZELTO_LAUNCHER_HERE, STANDIN) {
    environment["ZELTO_CONTROL_FILE"] = home / "control.json";
    support::writeFile(home / "ready.json", server.controlFile());
  }
  support::Outcome run(const std::string& launcher, const std::string& command,
                       const std::string& input = {}) const {
    for (const char* name : {"launcher", "calls", "control.json"}) fs::remove(home / name);
    if (!launcher.empty()) {
      support::writeFile(home / "launcher", "#!/bin/sh\nprintf '%s|' \"$@\" >>calls\n" + launcher);
      fs::permissions(home / "launcher", fs::perms::owner_all);
    }
    return shell(command, input);
  }

  support::RawServer server{[this](int connection, const std::string& request) {
    // With a file of that name the API does not answer yet, or is off once it has answered.
    if (fs::remove(home / "early")) return;
    if (fs::remove(home / "fleeting")) fs::remove(home / "control.json");
    const bool isBusy = request.starts_with("GET /groups") || request.find("wait=") != request.npos;
    support::sendBytes(connection, isBusy ? support::response(R"({"error":"busy"})", 503)
                                          : support::response(R"({"version":"1.4.2"})"));
  }};
};

TEST(Start, HandsTheURLToTheRecordedApplication) {
  Launched zelto;
  const std::string app = zelto.home / "Zelto copy.app", locator = zelto.home / ".well-known/mcp/zelto.json";
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {R"({"app":{"path":")" + zelto.home.path + R"(/none"}})", ""},
      {R"({"app":")" + app + "\"}", ""},
      {"{\"app\":", ""},
      {R"({"app":{"path":")" + app + R"("},"x":1})", "-a|" + app + "|"}};
  support::writeFile(app + "/x", "");
  for (const auto& [text, opener] : cases) {
    if (!text.empty()) support::writeFile(locator, text);
    const auto outcome = zelto.run("echo noise; cp ready.json control.json; exit 7",
                                   "zelto groups enable Work; zelto api stop");
    EXPECT_EQ(outcome.output, "on  every rule in Work\nStopped and it stays off until it is started again\n");
    EXPECT_EQ(outcome.error, starting);
    EXPECT_EQ(support::contentsOf(zelto.home / "calls"),
              opener + "zelto://mcp/start|" + opener + "zelto://mcp/stop|")
        << text;
  }
}

TEST(Start, ReportsWhatWentWrong) {
  const Launched zelto;
  const std::string on = "cp ready.json control.json", first = starting, none = "could not run /usr/bin/open";
  struct Case {
    std::string launcher, command, notice, error;
  };
  const Case cases[] = {
      {"", "zelto rules", first, none},
      {"", "zelto api start", "", none},
      {"", on + "; touch fleeting; zelto watch --only events", first, none},
      {"printf '\\n no application '; printf '\\n no application \\302\\240\\n' >&2", "zelto rules", first,
       "could not reach Zelto: no application"},
      // The launcher's pipe must not become standard output.
      {"echo no application >&2", "zelto rules <&- >&-", first, "could not reach Zelto: no application"},
      // More than a pipe holds.
      {"head -c 300000 /dev/zero | tr '\\0' x >&2", "zelto api start", "",
       "could not reach Zelto: " + std::string(300000, 'x')},
      {on, "zelto groups", first, "HTTP 503: busy"},
      // A follow starts it again, then repeats its poll.
      {on, on + "; touch fleeting; zelto watch --only actions", first, "HTTP 503: busy"},
      {on + "; touch fleeting", "zelto rules", first, "Zelto's local API could not be started."},
      {"exit", "zelto rules -t 60", first,
       "asked Zelto to start its API but it did not come up in time. Open Zelto and check Settings, AI "
       "agents."},
  };
  for (const auto& [launcher, command, notice, error] : cases) {
    SCOPED_TRACE(launcher + ": " + command);
    const auto outcome = zelto.run(launcher, command);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.error, notice + "Error: " + error + "\n");
    EXPECT_EQ(outcome.status, 1);
  }
  // The server ignores SIGPIPE; what it starts does not.
  EXPECT_EQ(
      zelto
          .run("sh -c 'kill -PIPE $$; echo SIGPIPE is ignored >&2'; " + on, "zelto mcp serve",
               toolCall("zelto_start_server {}"))
          .output,
      R"({"jsonrpc":"2.0","id":9,"result":{"content":[{"text":"{\n  \"version\": \"1.4.2\"\n}","type":"text"}]}})"
      "\n");
  // None of these is a failure: a complaint that is no text, a first silence, no API to stop.
  EXPECT_EQ(zelto.run("printf '\\377' >&2; touch early; " + on, "zelto api start").output, "Running 1.4.2\n");
  EXPECT_EQ(zelto.run("", "zelto api stop").output, "Stopped and it stays off until it is started again\n");
}

}  // namespace
}  // namespace zelto
