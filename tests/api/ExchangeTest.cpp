// What the client puts on the wire, and what it makes of servers that answer well, badly, late or not at all.
#include <thread>

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include "api/CLICall.h"
#include "api/Errors.h"
#include "json/JSONText.h"
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
    text = json::text(apiCall("GET", "/x", body, {}, timeout), json::compact).value();
  } catch (const MCPError& error) {
    text = error.message;
  }
  EXPECT_THAT(text, Not(HasSubstr("secret-token")));
  return text;
}

std::string unreachable(const std::string& reason) {
  return "cannot reach Zelto (" + reason + "). Is it running?";
}

/// Makes the close that follows a reset.
void breakOff(int connection) {
  const linger now{.l_onoff = 1, .l_linger = 0};
  ::setsockopt(connection, SOL_SOCKET, SO_LINGER, &now, sizeof now);
}

TEST(Exchange, SendsExactlyOneRequest) {
  ServedAPI api({response("{}")});
  const Query query{{"since", 3.0},    {"limit", 20}, {"kind", "a b/ü"}, {"none", std::nullopt},
                    {"null", nullptr}, {"on", true},  {"wait", 12.5},    {"k&", ""}};
  apiCall("POST", "/groups/Home%20%26", JSONObject{{"b", "a/\"ü\n"}, {"a", 10.0}}, query, 15);
  apiCall("GET", "/rules", std::nullopt, {{"none", std::nullopt}}, 15);
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
    const std::string text(1, static_cast<char>(byte)), encoded = percentEncode(text);
    if (encoded == text)
      kept += text;
    else
      EXPECT_EQ(encoded.size(), 3u);
  }
  EXPECT_EQ(kept, "-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz~");
  EXPECT_EQ(percentEncode("⚙/ \xff"), "%E2%9A%99%2F%20%FF");
}

TEST(Exchange, ReadsAnyResponse) {
  const std::string deep = std::string(513, '[') + std::string(513, ']');
  const std::pair<std::string, std::string> cases[] = {
      {"", unreachable("no HTTP response")},
      {"garbage", unreachable("no HTTP response")},
      {"HTTP/1.1 200 OK\n\n{}", unreachable("no HTTP response")},
      {"HTTP/1.1 200 OK\r\nX: y\r\n", unreachable("no HTTP response")},
      {"HTTP/1.1 204 No Content\r\n\r\n", "{}"},
      {"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n[1,2,3]", "[1,2,3]"},
      {"HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n[1]", "[1]"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n{}\r\n0\r\n\r\n", "{}"},
      {"HTTP/1.1 500 X\r\nTransfer-Encoding: chunked\r\n\r\nd\r\n{\"error\":\"x\"}\r\n0\r\n\r\n",
       "HTTP 500: 500"},
      {response("true"), "{}"},
      {response("\"text\""), "{}"},
      {response(deep), "{}"},
      {response(R"({"a":1} trailing)"), "{}"},
      {response(R"({"a":1})", 299), R"({"a":1})"},
      {response(R"({"error":"no such rule"})", 404), "HTTP 404: no such rule"},
      {response(R"({"error":42.0})", 400), "HTTP 400: 42"},
      {response(R"({"error":{"code":7}})", 400), R"(HTTP 400: {"code":7})"},
      {response(R"({"error":null})", 400), "HTTP 400: null"},
      {response(R"({"reason":"a/b"})", 300), R"(HTTP 300: {"reason":"a/b"})"},
      {response(R"(["x"])", 199), R"(HTTP 199: ["x"])"},
      {response("", 500), "HTTP 500: 500"},
      {response("plain text", 502), "HTTP 502: 502"},
      {"HTTP/1.1\r\n\r\n", "HTTP 0: 0"},
      {"HTTP/1.1 2x0 OK\r\n\r\n{}", "HTTP 0: {}"},
      {"HTTP/1.1 99999999999 X\r\n\r\n", "HTTP 99999999999: 99999999999"},
      {"\r\n\r\n{\"error\":\"headless\"}", "HTTP 0: headless"},
      {"\r\nHTTP/1.1   +201  X\r\n\r\n[]", "[]"},
      {"\xff\xfe 200\r\n\xff\r\n\r\n[]", "[]"},
  };
  for (const auto& [bytes, expected] : cases) {
    ServedAPI api(std::vector{bytes});
    EXPECT_EQ(outcome(), expected) << bytes.substr(0, 100);
  }
}

TEST(Exchange, TakesFiftyMegabytes) {
  ServedAPI api({response("[\"" + std::string(50'000'000, 'x') + "\"]")});
  EXPECT_EQ(outcome().size(), 50'000'004u);
}

TEST(Exchange, TakesSingleBytes) {
  ServedAPI api([](int connection, const std::string&) {
    const int now = 1;
    ::setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &now, sizeof now);
    for (const char byte : response(R"({"whole":true})")) support::sendBytes(connection, {byte});
  });
  EXPECT_EQ(outcome(1), R"({"whole":true})");
}

TEST(Exchange, ReportsAServerThatHangsOrBreaksOff) {
  ServedAPI hanging([](int connection, const std::string&) {
    char byte;
    support::sendBytes(connection, "HTTP/1.1 200");
    while (::read(connection, &byte, 1) > 0) {
    }
  });
  EXPECT_EQ(outcome(1.9), unreachable("timed out after 1s"));
  ServedAPI breaking([](int connection, const std::string&) {
    support::sendBytes(connection, response(R"({"a":1})"));
    breakOff(connection);
  });
  EXPECT_EQ(outcome(), unreachable("Connection reset by peer"));
}

TEST(Exchange, OutlivesAPeerThatClosesBeforeTheBodyHasGone) {
  const int listening = ::socket(AF_INET, SOCK_STREAM, 0);
  ASSERT_EQ(::listen(listening, 1), 0);
  sockaddr_in address{};
  socklen_t size = sizeof address;
  ::getsockname(listening, reinterpret_cast<sockaddr*>(&address), &size);
  const support::TemporaryDirectory directory;
  const support::ScopedVariable variable("ZELTO_CONTROL_FILE", directory / "control.json");
  const auto announce = [&](const std::string& host) {
    support::writeFile(directory / "control.json", R"({"host":")" + host +
                                                       R"(","token":"secret-token","port":)" +
                                                       std::to_string(ntohs(address.sin_port)) + "}");
  };
  announce("127.0.0.1");
  std::thread peer([&] {
    const int connection = ::accept(listening, nullptr, nullptr);
    // A reset alone is no broken pipe: for that the end of what the peer sends has to come first.
    ::shutdown(connection, SHUT_WR);
    breakOff(connection);
    ::close(connection);
  });
  EXPECT_EQ(outcome(15, std::string(50'000'000, 'x')), unreachable("Broken pipe"));
  peer.join();
  ::close(listening);
  EXPECT_EQ(outcome(), unreachable("Connection refused"));
  // A label this long is refused before anybody is asked for it.
  announce(std::string(70, 'a'));
  EXPECT_EQ(outcome(), unreachable("cannot resolve " + std::string(70, 'a')));
}

TEST(ControlFile, IsReadInEveryAllowedForm) {
  ServedAPI api({response("[]")});
  const std::string path = api.directory / "control.json", port = std::to_string(api.server.port);
  const auto with = [&](const std::string& value) {
    return R"({"host":"127.0.0.1","token":"secret-token","app":{},"port":)" + value + "}";
  };
  const std::string good[] = {with(port), with(port + ".0"), with('"' + port + '"'),
                              with("\"+" + port + '"')};
  for (const std::string& text : good) {
    support::writeFile(path, text);
    EXPECT_EQ(outcome(), "[]") << text;
  }
  const std::string bad[] = {"",
                             "{",
                             "[]",
                             "\"x\"",
                             with("true"),
                             with("3.5"),
                             with("1e30"),
                             with("null"),
                             with("\"\""),
                             with("\"http\""),
                             with("\" 1\""),
                             with("\"1.0\""),
                             with("[1]"),
                             R"({"host":"h","token":"t"})",
                             R"({"host":1,"token":"t","port":1})",
                             R"({"host":"h","token":null,"port":1})",
                             R"({"token":"t","port":1})",
                             with(port) + "x",
                             "\xff" + with(port)};
  for (const std::string& text : bad) {
    support::writeFile(path, text);
    EXPECT_EQ(outcome(), "could not read " + path) << text;
  }
  EXPECT_EQ(api.server.requests().size(), std::size(good));

  const support::ScopedVariable home("HOME", api.directory.path);
  const std::string standard = "Library/Application Support/Zelto/control.json";
  support::writeFile(api.directory / standard, with(port));
  support::writeFile(api.directory / "c", with(port));
  for (const char* named : {"", "~/c"}) {
    const support::ScopedVariable variable("ZELTO_CONTROL_FILE", named);
    EXPECT_EQ(outcome(), "[]") << named;
  }
  const support::ScopedVariable unset("ZELTO_CONTROL_FILE", std::nullopt);
  EXPECT_EQ(outcome(), "[]");
  for (const std::string& unreadable : {api.directory / "none", api.directory.path}) {
    const support::ScopedVariable variable("ZELTO_CONTROL_FILE", unreadable);
    EXPECT_EQ(outcome(),
              "Zelto's local API is not running, so there are no credentials to use. Turn it on with the "
              "zelto_start_server tool (or in Zelto: Settings, AI agents, Start). It stays on across "
              "launches until "
              "it is stopped.");
  }
}

}  // namespace
}  // namespace zelto
