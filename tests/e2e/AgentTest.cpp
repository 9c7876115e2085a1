// The MCP server as an agent meets it: what it answers, and what each tool asks of the API.
#include "e2e/Zelto.h"
#include "json/JSONText.h"

namespace zelto {
namespace {

const std::string ping = R"({"id":9,"method":"ping"})", pong = R"({"jsonrpc":"2.0","id":9,"result":{}})";

TEST(Agent, IsAnsweredWhereItShouldBe) {
  Zelto zelto;
  for (const support::Case& expected : casesIn("agent.txt")) {
    const auto place = expected.place();
    const support::RawServer server(answers(expected));
    zelto.lookAt(server);
    const auto outcome = zelto.shell("zelto mcp serve", expected.input + "\n" + expected.all("&"));
    EXPECT_EQ(outcome.output, expected.all("="));
    EXPECT_EQ(outcome.error, "[zelto-mcp] starting; control file: " + (zelto.home / "control.json") + "\n" +
                                 expected.all("!"));
    EXPECT_EQ(outcome.status, expected.status());
    EXPECT_EQ(summary(server.requests()), expected.all(">"));
  }
}

TEST(Agent, IsAnsweredAfterAnyBytes) {
  const Zelto zelto;
  const std::string deep = std::string(512, '[') + std::string(512, ']');
  for (const std::string& ignored : {std::string(1'000'000, '['), R"({"x":)" + deep + "," + ping.substr(1),
                                     std::string("{\"id\":\"\xff\",\"method\":\"ping\"}")}) {
    EXPECT_EQ(zelto.shell("zelto mcp serve", ignored + "\r\n" + ping).output, pong + "\n")
        << ignored.substr(0, 100);
  }
  const std::string large = R"({"id":9,"method":"ping","params":")" + std::string(3'000'000, 'x') + "\"}\n";
  EXPECT_EQ(zelto.shell("zelto mcp serve", large + ping).output, pong + "\n" + pong + "\n");
}

TEST(Agent, ReachesTheAPIWithEachTool) {
  Zelto zelto;
  const support::RawServer server({support::response("[true]")});
  zelto.lookAt(server);
  std::string calls, requests, replies;
  for (const support::Case& expected : casesIn("tools.txt")) {
    calls += toolCall(expected.input);
    requests += expected.all(">");
    replies += R"({"jsonrpc":"2.0","id":9,"result":{"content":[{"text":"[\n  true\n]","type":"text"}]}})";
    replies += "\n";
  }
  EXPECT_EQ(zelto.shell("zelto mcp serve", calls).output, replies);
  EXPECT_EQ(summary(server.requests()), requests);

  // No tool is offered that is not among them, and the offer stays the same.
  const std::string lists =
      zelto.shell("zelto mcp serve", "{\"method\":\"tools/list\"}\n{\"method\":\"tools/list\",\"params\":7}")
          .output;
  const std::string list = lists.substr(0, lists.size() / 2),
                    tested = support::contentsOf(SOURCES "/tools.txt");
  EXPECT_EQ(lists, list + list);
  const json::JSONValue reply = json::parse(list).value();
  for (const json::JSONValue& tool : *reply.object()->find("result")->object()->find("tools")->array()) {
    EXPECT_THAT(tested, testing::HasSubstr(*tool.object()->find("name")->string() + " "));
  }
}

}  // namespace
}  // namespace zelto
