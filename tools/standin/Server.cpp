#include "Server.h"

#include <algorithm>
#include <cstdlib>

#include "Script.h"

namespace standin {
namespace json = boost::json;
namespace {

struct Call {
  const httplib::Request& request;
  json::object body;

  std::string query(const char* key, const char* otherwise = "") const {
    return request.has_param(key) ? request.get_param_value(key) : otherwise;
  }
  double number(const char* key, double otherwise) const {
    if (!request.has_param(key)) return otherwise;
    const std::string text = query(key);
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    // The bound keeps every conversion to an integer defined.
    if (text.empty() || *end || !(value >= 0 && value < 1e15)) throw APIError(400, "bad " + std::string(key));
    return value;
  }
  std::string name() const {
    const json::value* text = body.if_contains("name");
    if (!text || !text->is_string() || text->as_string().empty()) throw APIError(400, "name is missing");
    return valueText(*text);
  }
};

// Splits before decoding, so that an encoded slash stays inside its segment.
std::vector<std::string> segmentsOf(const std::string& target) {
  std::vector<std::string> result(1);
  for (std::size_t at = 1; at < std::min(target.find('?'), target.size()); ++at) {
    if (target[at] == '/') {
      result.emplace_back();
    } else if (target[at] == '%') {
      result.back() += static_cast<char>(std::strtol(target.substr(at + 1, 2).c_str(), nullptr, 16));
      at += 2;
    } else {
      result.back() += target[at];
    }
  }
  return result;
}

json::object parseBody(const std::string& text) {
  json::error_code failure;
  json::value body = text.empty() ? json::object() : json::parse(text, failure);
  if (failure || !body.is_object()) throw APIError(400, "the body is no JSON object");
  return std::move(body.as_object());
}

json::value feed(Feed& source, const Call& call) {
  constexpr double longestWait = 300, all = 1e9;
  const double limit = call.number("limit", call.request.has_param("since") ? all : 50);
  return source.read(static_cast<std::int64_t>(call.number("since", 0)), static_cast<std::size_t>(limit),
                     std::min(call.number("wait", 0), longestWait));
}

// The "key=value" lines of what a script printed.
json::object parsedValues(std::string_view text) {
  json::object result;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    const std::size_t end =
        line.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_");
    if (end != line.npos && end > 0 && line[end] == '=') result[line.substr(0, end)] = line.substr(end + 1);
  }
  return result;
}

json::value testScript(const json::object& body, const std::atomic<bool>& stopping) {
  Script script;
  script.text = textOf(body, "script");
  if (script.text.empty()) throw APIError(400, "script is missing");
  if (const std::string runner = textOf(body, "runner"); !runner.empty()) script.runner = runner;
  if (const auto* limit = body.if_contains("timeout")) {
    if (!limit->is_number()) throw APIError(400, "timeout takes a number");
    if (limit->to_number<double>() > 0) script.timeout = limit->to_number<double>();
  }
  if (const auto* values = body.if_contains("values")) {
    if (!values->is_object()) throw APIError(400, "values takes an object");
    script.values = values->as_object();
  }
  json::object result = runScript(script, stopping);
  result["runner"] = script.runner;
  result["parsedValues"] = parsedValues(result.at("stdout").as_string());
  return result;
}

json::value prompt(const json::object& reference, const Call& call) {
  const std::string kind = call.query("kind", "shell"), event = call.query("subEvent");
  std::string text = textOf(reference.at("prompts").as_object(), kind);
  if (text.empty()) throw APIError(400, "kind is shell, trigger or applescript");
  if (kind != "applescript") text += "\nThe script runs with " + call.query("runner", "/bin/zsh") + ".\n";
  bool known = event.empty();
  for (const json::value& type : reference.at("schema").at("triggerTypes").as_array()) {
    for (const json::value& entry : type.at("subEvents").as_array()) {
      if (valueText(entry.at("subEvent")) != event) continue;
      known = true;
      text += "\nThese variables describe the event " + event + ":\n\n";
      for (const json::value& value : entry.at("values").as_array()) {
        text += "- $" + valueText(value.at("envVar")) + ": " + valueText(value.at("description")) + "\n";
      }
    }
  }
  if (!known) throw APIError(400, "unknown sub-event " + event);
  return {{"systemPrompt", text}};
}

json::value installShortcut(const json::object& reference, const std::string& name) {
  for (const json::value& shortcut : reference.at("shortcuts").at("builtin").as_array()) {
    if (valueText(shortcut.at("name")) == name) return {{"opened", name}};
  }
  throw APIError(404, "no bundled shortcut named " + name);
}

json::value document(const json::object& reference, const std::string& name) {
  const json::value* text = reference.at("docs").as_object().if_contains(name);
  return text ? json::value{{"markdown", *text}} : throw APIError(404, "no document named " + name);
}

json::value answer(Store& store, const json::object& reference, const Call& call) {
  std::vector<std::string> path = segmentsOf(call.request.target);
  // Where a path names something, the route has a star in its place.
  std::string name = "*", route = call.request.method + ' ';
  if (path.size() > 1 &&
      (path[0] == "rules" || path[0] == "groups" || path[0] == "profiles" || path[0] == "docs")) {
    name.swap(path[1]);
  }
  for (const std::string& segment : path) (route += '/') += segment;

  if (route == "GET /health") return store.health();
  if (route == "GET /rules") return store.rules(call.query("scope", "all"));
  if (route == "POST /rules") return store.createRule(call.body);
  if (route == "GET /rules/*") return store.updateRule(name, {});
  if (route == "PATCH /rules/*") return store.updateRule(name, call.body);
  if (route == "POST /rules/*/enable") return store.updateRule(name, {{"enabled", true}});
  if (route == "POST /rules/*/disable") return store.updateRule(name, {{"enabled", false}});
  if (route == "GET /groups") return store.groups();
  if (route == "GET /profiles") return store.profiles();
  if (route == "POST /profiles") return store.createProfile(call.name(), textOf(call.body, "icon"));
  if (route == "GET /events") return feed(store.events, call);
  if (route == "GET /action-history") return feed(store.actions, call);
  if (route == "POST /scripts") return testScript(call.body, store.stopping);
  if (route == "GET /generator/prompt") return prompt(reference, call);
  if (route == "GET /schema") return reference.at("schema");
  if (route == "GET /runners") return reference.at("runners");
  if (route == "GET /shortcuts") return reference.at("shortcuts");
  if (route == "POST /shortcuts/install") return installShortcut(reference, call.name());
  if (route == "GET /docs/*") return document(reference, name);
  if (route == "DELETE /rules/*") {
    store.removeRule(name);
    return nullptr;
  }
  if (route == "POST /rules/*/fire") {
    store.fireRule(name);
  } else if (route == "POST /groups/*/enable") {
    store.updateGroup(name, "enabled", true);
  } else if (route == "POST /groups/*/disable") {
    store.updateGroup(name, "enabled", false);
  } else if (route == "PATCH /groups/*") {
    store.updateGroup(name, "group", json::value(call.name()));
  } else if (route == "POST /profiles/*/activate") {
    store.activateProfile(name);
  } else {
    throw APIError(404, "nothing at " + call.request.method + " " + call.request.path);
  }
  return {{"ok", true}};
}

}  // namespace

void installRoutes(httplib::Server& server, Store& store, const json::object& reference,
                   const std::string& token) {
  const auto handle = [&store, &reference, token](const httplib::Request& request,
                                                  httplib::Response& response) {
    json::value body;
    try {
      if (request.get_header_value("Authorization") != "Bearer " + token)
        throw APIError(401, "wrong bearer token");
      body = answer(store, reference, {request, parseBody(request.body)});
      const bool creates =
          request.method == "POST" && (request.path == "/rules" || request.path == "/profiles");
      response.status = body.is_null() ? 204 : creates ? 201 : 200;
    } catch (const std::exception& error) {
      const auto* refusal = dynamic_cast<const APIError*>(&error);
      response.status = refusal ? refusal->status : 500;
      body = {{"error", repairUTF8(error.what())}};
    }
    if (!body.is_null()) response.set_content(json::serialize(body), "application/json");
  };
  // One pattern for all: the library decodes the path before it matches, which would split encoded slashes.
  const char* any = "[^]*";
  server.Get(any, handle).Post(any, handle).Put(any, handle).Patch(any, handle).Delete(any, handle);
  server.set_keep_alive_max_count(1);  // the client reads to the end of the connection
  // Each long poll and each running script keeps a thread.
  server.new_task_queue = [] { return new httplib::ThreadPool(64); };
}

}  // namespace standin
