#include "mcp/MCPServer.h"

#include <cstdlib>
#include <utility>

#include "client/ControlFile.h"
#include "client/Errors.h"
#include "client/Version.h"
#include "client/Wire.h"
#include "json/JSONText.h"
#include "mcp/MCPLineReader.h"
#include "mcp/Tool.h"
#include "platform/FileDescriptor.h"
#include "platform/Streams.h"
#include "platform/Terminal.h"
#include "text/GrowingBlock.h"
#include "text/TextError.h"

namespace zelto {
namespace {

constexpr int methodNotFound = -32601;

/// How replies are written. A person who tries the server by hand has it on a terminal.
const json::Style& replyStyle() {
  static const json::Style style{.escapesControls = platform::outputIsTerminal()};
  return style;
}

/// There is no other place for a diagnostic that cannot be written.
void log(const std::string& text) {
  platform::printError("[zelto-mcp] " + text + "\n");
}

/// Writes one reply; `member` is "result" or "error" and `value` its JSON text. An agent that no longer reads
/// shows by closing the input.
void sendMessage(JSONView id, std::string_view member, std::string_view value) {
  // All replies of usual size are put together in the same memory.
  static text::Bytes line;
  const std::string idText = json::text(id, replyStyle());
  const std::string_view pieces[] = {R"({"jsonrpc":"2.0","id":)", idText, ",\"", member, "\":", value, "}\n"};
  line.clear();
  line.room(idText.size() + member.size() + value.size() + 64);
  for (const std::string_view piece : pieces) line.append(piece);
  static_cast<void>(platform::writeAll(platform::standardOutput, {line.data(), line.size()}));
  line.clear();
}

void sendResult(JSONView id, const JSONValue& result) {
  if (const auto value = json::text(result, replyStyle())) sendMessage(id, "result", *value);
}

void sendError(JSONView id, int code, const std::string& message) {
  const JSONObject error{{"code", code}, {"message", message}};
  if (const auto value = json::text(error, replyStyle())) sendMessage(id, "error", *value);
}

JSONObject initializeResult(JSONView params) {
  const std::string_view version = params["protocolVersion"].string().value_or("2024-11-05");
  return {{"protocolVersion", version},
          {"capabilities", JSONObject{{"tools", JSONObject()}}},
          {"serverInfo", JSONObject{{"name", "zelto-mcp"}, {"version", versionText()}}}};
}

/// The JSON text of the `tools/list` result. It never changes, so only the first request pays for it.
const std::string& toolList() {
  static const std::string text = [] {
    JSONArray list;
    for (const MCPTool& tool : tools()) {
      list.push_back(JSONObject{
          {"name", tool.name}, {"description", tool.description}, {"inputSchema", tool.inputSchema}});
    }
    return json::text(JSONObject{{"tools", std::move(list)}}, replyStyle()).value();
  }();
  return text;
}

/// Built member by member: the text may be as large as the API's answer, so it is not copied.
JSONObject toolResult(std::string text) {
  JSONObject item{{"type", "text"}};
  item.set("text", std::move(text));
  JSONArray content;
  content.emplace_back(std::move(item));
  JSONObject result;
  result.set("content", std::move(content));
  return result;
}

JSONObject toolFailure(std::string text) {
  JSONObject result = toolResult(std::move(text));
  result.set("isError", true);
  return result;
}

/// The required arguments that are absent, null or empty, joined with ", ".
std::string missingArguments(const MCPTool& tool, JSONView arguments) {
  std::string missing;
  const JSONValue* required = tool.inputSchema.find("required");
  if (required == nullptr) return missing;
  for (const JSONValue& key : *required->array()) {
    const JSONView value = arguments[*key.string()];
    if (!value.isNull() && value.string() != "") continue;
    missing.append(missing.empty() ? "" : ", ").append(*key.string());
  }
  return missing;
}

/// What the agent is told of the call. Raises what the tool's handler raises.
JSONObject outcome(JSONView params) {
  const std::string name = stringIn(params, "name");
  const auto tool = toolsByName().find(name);
  if (tool == toolsByName().end()) return toolFailure("unknown tool: " + name);
  const JSONView arguments = params["arguments"];
  const std::string missing = missingArguments(*tool->second, arguments);
  if (!missing.empty()) return toolFailure(name + " needs " + missing);
  return toolResult(resultText(tool->second->handler(arguments)));
}

/// Whatever is raised before the result has been sent goes to the agent, a lack of memory for a large result
/// included.
void handleToolCall(JSONView id, JSONView params) {
  std::string failure;
  try {
    return sendResult(id, outcome(params));
  } catch (const MCPError& error) {
    failure = error.message;
  } catch (const std::exception& error) {
    failure = "tool error: " + text::errorText(error);
  }
  sendResult(id, toolFailure(std::move(failure)));
}

void handleMessage(JSONView message) {
  const auto givenID = message.find("id");
  const JSONView id = givenID.value_or(JSONView()), params = message["params"];
  const auto method = message["method"].string();
  if (!method) {
    log("ignoring response with no method: " + (givenID ? json::text(id, json::compact) : "nil"));
    return;
  }
  if (*method == "initialize") {
    sendResult(id, initializeResult(params));
  } else if (*method == "notifications/initialized") {
    return;
  } else if (*method == "ping") {
    sendMessage(id, "result", "{}");
  } else if (*method == "tools/list") {
    sendMessage(id, "result", toolList());
  } else if (*method == "tools/call") {
    handleToolCall(id, params);
  } else if (givenID) {
    sendError(id, methodNotFound, "method not found: " + std::string(*method));
  }
}

}  // namespace

void serve() {
  // An agent that stops reading replies or diagnostics has not ended the conversation; only the end of the
  // input does.
  platform::ignoreBrokenPipes();
  log("starting; control file: " + controlFilePath());
  MCPLineReader reader(platform::standardInput);
  JSONDocument message;
  for (;;) {
    try {
      if (message.read(reader.nextLine()) && message.root().isObject()) handleMessage(message);
    } catch (const MCPLineReader::EndOfInput&) {
      std::exit(EXIT_SUCCESS);
    } catch (const std::exception&) {
      // A message too large for the memory there is gets no reply; the next one may fit.
    }
    message.clear();
  }
}

std::string resultText(ToolOutput output) {
  if (auto* text = std::get_if<std::string>(&output)) return std::move(*text);
  return json::text(std::get<JSONDocument>(output), json::pretty);
}

}  // namespace zelto
