// Any bytes as what an agent writes: the API's answer up to a record separator, then messages, one a line.
// Each message that asks for a reply gets one, in order, on one line of UTF-8 that is JSON with the id asked
// for and a result or an error; none else does. One server answers all inputs, so each must leave it sound
// for the next.
#include <thread>

#include <unistd.h>

#include "json/JSONText.h"
#include "mcp/MCPLineReader.h"
#include "mcp/MCPServer.h"
#include "platform/FileDescriptor.h"
#include "support/Fuzz.h"
#include "text/Unicode.h"

namespace {

using fuzz::expect;
using json::JSONObject;
using json::JSONValue;

/// The server at work on pipes in place of the standard streams.
struct Conversation {
  int in[2], out[2];
  zelto::MCPLineReader replies{(open(), out[0])};

  void open() {
    expect(::pipe(in) == 0 && ::pipe(out) == 0, "the machine has pipes");
    ::dup2(in[0], STDIN_FILENO);
    ::dup2(out[1], STDOUT_FILENO);
    std::thread(zelto::serve).detach();
  }
};

const JSONValue& memberOf(const JSONObject& object, const char* key) {
  static const JSONValue null;
  const JSONValue* value = object.find(key);
  return value != nullptr ? *value : null;
}

/// What the server owes a line: which member the reply has; empty if it owes none.
std::string_view owed(std::string_view line) {
  const auto message = json::parse(line);
  if (!message || !message->object()) return {};
  const std::string* method = memberOf(*message->object(), "method").string();
  if (method == nullptr || *method == "notifications/initialized") return {};
  for (const char* known : {"initialize", "ping", "tools/list", "tools/call"}) {
    if (*method == known) return "result";
  }
  return message->object()->contains("id") ? "error" : std::string_view();
}

void checkReply(const std::string& reply, const std::string& line, std::string_view member) {
  fuzz::expectUTF8(reply, "a reply");
  const auto value = json::parse(reply);
  const JSONObject* object = value ? value->object() : nullptr;
  expect(object != nullptr && object->size() == 3 && memberOf(*object, "jsonrpc") == JSONValue("2.0") &&
             object->contains(member),
         "a reply is a result or an error", reply);
  const JSONObject message = *json::parse(line)->object();
  // As text: a number may be of another kind.
  expect(json::text(memberOf(*object, "id"), json::compact) ==
             json::text(memberOf(message, "id"), json::compact),
         "a reply has the id of its message", reply);
  expect(reply.find(fuzz::api::token) == reply.npos, "no reply tells the token", reply);
  if (memberOf(message, "method") != JSONValue("tools/call")) return;
  const JSONObject& result = *memberOf(*object, "result").object();
  const auto* content = memberOf(result, "content").array();
  expect(content != nullptr && content->size() == 1 && memberOf(*content->front().object(), "text").string(),
         "a tool says something", reply);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  fuzz::Input input(data, size);
  // The fuzzer sees what the token is compared with; what comes from outside may hold it.
  if (input.rest.find(fuzz::api::token) != input.rest.npos) return -1;
  fuzz::api::answer(std::vector<std::string>(1000, fuzz::api::success(input.piece())));
  static Conversation& conversation = *new Conversation;
  const std::string messages(input.rest);
  const std::string_view last = R"({"jsonrpc":"2.0","id":"last","method":"ping"})";
  // All of it fits a pipe, so writing it does not wait for the server, which may wait for the replies to be
  // read.
  platform::writeAll(conversation.in[1], messages + "\n" + std::string(last) + "\n");
  for (const std::string_view each : text::split(messages, '\n')) {
    const std::string line(each.substr(0, each.find_last_not_of("\t\r ") + 1));
    if (const auto member = owed(line); !member.empty())
      checkReply(std::string(conversation.replies.nextLine()), line, member);
  }
  expect(conversation.replies.nextLine() == R"({"jsonrpc":"2.0","id":"last","result":{}})",
         "nobody else gets a reply", messages);
  return 0;
}
