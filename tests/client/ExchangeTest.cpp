// What the client puts on the wire, and what it makes of servers that answer well, badly, late or not at all.
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include "cli/CLICall.h"
#include "client/Errors.h"
#include "json/JSONText.h"
#include "platform/Connection.h"
#include "support/RawServer.h"

namespace zelto {
namespace {

using support::response;
using support::ServedAPI;
using testing::HasSubstr;
using testing::Not;

/// The response as compact JSON, or the error's text. The token is in neither.
std::string outcome(double timeout = 15, const std::optional<JSONValue>& body = {}) {
  std::string text;
  try {
    const JSONDocument answer = apiCall({"GET", "/x", {}, body, timeout});
    text = json::text(answer, json::compact);
  } catch (const MCPError& error) {
    text = error.message;
  }
  EXPECT_THAT(text, Not(HasSubstr("secret-token")));
  return text;
}

std::string unreachable(const std::string& reason) {
  return "cannot reach Zelto (" + reason + "). Is it running?";
}

TEST(Exchange, SendsExactlyOneRequest) {
  ServedAPI api({response("{}")});
  const Query query{{"since", 3.0},    {"limit", 20}, {"kind", "a b/ü"}, {"none", std::nullopt},
                    {"null", nullptr}, {"on", true},  {"wait", 12.5},    {"k&", ""}};
  apiCall({"POST", "/groups/Home%20%26", query, JSONObject{{"b", "a/\"ü\n"}, {"a", 10.0}}});
  apiCall({"GET", "/rules", {{"none", std::nullopt}}});
  const std::string common = " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(api.server.port) +
                             "\r\nAuthorization: Bearer secret-token\r\nContent-Type: application/json\r\n";
  EXPECT_THAT(
      api.server.requests(),
      testing::ElementsAre(
          "POST /groups/Home%20%26?k%26=&kind=a%20b%2F%C3%BC&limit=20&on=true&since=3&wait=12.5" + common +
              "Content-Length: 23\r\nConnection: close\r\n\r\n{\"a\":10,\"b\":\"a/\\\"ü\\n\"}",
          "GET /rules" + common + "Content-Length: 0\r\nConnection: close\r\n\r\n"));
}

TEST(Exchange, EncodesAllButTheUnreservedCharacters) {
  std::string kept;
  for (int byte = 0; byte < 256; ++byte) {
    const std::string encoded = percentEncode(std::string(1, static_cast<char>(byte)));
    if (encoded.size() != 3) kept += encoded;
  }
  EXPECT_EQ(kept, "-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz~");
  EXPECT_EQ(percentEncode("⚙/ \xff"), "%E2%9A%99%2F%20%FF");
}

TEST(Exchange, ReadsAnyResponse) {
  auto rows = support::rowsIn(SOURCES "/responses.json");
  rows.push_back({"\xff\xfe 200\r\n\xff\r\n\r\n[]", "[]"});
  rows.push_back({response(std::string(513, '[') + std::string(513, ']')), "{}"});
  for (const auto& row : rows) {
    ServedAPI api(std::vector{row[0]});
    EXPECT_EQ(outcome(), row[1]) << row[0].substr(0, 100);
  }
}

TEST(Exchange, TakesFiftyMegabytes) {
  ServedAPI api({response("[\"" + std::string(50'000'000, 'x') + "\"]")});
  EXPECT_EQ(outcome().size(), 50'000'004u);
}

TEST(Exchange, KeepsItsSocketFromChildren) {
  const ServedAPI api({response("{}")});
  const platform::Connection connection("127.0.0.1", api.server.port, 1);
  EXPECT_EQ(::fcntl(connection.descriptor(), F_GETFD), FD_CLOEXEC);
}

TEST(Exchange, TakesSingleBytes) {
  ServedAPI api([](int connection, const std::string&) {
    const int now = 1;
    ::setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &now, sizeof now);
    for (const char byte : response(R"({"whole":true})")) {
      support::sendBytes(connection, {byte});
      // Else the next byte arrives before this one is read.
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
  EXPECT_EQ(outcome(1), R"({"whole":true})");
}

TEST(Exchange, ReportsAConnectionThatBreaksOff) {
  ServedAPI api([](int connection, const std::string& request) {
    if (request.ends_with("x")) {
      // A reset alone is no broken pipe: for that the end of what the peer sends has to come first.
      ::shutdown(connection, SHUT_WR);
    } else {
      support::sendBytes(connection, response(R"({"a":1})"));
    }
    const linger now{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(connection, SOL_SOCKET, SO_LINGER, &now, sizeof now);
  });
  EXPECT_EQ(outcome(), unreachable("Connection reset by peer"));
  // The token smuggles a length in, which the server believes: it is done before the body has gone.
  support::writeFile(api.directory / "control.json",
                     R"({"host":"127.0.0.1","token":"secret-token\r\nContent-Length: 9","port":)" +
                         std::to_string(api.server.port) + "}");
  EXPECT_EQ(outcome(15, std::string(50'000'000, 'x')), unreachable("Broken pipe"));
}

TEST(ControlFile, IsReadInEveryAllowedForm) {
  ServedAPI api({response("[]")});
  const std::string path = api.directory / "control.json", port = std::to_string(api.server.port);
  const auto with = [](const std::string& value) {
    return R"({"host":"127.0.0.1","token":"secret-token","app":{},"port":)" + value + "}";
  };
  const std::string good[] = {port, port + ".0", '"' + port + '"', "\"+" + port + '"'};
  for (const std::string& value : good) {
    support::writeFile(path, with(value));
    EXPECT_EQ(outcome(), "[]") << value;
  }
  const auto refuse = [&](const std::string& text) {
    support::writeFile(path, text);
    EXPECT_EQ(outcome(), "could not read " + path) << text;
  };
  for (const char* text :
       {"", "{", "[]", "\"x\"", R"({"host":"h","token":"t"})", R"({"host":1,"token":"t","port":1})",
        R"({"host":"h","token":null,"port":1})", R"({"token":"t","port":1})"})
    refuse(text);
  for (const char* value : {"true", "3.5", "1e30", "null", "\"\"", "\"http\"", "\" 1\"", "\"1.0\"", "[1]"})
    refuse(with(value));
  refuse(with(port) + "x");
  refuse("\xff" + with(port));
  // Each of these is the server's port in its lowest 16 bits.
  for (const int turn : {-1 << 16, 1 << 16, 1 << 20}) {
    support::writeFile(path, with(std::to_string(api.server.port + turn)));
    EXPECT_EQ(outcome(), unreachable("cannot resolve 127.0.0.1"));
  }
  EXPECT_EQ(api.server.requests().size(), std::size(good));
  // The system would see the host before the NUL.
  support::writeFile(path, R"({"host":"127.0.0.1\u0000x","token":"t","port":)" + port + "}");
  EXPECT_EQ(outcome(), unreachable(std::string("cannot resolve 127.0.0.1\0x", 26)));
}

TEST(ControlFile, IsFoundWhereTheEnvironmentLeads) {
  ServedAPI api({response("[]")});
  const support::ScopedVariable home("HOME", api.directory.path);
  const std::string none =
      "Zelto's local API is not running, so there are no credentials to use. Turn it on with the "
      "zelto_start_server tool (or in Zelto: Settings, AI agents, Start). It stays on across launches until "
      "it is stopped.";
  for (const char* file : {"Library/Application Support/Zelto/control.json", "c"})
    support::writeFile(api.directory / file, api.server.controlFile());
  const std::pair<std::optional<std::string>, std::string> cases[] = {
      {std::nullopt, "[]"}, {"", "[]"}, {"~/c", "[]"}, {"~/none", none}, {api.directory.path, none}};
  for (const auto& [value, expected] : cases) {
    const support::ScopedVariable variable("ZELTO_CONTROL_FILE", value);
    EXPECT_EQ(outcome(), expected) << value.value_or("unset");
  }
}

}  // namespace
}  // namespace zelto
