#include "client/HTTPExchange.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "client/Errors.h"
#include "platform/Connection.h"
#include "text/Number.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

constexpr std::size_t readSize = 65536;
constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view headEnd = "\r\n\r\n";

MCPError unreachable(const std::string& reason, Cause cause = Cause::unreachable) {
  return {cause, "cannot reach Zelto (" + reason + "). Is it running?"};
}

/// Whole seconds as the socket takes them: cut toward zero, and no more than any system's time-out can hold.
long wholeSeconds(double timeout) {
  constexpr double most = std::numeric_limits<std::int32_t>::max();
  return static_cast<long>(std::clamp(timeout, -most, most));
}

std::string requestText(const APICredentials& credentials, std::string_view method, std::string_view target,
                        std::string_view body) {
  std::string text;
  const auto line = [&](std::initializer_list<std::string_view> pieces) {
    for (const std::string_view piece : pieces) text += piece;
    text += lineEnd;
  };
  line({method, " ", target, " HTTP/1.1"});
  line({"Host: ", credentials.host, ":", std::to_string(credentials.port)});
  line({"Authorization: Bearer ", credentials.token});
  line({"Content-Type: application/json"});
  line({"Content-Length: ", std::to_string(body.size())});
  line({"Connection: close"});
  line({});
  return text.append(body);
}

text::Bytes receiveAll(const platform::Connection& connection) {
  text::Bytes received;
  while (const std::size_t count = connection.receive(received.room(readSize), readSize))
    received.take(count);
  return received;
}

std::int64_t statusIn(std::string_view head) {
  while (head.starts_with(lineEnd)) head.remove_prefix(lineEnd.size());
  std::vector<std::string_view> words;
  for (const std::string_view word : text::split(head.substr(0, head.find(lineEnd)), ' ')) {
    if (!word.empty()) words.push_back(word);
  }
  return words.size() < 2 ? 0 : text::decimal<std::int64_t>(words[1]).value_or(0);
}

}  // namespace

HTTPResponse exchange(const APICredentials& credentials, std::string_view method, std::string_view target,
                      std::string_view body, double timeout) {
  const long seconds = wholeSeconds(timeout);
  const auto timedOut = [&] {
    return unreachable("timed out after " + std::to_string(seconds) + "s", Cause::timedOut);
  };
  // Linux gives up at once under such a limit, and macOS refuses it, which would leave none.
  if (seconds < 0) throw timedOut();
  text::Bytes received;
  // Sending may run into the same limit as receiving; only the latter is reported as a time-out.
  bool isSent = false;
  try {
    const platform::Connection connection(credentials.host, credentials.port, seconds);
    connection.send(requestText(credentials, method, target, body));
    isSent = true;
    received = receiveAll(connection);
  } catch (const platform::SystemError& error) {
    using Kind = platform::SystemError::Kind;
    if (error.kind == Kind::unresolved) throw unreachable("cannot resolve " + credentials.host);
    if (error.kind == Kind::refused) throw unreachable(error.what(), Cause::refused);
    if (error.kind == Kind::timedOut && isSent) throw timedOut();
    throw unreachable(error.what());
  }
  const std::string_view bytes(received.data(), received.size());
  const std::size_t end = bytes.find(headEnd);
  if (end == std::string_view::npos) throw unreachable("no HTTP response");
  const std::int64_t status = statusIn(bytes.substr(0, end));
  return {std::move(received), end + headEnd.size(), status};
}

}  // namespace zelto
