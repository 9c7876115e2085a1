// Turning the API on, by itself and by hand, and all that can go wrong on the way.
#include <filesystem>

#include "e2e/Zelto.h"

namespace zelto {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* starting = "Starting Zelto's local API…\n";

TEST(Start, HappensOnDemandAndOnce) {
  Zelto zelto;
  EXPECT_THAT(zelto.shell("zelto docs; zelto api status").output, HasSubstr("api  off\n"));
  EXPECT_EQ(zelto.shell("zelto api status --json").output,
            "{\n  \"controlFile\": \"" + zelto.home.path +
                "/Library/Application Support/Zelto/control.json\",\n  \"running\": false\n}\n");
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

TEST(Start, IsNoAnswerToAStaleControlFile) {
  Zelto zelto;
  const std::string control = [&] {
    const support::RawServer server({""});
    zelto.lookAt(server);
    return "127.0.0.1:" + std::to_string(server.port);
  }();
  const auto outcome = zelto.shell("zelto rules");
  EXPECT_EQ(outcome.output + outcome.error,
            "Error: cannot reach Zelto (Connection refused). Is it running?\n");
  EXPECT_EQ(outcome.status, 1);
  const auto status = zelto.shell("zelto api status", "", true);
  EXPECT_EQ(marked(status.output), "<2>api    </>  <31>not answering</>\n<2>address</>  " + control +
                                       "\n<2>control</>  " + (zelto.home / "control.json") + "\n");
  const auto json = zelto.shell("zelto api --json");
  EXPECT_THAT(json.output, HasSubstr("\"health\": {},\n  \"host\": \"127.0.0.1\",\n  \"port\": "));
  EXPECT_THAT(json.output, HasSubstr("\"running\": false\n"));
  EXPECT_EQ(status.status + json.status, 0);
  support::writeFile(zelto.home / "control.json", "{}");
  EXPECT_EQ(zelto.shell("zelto rules").error,
            "Error: could not read " + (zelto.home / "control.json") + "\n");
  EXPECT_THAT(zelto.shell("zelto api").output, StartsWith("api  off\n"));
}

/// The program with a launcher that a test writes.
struct Launched : support::Application {
  Launched() : Application(ZELTO_LAUNCHER_HERE, STANDIN) {
    environment["ZELTO_CONTROL_FILE"] = home / "control.json";
    support::writeFile(home / "ready.json", server.controlFile());
  }
  void launcher(const std::string& script) const {
    support::writeFile(home / "launcher", "#!/bin/sh\nprintf '%s|' \"$@\" >>calls\n" + script);
    std::filesystem::permissions(home / "launcher", std::filesystem::perms::owner_all);
    std::filesystem::remove(home / "calls");
    std::filesystem::remove(home / "control.json");
  }
  std::string calls() const { return support::contentsOf(home / "calls"); }

  std::string rules = support::response("[]");
  bool vanishes = false;
  support::RawServer server{[this](int connection, const std::string& request) {
    const bool probe = request.starts_with("GET /health");
    if (vanishes) std::filesystem::remove(home / "control.json");
    support::sendBytes(connection, probe ? support::response(R"({"version":"1.4.2"})") : rules);
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
    zelto.launcher("echo noise; cp ready.json control.json; exit 7");
    const auto outcome = zelto.shell("zelto rules");
    EXPECT_EQ(outcome.output, "No rules yet.\n") << outcome.error;
    EXPECT_EQ(outcome.error, starting);
    EXPECT_EQ(zelto.calls(), opener + "zelto://mcp/start|") << text;
  }
  EXPECT_EQ(zelto.shell("zelto api stop").status, 0);
  EXPECT_THAT(zelto.calls(), testing::EndsWith("|zelto://mcp/stop|"));
}

TEST(Start, ReportsWhatWentWrong) {
  Launched zelto;
  const auto error = [&](const std::string& command) {
    const auto outcome = zelto.shell(command);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    return outcome.error;
  };
  EXPECT_EQ(error("zelto rules"), std::string(starting) + "Error: could not run /usr/bin/open\n");
  EXPECT_EQ(error("zelto api start"), "Error: could not run /usr/bin/open\n");
  EXPECT_EQ(zelto.shell("zelto api stop").output, "Stopped and it stays off until it is started again\n");

  // More than a pipe holds, and bytes that are no text.
  zelto.launcher("printf '\\n no application '; printf '\\n no application \\302\\240\\n' >&2");
  EXPECT_EQ(error("zelto rules"), std::string(starting) + "Error: could not reach Zelto: no application\n");
  zelto.launcher("head -c 300000 /dev/zero | tr '\\0' x >&2");
  EXPECT_EQ(error("zelto api start"), "Error: could not reach Zelto: " + std::string(300000, 'x') + "\n");
  zelto.launcher("printf '\\377' >&2; cp ready.json control.json");
  EXPECT_EQ(zelto.shell("zelto api start").output, "Running 1.4.2\n");

  zelto.launcher("cp ready.json control.json");
  zelto.rules = support::response(R"({"error":"busy"})", 503);
  EXPECT_EQ(error("zelto rules"), std::string(starting) + "Error: HTTP 503: busy\n");
  zelto.launcher("cp ready.json control.json");
  zelto.vanishes = true;
  EXPECT_EQ(error("zelto rules"), std::string(starting) + "Error: Zelto's local API could not be started.\n");
  zelto.launcher("");
  EXPECT_EQ(error("zelto rules -t 60"),
            std::string(starting) +
                "Error: asked Zelto to start its API but it did not come up in time. Open Zelto and check "
                "Settings, AI agents.\n");
}

}  // namespace
}  // namespace zelto
