#include <gtest/gtest.h>

#include "json/JSONText.h"
#include "mcp/ToolCatalogue.h"

namespace zelto {
namespace {

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
