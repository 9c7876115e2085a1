#include <filesystem>

#include "e2e/Zelto.h"

namespace zelto {
namespace {

std::vector<std::string> responses(const Expectation& expected) {
  std::vector<std::string> result;
  for (const auto& [mark, body] : expected.lines) {
    if (mark.starts_with('<'))
      result.push_back(support::response(body, mark == "<" ? 200 : std::stoi(mark.substr(1))));
  }
  return result;
}

TEST(Responses, AreShownAsTheyCome) {
  Zelto zelto;
  support::writeFile(zelto.home / "script.sh", "uptime\n");
  support::writeFile(zelto.home / "blank.sh", " \n\u2003\n");
  const auto expectations = expectationsIn(SOURCES "/responses.txt");
  ASSERT_GT(expectations.size(), 80u);
  for (const Expectation& expected : expectations) {
    for (const bool onTerminal : {false, true}) {
      const support::RawServer server(responses(expected));
      zelto.lookAt(server);
      zelto.expect(expected, onTerminal);
      EXPECT_EQ(summary(server.requests()), expected.all(">")) << expected.command;
    }
  }
}

/// The commands of the MCP server's installation, by a program in its bundle.
TEST(Responses, OfTheInstallationNeedNoApplication) {
  for (const bool onTerminal : {false, true}) {
    const Zelto zelto;
    const std::string bundled = zelto.home / "Zelto.app/Contents/SharedSupport/ZeltoCLI";
    support::writeFile(bundled, "");
    std::filesystem::copy_file(ZELTO, bundled, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::permissions(bundled, std::filesystem::perms::owner_all);
    std::filesystem::remove(zelto.home / "bin/zelto");
    std::filesystem::create_symlink(bundled, zelto.home / "bin/zelto");
    for (const Expectation& expected : expectationsIn(SOURCES "/mcp.txt")) zelto.expect(expected, onTerminal);
  }
}

}  // namespace
}  // namespace zelto
