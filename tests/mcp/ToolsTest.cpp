#include <gtest/gtest.h>

#include "mcp/ToolCatalogue.h"

namespace zelto {
namespace {

APIRequest planned(std::string_view name, std::string_view text) {
  const JSONDocument arguments = JSONDocument::parse(text).value();
  for (const ToolDeclaration& tool : toolDeclarations()) {
    if (tool.name == name) return plannedRequest(tool, std::get<Endpoint>(tool.action), arguments);
  }
  throw std::invalid_argument(std::string(name));
}

TEST(ToolHandlers, WaitAsLongAsTheApplicationMayTake) {
  for (const ToolDeclaration& tool : toolDeclarations()) {
    if (!std::holds_alternative<Endpoint>(tool.action)) continue;
    std::optional<double> usual;
    if (tool.name == "zelto_test_script") usual = 45;
    if (tool.name == "zelto_watch") usual = 20;
    EXPECT_EQ(planned(tool.name, "{}").timeout, usual) << tool.name;
  }
  const std::tuple<const char*, const char*, double> cases[] = {
      {"zelto_test_script", R"({"timeout":10})", 25},   {"zelto_test_script", R"({"timeout":-1})", 45},
      {"zelto_test_script", R"({"timeout":"10"})", 45}, {"zelto_watch", R"({"wait":30})", 50},
      {"zelto_watch", R"({"wait":"30"})", 20},          {"zelto_test_script", R"({"timeout":0.5})", 15.5}};
  for (const auto& [tool, arguments, timeout] : cases) {
    EXPECT_EQ(planned(tool, arguments).timeout, timeout) << arguments;
  }
}

}  // namespace
}  // namespace zelto
