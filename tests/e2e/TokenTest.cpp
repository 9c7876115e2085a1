// Where the token goes, and what else the system's calls tell in a session of all commands.
#include <filesystem>

#include "e2e/Zelto.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

using testing::AnyOf;
using testing::HasSubstr;

/// The program under strace, which tells of every call but reads, of the children's arguments and
/// environments, and of what stands at the end of each descriptor.
struct Traced : Zelto {
  Traced() : Zelto(ZELTO_LAUNCHER_HERE) {
    std::filesystem::remove(home / "bin/zelto");
    script("bin/zelto", "exec strace -A -o '" + (home / "trace") + "' -fqvyy -s 9999999 -e trace='!read' '" +
                            ZELTO_LAUNCHER_HERE + "' \"$@\"\n");
    // The leak check cannot work under strace.
    environment["ASAN_OPTIONS"] += ":detect_leaks=0";
  }
  void script(const std::string& name, const std::string& text) const {
    support::writeFile(home / name, "#!/bin/sh\n" + text);
    std::filesystem::permissions(home / name, std::filesystem::perms::owner_all);
  }
};

TEST(Token, GoesToTheSocketAlone) {
  Traced zelto;
  if (zelto.shell("strace -o /dev/null true").status != 0)
    GTEST_SKIP() << "without strace nobody sees where the token goes";
  for (const support::Case& each : casesIn("responses.txt")) {
    const support::RawServer server(answers(each));
    zelto.lookAt(server);
    zelto.shell(each.input);
  }
  const support::RawServer server({support::response(R"({"error":"gone"})", 404), support::response("{}")});
  zelto.lookAt(server);
  std::string conversation;
  for (const support::Case& each : casesIn("agent.txt")) conversation += each.input + "\n" + each.all("&");
  for (const support::Case& each : casesIn("tools.txt")) conversation += toolCall(each.input);
  zelto.shell("zelto mcp serve", conversation);

  zelto.script("launcher", "mv hidden.json control.json\n");
  for (const char* command : {"zelto", "zelto mcp serve", "zelto api start"}) {
    zelto.shell("mv control.json hidden.json");
    zelto.shell(command, toolCall("zelto_start_server {}"));
  }
  zelto.shell(
      "mkdir .cursor; zelto mcp install all; zelto mcp; zelto --help; zelto --version; zelto rules --nope");

  const std::string trace = support::contentsOf(zelto.home / "trace"), token = "secret-token";
  int sent = 0, replies = 0;
  for (const std::string_view line : text::split(trace, '\n')) {
    // The server writes each reply at once: one of them, and all of it.
    if (line.find("jsonrpc") != line.npos) {
      EXPECT_EQ(line.find("jsonrpc"), line.rfind("jsonrpc")) << line;
      EXPECT_THAT(std::string(line.substr(line.rfind('}'))), testing::StartsWith(R"(}\n", )")) << line;
      ++replies;
    }
    const std::size_t at = line.find(token);
    if (at == line.npos) continue;
    ++sent;
    EXPECT_THAT(std::string(line.substr(0, at)),
                testing::MatchesRegex(R"([0-9]+ +sendto\([0-9]+<TCP:\[[^]]+]>, "[A-Z]+ [^ ]+ HTTP/1.1\\r\\n)"
                                      R"(Host: [^ ]+\\r\\nAuthorization: Bearer )"));
    EXPECT_TRUE(line.substr(at + token.size()).starts_with("\\r\\nContent-Type: ") &&
                line.find(token, at + 1) == line.npos)
        << line;
  }
  EXPECT_GT(sent, 150);
  EXPECT_GT(replies, 60);
  // `watch` waits 20 seconds longer than the 12.5 that the application holds its poll.
  EXPECT_THAT(trace,
              AnyOf(HasSubstr(R"(SO_RCVTIMEO_OLD, " \0\0\0)"), HasSubstr("SO_RCVTIMEO_OLD, {tv_sec=32,")));
}

}  // namespace
}  // namespace zelto
