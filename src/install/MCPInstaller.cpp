#include "install/MCPInstaller.h"

#include <algorithm>
#include <optional>

#include "install/JSONCEditor.h"
#include "json/JSONText.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "platform/Log.h"

namespace zelto::MCPInstaller {
namespace {

constexpr std::string_view memberKey = "zelto";
constexpr std::string_view logCategory = "MCPInstaller";

std::string_view topKey(Style style) {
  switch (style) {
    case Style::vsCode:
      return "servers";
    case Style::zed:
      return "context_servers";
    case Style::mcpServers:
      break;
  }
  return "mcpServers";
}

std::string quoted(std::string_view text) {
  std::string result;
  json::appendQuoted(result, text);
  return result;
}

/// `path` with its symbolic links followed by hand where the system stops at a missing file. A loop of links
/// ends after 16 steps, at one of them.
std::string followed(const std::string& path) {
  std::string reached = platform::resolvingLinks(path);
  for (int step = 0; step < 16; ++step) {
    const auto target = platform::linkTarget(reached);
    if (!target) break;
    const std::string directory = platform::resolvingLinks(platform::directoryOf(reached));
    reached = platform::standardizedPath(target->starts_with('/') ? *target : directory + "/" + *target);
  }
  return reached;
}

/// Puts what `change` makes of the client's configuration in its place; nothing, or an equal text, leaves the
/// file untouched.
template <class Change>
void edit(const Client& client, Change change) try {
  const std::string file = realConfigFile(client.path);
  const std::string old = platform::fileExists(file) ? platform::readUTF8(file) : std::string();
  const std::optional<std::string> changed = change(old);
  if (!changed || *changed == old) return;
  platform::createDirectories(platform::directoryOf(file));
  platform::writeAtomically(file, *changed);
  platform::log(platform::LogLevel::info, logCategory, "Wrote MCP entry to " + client.path);
} catch (const std::exception& error) {
  platform::log(platform::LogLevel::error, logCategory,
                "MCP install failed for " + client.name + ": " + error.what());
  throw;
}

}  // namespace

bool Client::isPresent() const {
  const auto exists = [](const std::string& each) {
    return platform::fileExists(platform::expandTilde(each));
  };
  return exists(path) || std::any_of(evidence.begin(), evidence.end(), exists);
}

const std::vector<Client>& clients() {
  static const std::vector<Client> catalogue{
      {"claude-code",
       "Claude Code",
       "Restart any running session to pick it up.",
       "~/.claude.json",
       Style::mcpServers,
       {"/opt/homebrew/bin/claude", "~/.claude"}},
      {"claude-desktop",
       "Claude Desktop",
       "Quit and reopen Claude.",
       "~/Library/Application Support/Claude/claude_desktop_config.json",
       Style::mcpServers,
       {"/Applications/Claude.app"}},
      {"cursor",
       "Cursor",
       "Reload the window.",
       "~/.cursor/mcp.json",
       Style::mcpServers,
       {"/Applications/Cursor.app", "~/.cursor"}},
      {"vscode",
       "VS Code",
       "Needs the Copilot Chat agent mode.",
       "~/Library/Application Support/Code/User/mcp.json",
       Style::vsCode,
       {"/Applications/Visual Studio Code.app", "~/Library/Application Support/Code"}},
      {"windsurf",
       "Windsurf",
       "Reload the window.",
       "~/.codeium/windsurf/mcp_config.json",
       Style::mcpServers,
       {"/Applications/Windsurf.app", "~/.codeium"}},
      {"zed",
       "Zed",
       "Restart Zed.",
       "~/.config/zed/settings.json",
       Style::zed,
       {"/Applications/Zed.app", "~/.config/zed"}},
  };
  return catalogue;
}

std::string serverPath() {
  const auto bundle = platform::enclosingBundle(platform::executablePath());
  return bundle.value_or("/Applications/Zelto.app") + "/Contents/SharedSupport/ZeltoCLI";
}

std::string entryText(Style style, std::string_view server) {
  const std::string path = quoted(server);
  std::string arguments;
  for (const std::string_view argument : serverArguments) {
    if (!arguments.empty()) arguments += ", ";
    arguments += quoted(argument);
  }
  if (style == Style::zed) {
    return "{\n  \"source\": \"custom\",\n  \"command\": {\n    \"path\": " + path + ",\n    \"args\": [" +
           arguments + "]\n  }\n}";
  }
  const std::string type = style == Style::vsCode ? "  \"type\": \"stdio\",\n" : "";
  return "{\n" + type + "  \"command\": " + path + ",\n  \"args\": [" + arguments + "]\n}";
}

std::string realConfigFile(std::string_view path) {
  const std::string standard = platform::standardizedPath(platform::expandTilde(path));
  return followed(followed(platform::directoryOf(standard)) + "/" + standard.substr(standard.rfind('/') + 1));
}

void install(const Client& client) {
  edit(client, [&](const std::string& old) {
    return JSONCEditor::set(old, topKey(client.style), memberKey, entryText(client.style));
  });
}

void remove(const Client& client) {
  edit(client,
       [&](const std::string& old) { return JSONCEditor::remove(old, topKey(client.style), memberKey); });
}

bool isInstalled(const Client& client) try {
  const auto object = JSONCEditor::readObject(platform::expandTilde(client.path));
  const json::JSONValue* servers = object ? object->find(topKey(client.style)) : nullptr;
  return servers != nullptr && servers->object() != nullptr && servers->object()->contains(memberKey);
} catch (const std::exception&) {
  return false;
}

}  // namespace zelto::MCPInstaller
