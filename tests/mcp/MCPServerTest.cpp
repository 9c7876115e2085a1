#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "api/ControlFile.h"
#include "json/JSONText.h"
#include "mcp/MCPServer.h"
#include "support/RawServer.h"

namespace zelto {
namespace {

struct Session {
  std::vector<std::string> writes;  ///< what each write to standard output held
  std::string diagnostics;
  int status = 0;
};

/// Runs the server in a child process, its standard output a socket that keeps the borders between writes.
Session converse(const std::string& input) {
  const support::TemporaryDirectory directory;
  support::writeFile(directory / "in", input);
  int out[2];
  EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET, 0, out), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(::open((directory / "in").c_str(), O_RDONLY), STDIN_FILENO);
    ::dup2(::creat((directory / "err").c_str(), 0600), STDERR_FILENO);
    ::dup2(out[1], STDOUT_FILENO);
    serve();
  }
  ::close(out[1]);
  Session session;
  std::string packet(1 << 20, '\0');
  for (ssize_t count; (count = ::read(out[0], packet.data(), packet.size())) > 0;) {
    session.writes.emplace_back(packet, 0, static_cast<std::size_t>(count));
  }
  ::close(out[0]);
  ::waitpid(child, &session.status, 0);
  session.diagnostics = support::contentsOf(directory / "err");
  return session;
}

/// A JSON text with the members of its objects in one order.
std::string inOrder(const std::string& text) {
  return json::text(json::parse(text).value(), json::compact).value();
}

std::string result(const std::string& id, const std::string& value) {
  return R"({"jsonrpc":"2.0","id":)" + id + R"(,"result":)" + value + "}";
}
std::string toolResult(const std::string& text, bool failed) {
  return result(
      "1", R"({"content":[{"type":"text","text":")" + text + "\"}]" + (failed ? R"(,"isError":true})" : "}"));
}
std::string request(const std::string& method, const std::string& params) {
  return R"({"id":1,"method":")" + method + R"(","params":)" + params + "}\n";
}

void check(const std::string& input, const std::vector<std::string>& expected,
           const std::string& diagnostics = {}) {
  SCOPED_TRACE(input.substr(0, 300));
  const Session session = converse(input);
  EXPECT_EQ(session.status, 0);
  EXPECT_EQ(session.diagnostics,
            "[zelto-mcp] starting; control file: " + controlFilePath() + "\n" + diagnostics);
  ASSERT_EQ(session.writes.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(session.writes[i].find('\n'), session.writes[i].size() - 1) << "one line a write";
    EXPECT_EQ(inOrder(session.writes[i]), inOrder(expected[i]));
  }
}

TEST(MCPServer, AnswersWhatItShouldAndNothingElse) {
  const std::string ping = R"({"id":9,"method":"ping"})", pong = result("9", "{}");
  const std::string ignoring = "[zelto-mcp] ignoring response with no method: ";
  check(ping + "\r\n \t\n\n" + ping + " \t\n" + ping, {pong, pong, pong});
  check(R"({"jsonrpc":"2.0","method":"ping"})", {result("null", "{}")});
  check(R"({"id":1,"method":"notifications/initialized"})", {});
  check(R"({"method":"nope"})", {});
  check(R"({"id":null,"method":"Ping/\""})",
        {R"({"jsonrpc":"2.0","id":null,"error":{"code":-32601,"message":"method not found: Ping/\""}})"});
  check(R"({"id":7,"result":{}})", {}, ignoring + "7\n");
  check(R"({"id":"a\nb","method":5})", {}, ignoring + "\"a\\nb\"\n");
  check(R"({"method":null})", {}, ignoring + "nil\n");
  check("{\n[" + ping + "]\n\"ping\"\n1\nnull\n" + ping + "x\n{\"id\":\"\xff\",\"method\":\"ping\"}\n" + ping,
        {pong});
  // Neither depth nor length ends the server.
  check(std::string(1'000'000, '[') + "\n{\"x\":" + std::string(512, '[') + std::string(512, ']') + "," +
            ping.substr(1) + "\n" + ping,
        {pong});
  check(R"({"id":9,"method":"ping","params":")" + std::string(3'000'000, 'x') + "\"}\n" + ping, {pong, pong});
}

TEST(MCPServer, AgreesToTheVersionItIsAskedFor) {
  const std::string rest =
      R"(","capabilities":{"tools":{}},"serverInfo":{"name":"zelto-mcp","version":"?"}})";
  const std::string asked = result("1", R"({"protocolVersion":"1999-01-01)" + rest);
  const std::string usual = result("1", R"({"protocolVersion":"2024-11-05)" + rest);
  check(request("initialize", R"({"protocolVersion":"1999-01-01"})"), {asked});
  check(request("initialize", R"({"protocolVersion":1})") + request("initialize", "[1]"), {usual, usual});
}

TEST(MCPServer, ReturnsAnIdAsItCame) {
  for (const char* id : {"\"x/\\u0000ü\\\"\"", "0", "-0", "9007199254740993", "-9223372036854775808",
                         "18446744073709551615", "1.5", "1e+300", "true", R"({"a":[1,{"b":null}]})"}) {
    const Session session = converse(std::string(R"({"method":"ping","id":)") + id + "}\n");
    EXPECT_THAT(session.writes, testing::ElementsAre(testing::HasSubstr(std::string("\"id\":") + id + ",")));
  }
}

TEST(MCPServer, ListsTheSameToolsEachTime) {
  const Session session =
      converse("{\"id\":1,\"method\":\"tools/list\"}\n{\"method\":\"tools/list\",\"params\":7}");
  ASSERT_EQ(session.writes.size(), 2u);
  const JSONValue first = *json::parse(session.writes[0])->object()->find("result");
  EXPECT_EQ(first.object()->find("tools")->array()->size(), 28u);
  EXPECT_EQ(inOrder(session.writes[1]), inOrder(result("null", json::text(first, json::compact).value())));
}

TEST(MCPServer, ChecksAToolCallBeforeMakingIt) {
  const std::string get = R"({"name":"zelto_get_rule","arguments":)", needsID = "zelto_get_rule needs id";
  const std::pair<std::string, std::string> cases[] = {
      {"5", "unknown tool: "},
      {R"({"name":1})", "unknown tool: "},
      {R"({"name":"zelto_Health"})", "unknown tool: zelto_Health"},
      {get + R"({"id":""}})", needsID},
      {get + R"({"id":null}})", needsID},
      {get + R"(["id"]})", needsID},
      {R"({"name":"zelto_rename_group"})", "zelto_rename_group needs name, newName"},
      {R"({"name":"zelto_rename_group","arguments":{"name":"a"}})", "zelto_rename_group needs newName"},
  };
  for (const auto& [params, complaint] : cases)
    check(request("tools/call", params), {toolResult(complaint, true)});
  const support::ScopedVariable control("ZELTO_CONTROL_FILE", "/nowhere");
  for (const char* present : {"false", "0", "[]", "\" \""}) {
    const Session session = converse(request("tools/call", get + "{\"id\":" + present + "}}"));
    EXPECT_THAT(session.writes,
                testing::ElementsAre(testing::HasSubstr("API is not running, so there are no")));
  }
}

TEST(MCPServer, HandsTheAPIsAnswerOn) {
  support::ServedAPI api(std::vector{support::response(R"({"b":"x/\"ü","a":[1,2.5,{}]})"),
                                     support::response(R"({"error":"no rule"})", 404)});
  const std::string get = request("tools/call", R"({"name":"zelto_get_rule","arguments":{"id":"3f"}})");
  check(get + get,
        {toolResult(R"({\n  \"a\": [\n    1,\n    2.5,\n    {}\n  ],\n  \"b\": \"x/\\\"ü\"\n})", false),
         toolResult("HTTP 404: no rule", true)});
}

}  // namespace
}  // namespace zelto
