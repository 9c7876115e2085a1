#include <set>

#include <gmock/gmock.h>
#include <unistd.h>

#include "api/Errors.h"
#include "json/JSONText.h"
#include "mcp/MCPServer.h"
#include "mcp/RuleFields.h"
#include "mcp/ToolCatalogue.h"
#include "support/RawServer.h"

namespace zelto {
namespace {

JSONObject object(const char* text) {
  return *json::parse(text).value().object();
}

const JSONObject& properties(std::string_view tool) {
  return *toolsByName().at(tool)->inputSchema.find("properties")->object();
}

TEST(ToolCatalogue, HoldsEveryToolInOrder) {
  std::string names;
  for (const MCPTool& tool : tools()) names.append(tool.name.substr(6)).append(" ");
  EXPECT_EQ(
      names,
      "health start_server stop_server schema list_rules get_rule create_rule update_rule test_script "
      "generator_prompt docs list_runners list_shortcuts install_shortcut watch enable_rule disable_rule "
      "fire_rule delete_rule list_groups enable_group disable_group rename_group list_profiles "
      "create_profile activate_profile list_events list_action_history ");
}

TEST(ToolCatalogue, SchemasHoldWhatTheirToolsTake) {
  EXPECT_EQ(JSONValue(toolsByName().at("zelto_list_events")->inputSchema),
            json::parse(R"({"type":"object","properties":{"limit":{"type":"integer","default":50}}})"));
  EXPECT_EQ(ruleFieldSchema().size(), 62u);
  EXPECT_EQ(properties("zelto_create_rule").size(), 64u);
  EXPECT_EQ(properties("zelto_update_rule").size(), 65u);
  const std::set<std::string_view> keys(ruleBodyKeys().begin(), ruleBodyKeys().end());
  EXPECT_EQ(keys.size(), 76u);
  // Whatever an agent is told of must reach the application.
  for (const auto& [name, schema] : properties("zelto_create_rule")) EXPECT_TRUE(keys.contains(name)) << name;
}

struct Call {
  const char* tool;
  const char* arguments;
  const char* request;  ///< method and target
  const char* body = "";
  double timeout = 15;
};

const Call calls[] = {
    {"zelto_health", R"({"id":1})", "GET /health"},
    {"zelto_schema", "{}", "GET /schema"},
    {"zelto_list_rules", "{}", "GET /rules?scope=all"},
    {"zelto_get_rule", R"({"id":"a b/ü"})", "GET /rules/a%20b%2F%C3%BC"},
    {"zelto_get_rule", R"({"id":42.0})", "GET /rules/42"},
    {"zelto_get_rule", R"({"id":-1.5})", "GET /rules/-1.5"},
    {"zelto_get_rule", R"({"id":true})", "GET /rules/true"},
    {"zelto_create_rule", R"({"enabled":false,"openURLActivates":1.5,"foo":1,"id":"x"})", "POST /rules",
     R"({"enabled":false,"openURLActivates":1.5})"},
    {"zelto_update_rule", R"({"id":"7/8","name":null})", "PATCH /rules/7%2F8", R"({"name":null})"},
    {"zelto_update_rule", R"({"id":"7"})", "PATCH /rules/7", "{}"},
    {"zelto_test_script", R"({"script":"ls","foo":[1]})", "POST /scripts", R"({"script":"ls","foo":[1]})",
     45},
    {"zelto_test_script", R"({"timeout":10})", "POST /scripts", R"({"timeout":10})", 25},
    {"zelto_test_script", R"({"timeout":-1})", "POST /scripts", R"({"timeout":-1})", 45},
    {"zelto_test_script", R"({"timeout":"10"})", "POST /scripts", R"({"timeout":"10"})", 45},
    {"zelto_generator_prompt", "{}", "GET /generator/prompt?kind=shell"},
    {"zelto_generator_prompt", R"({"subEvent":"on/off","runner":"sh","kind":"trigger","x":1})",
     "GET /generator/prompt?kind=trigger&runner=sh&subEvent=on%2Foff"},
    {"zelto_docs", R"({"name":"../x"})", "GET /docs/..%2Fx"},
    {"zelto_list_runners", "{}", "GET /runners"},
    {"zelto_list_shortcuts", "{}", "GET /shortcuts"},
    {"zelto_install_shortcut", R"({"name":"⚙︎x","y":1})", "POST /shortcuts/install",
     R"({"name":"⚙︎x"})"},
    {"zelto_watch", "{}", "GET /action-history", "", 20},
    {"zelto_watch", R"({"kind":"nonsense","since":null,"limit":5})", "GET /action-history?limit=5", "", 20},
    {"zelto_watch", R"({"kind":"events","since":7,"wait":30})", "GET /events?since=7&wait=30", "", 50},
    {"zelto_watch", R"({"kind":"actions","wait":"30"})", "GET /action-history?wait=30", "", 20},
    {"zelto_enable_rule", R"({"id":"7"})", "POST /rules/7/enable"},
    {"zelto_disable_rule", R"({"id":"7"})", "POST /rules/7/disable"},
    {"zelto_fire_rule", R"({"id":"7"})", "POST /rules/7/fire"},
    {"zelto_delete_rule", R"({"id":"7"})", "DELETE /rules/7"},
    {"zelto_list_groups", "{}", "GET /groups"},
    {"zelto_enable_group", R"({"name":"a/b c"})", "POST /groups/a%2Fb%20c/enable"},
    {"zelto_disable_group", R"({"name":"a"})", "POST /groups/a/disable"},
    {"zelto_rename_group", R"({"name":"a","newName":"b/c"})", "PATCH /groups/a", R"({"name":"b/c"})"},
    {"zelto_list_profiles", "{}", "GET /profiles"},
    {"zelto_create_profile", R"({"icon":"x","name":"a","id":1})", "POST /profiles",
     R"({"name":"a","icon":"x"})"},
    {"zelto_activate_profile", R"({"id":"p"})", "POST /profiles/p/activate"},
    {"zelto_list_events", R"({"since":4})", "GET /events?limit=50"},
    {"zelto_list_action_history", R"({"limit":3})", "GET /action-history?limit=3"},
};

TEST(ToolHandlers, MakeTheRequestThatTheyPlan) {
  support::ServedAPI api(std::vector{support::response("[true]")});
  std::set<std::string_view> covered{"zelto_start_server", "zelto_stop_server"};
  for (const Call& call : calls) {
    SCOPED_TRACE(std::string(call.tool) + " " + call.arguments);
    EXPECT_EQ(plannedRequest(call.tool, object(call.arguments)).value().timeout, call.timeout);
    EXPECT_EQ(resultText(toolsByName().at(call.tool)->handler(object(call.arguments))), "[\n  true\n]");
    const std::string sent = api.server.requests().back();
    EXPECT_EQ(sent.substr(0, sent.find(" HTTP/1.1\r\n")), call.request);
    EXPECT_EQ(json::parse(sent.substr(sent.find("\r\n\r\n") + 4)), json::parse(call.body));
    covered.insert(call.tool);
  }
  EXPECT_EQ(covered.size(), tools().size());
}

TEST(ToolHandlers, WaitForAsLongAsPlanned) {
  char byte;
  support::ServedAPI api(
      [&](int connection, const std::string&) { EXPECT_EQ(::read(connection, &byte, 1), 0); });
  EXPECT_THAT([] { toolsByName().at("zelto_watch")->handler(object(R"({"wait":-19})")); },
              testing::ThrowsMessage<MCPError>("cannot reach Zelto (timed out after 1s). Is it running?"));
}

TEST(ToolHandlers, StoppingReportsSuccessWithoutAnApplication) {
  const support::TemporaryDirectory home;
  const support::ScopedVariable variable("HOME", home.path), none("ZELTO_CONTROL_FILE", home / "none");
  EXPECT_EQ(resultText(toolsByName().at("zelto_stop_server")->handler({})),
            "{\n  \"note\": \"The API is off and will stay off until it is started again.\",\n"
            "  \"ok\": true,\n  \"stopped\": true\n}");
}

}  // namespace
}  // namespace zelto
