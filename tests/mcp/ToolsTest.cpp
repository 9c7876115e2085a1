#include <set>

#include <gtest/gtest.h>

#include "json/JSONText.h"
#include "mcp/RuleFields.h"
#include "mcp/ToolCatalogue.h"

namespace zelto {
namespace {

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

TEST(ToolHandlers, WaitAsLongAsTheApplicationMayTake) {
  for (const MCPTool& tool : tools()) {
    const auto request = plannedRequest(tool.name, {});
    const double usual = tool.name == "zelto_test_script" ? 45 : tool.name == "zelto_watch" ? 20 : 15;
    EXPECT_TRUE(!request || request->timeout == usual) << tool.name;
  }
  const std::tuple<const char*, JSONObject, double> cases[] = {
      {"zelto_test_script", {{"timeout", 10}}, 25},   {"zelto_test_script", {{"timeout", -1}}, 45},
      {"zelto_test_script", {{"timeout", "10"}}, 45}, {"zelto_watch", {{"wait", 30}}, 50},
      {"zelto_watch", {{"wait", "30"}}, 20},          {"zelto_test_script", {{"timeout", 0.5}}, 15.5}};
  for (const auto& [tool, arguments, timeout] : cases) {
    EXPECT_EQ(plannedRequest(tool, arguments)->timeout, timeout)
        << json::text(arguments, json::compact).value();
  }
}

}  // namespace
}  // namespace zelto
