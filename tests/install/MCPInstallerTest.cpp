#include <csignal>
#include <filesystem>
#include <random>
#include <regex>
#include <thread>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "install/MCPInstaller.h"
#include "platform/Log.h"
#include "support/Surroundings.h"

namespace fs = std::filesystem;

static std::vector<std::string> logged;

/// In place of the system's log: keeps the lines.
void platform::log(const LogSource& source, LogLevel, std::string_view message) {
  logged.push_back(std::string(source.category) + ": " + std::string(message));
}

namespace zelto::MCPInstaller {
namespace {

using support::contentsOf;
using support::writeFile;

struct MCPInstallerTest : testing::Test {
  support::TemporaryDirectory home;
  support::ScopedVariable variable{"HOME", home.path};
  const Client& cursor = clients()[2];
  const std::string file = home / ".cursor/mcp.json",
                    server = "/Applications/Zelto.app/Contents/SharedSupport/ZeltoCLI";
};

/// The three files that `marked` stands for: "⟦before¦installed¦removed⟧" marks where they differ.
std::array<std::string, 3> versionsOf(const std::string& marked) {
  static const std::regex mark(R"(⟦([\s\S]*?)¦([\s\S]*?)¦([\s\S]*?)⟧)");
  const auto version = [&](const char* which) { return std::regex_replace(marked, mark, which); };
  return {version("$1"), version("$2"), version("$3")};
}

TEST_F(MCPInstallerTest, ChangesNothingButItsEntryInFilesOfPeople) {
  const std::map<std::string, std::string> paths = {
      {"claude-code", ".claude.json"},
      {"claude-desktop", "Library/Application Support/Claude/claude_desktop_config.json"},
      {"cursor", ".cursor/mcp.json"},
      {"vscode", "Library/Application Support/Code/User/mcp.json"},
      {"windsurf", ".codeium/windsurf/mcp_config.json"},
      {"zed", ".config/zed/settings.json"},
  };
  int files = 0;
  for (const auto& each : fs::directory_iterator(SOURCES "/configurations")) {
    const std::string name = each.path().filename(), id = name.substr(0, name.find('.'));
    const auto found = std::ranges::find(clients(), id, &Client::id);
    if (found == clients().end()) continue;
    const Client& client = *found;
    ++files;
    SCOPED_TRACE(name);
    const auto [before, installed, removed] = versionsOf(contentsOf(each.path()));
    const std::string path = home / paths.at(id);
    const bool wasMissing = before.empty();
    if (!wasMissing) writeFile(path, before);
    EXPECT_EQ(client.isPresent(), !wasMissing);
    logged.clear();
    install(client, server);
    EXPECT_EQ(contentsOf(path), installed);
    EXPECT_TRUE(client.isPresent() && isInstalled(client));
    fs::last_write_time(path, fs::file_time_type());
    install(client, server);
    EXPECT_EQ(fs::last_write_time(path), fs::file_time_type());
    EXPECT_THAT(logged, testing::ElementsAre("MCPInstaller: Wrote MCP entry to " + client.path));
    remove(client);
    remove(client);
    EXPECT_EQ(contentsOf(path), removed);
    EXPECT_TRUE(!isInstalled(client) && logged.size() == 2);
    fs::remove_all(home.path);
  }
  EXPECT_EQ(files, 16);
}

TEST_F(MCPInstallerTest, LeavesTheOldFileOrTheNewWhenItIsKilled) {
  const std::string old = "{\n  // mine\n  \"x\": 1\n}\n";
  writeFile(file, old);
  install(cursor, server);
  const std::string after = contentsOf(file);
  remove(cursor);
  ASSERT_EQ(contentsOf(file), old);
  std::mt19937 random(1);
  for (int round = 0; round < 50; ++round) {
    writeFile(file, old);
    ::chmod(file.c_str(), 0604);
    const pid_t child = ::fork();
    if (child == 0) {
      for (;;) install(cursor, server), remove(cursor);
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 4000));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_THAT(contentsOf(file), testing::AnyOf(old, after));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0604));
  }
  // The next run takes away what a killed one has left.
  writeFile(file, old);
  install(cursor, server);
  EXPECT_EQ(std::distance(fs::directory_iterator(home / ".cursor"), {}), 1);
}

TEST_F(MCPInstallerTest, FindsAgentsByTheirEvidence) {
  const Client client{"id", "Name", "", "~/config", Style::zed, {"/a", "~/b"}};
  remove(client);
  EXPECT_FALSE(client.isPresent() || fs::exists(home / "config"));
  fs::create_symlink("missing", home / "a");
  EXPECT_FALSE(client.isPresent());
  fs::remove(home / "a");
  fs::create_symlink(std::string(300, 'x'), home / "a");
  EXPECT_TRUE(client.isPresent());  // the look fails, so that it may be there
  fs::remove(home / "a");
  fs::create_directory(home / "b");
  EXPECT_TRUE(client.isPresent());
}

TEST_F(MCPInstallerTest, FollowsLinks) {
  const auto link = [&](const std::string& target, const std::string& from) {
    fs::create_directories(fs::path(home / from).parent_path());
    fs::create_symlink(target, home / from);
  };
  link("repository/cursor", ".cursor");
  link("../../linked/mcp.json", "repository/cursor/mcp.json");
  link(home / "missing/settings", "linked/mcp.json");
  install(cursor, server);
  for (const char* kept : {".cursor", "repository/cursor/mcp.json", "linked/mcp.json"})
    EXPECT_TRUE(fs::is_symlink(home / kept)) << kept;
  EXPECT_TRUE(fs::is_regular_file(home / "missing/settings") && isInstalled(cursor));
  remove(cursor);
  EXPECT_EQ(contentsOf(home / "missing/settings"), "{\n}\n");

  link("a", "dangling");
  EXPECT_EQ(realConfigFile("~/x/..//./dangling/b"), home / "a/b");
  link("loop-b", "loop-a");
  link("loop-a", "loop-b");
  EXPECT_THROW(realConfigFile("~/loop-a"), std::runtime_error);
  for (int i = 0; i < 20; ++i) link("chain" + std::to_string(i + 1), "chain" + std::to_string(i));
  EXPECT_EQ(realConfigFile("~/chain0"), home / "chain16");
  EXPECT_EQ(realConfigFile("~/chain10"), home / "chain20");

  const fs::path before = fs::current_path();
  fs::current_path(home.path);
  EXPECT_EQ(realConfigFile("dangling/b"), home / "a/b");
  fs::current_path(before);

  // ".." goes up from where a link leads, as it does when the system opens the file.
  link(home / "far/away", "near");
  fs::create_directories(home / "far/away");
  link("../near/../up.json", "folder/up");
  for (const char* exists : {"", "{}"}) {
    EXPECT_EQ(realConfigFile("~/folder/up"), home / "far/up.json") << exists;
    EXPECT_EQ(realConfigFile("~/near/../.cursor"), home / "far/.cursor");
    writeFile(home / "far/up.json", exists);
  }
}

TEST_F(MCPInstallerTest, ReportsWhatItCannotEditAndLeavesItAlone) {
  const std::pair<std::string, std::string> cases[] = {
      {"{\"mcpServers\": 1}", "mcpServers is not a JSON object."},
      {"{\"a\": \"\xED\xA0\x80\"}", file + ": not UTF-8 text"},
  };
  for (const auto& [content, message] : cases) {
    writeFile(file, content);
    logged.clear();
    EXPECT_THAT([&] { install(cursor, server); }, testing::ThrowsMessage<std::runtime_error>(message));
    EXPECT_THAT(logged, testing::ElementsAre("MCPInstaller: MCP install failed for Cursor: " + message));
    EXPECT_EQ(contentsOf(file), content);
    EXPECT_FALSE(isInstalled(cursor));
  }
  EXPECT_EQ(entryText(Style::mcpServers, "/\"b\"\\\n/é"),
            "{\n  \"command\": \"/\\\"b\\\"\\\\\\n/é\",\n  \"args\": [\"mcp\", \"serve\"]\n}");
}

}  // namespace
}  // namespace zelto::MCPInstaller
