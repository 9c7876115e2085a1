#include "install/MCPInstaller.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

#include "client/SystemRoot.h"
#include "install/JSONCEditor.h"
#include "json/JSONText.h"
#include "platform/AtomicFile.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "platform/Log.h"

namespace zelto::MCPInstaller {
namespace {

constexpr std::string_view memberKey = "zelto";
constexpr platform::LogSource logSource{.subsystem = "com.mirrowfen.Zelto", .category = "MCPInstaller"};
constexpr std::string_view temporaryPrefix = ".zelto-";
/// Where the server is if the application is in its usual place.
constexpr const char* usualServer = "/Applications/Zelto.app/Contents/SharedSupport/ZeltoCLI";
/// More often than an editor saves in the time that an edit takes.
constexpr int mostAttempts = 5;

/// The path at which something is looked for.
std::string located(const std::string& path) {
  return platform::expandTilde(path.starts_with('/') ? systemRoot + path : path);
}

std::string quoted(std::string_view text) {
  std::string result;
  json::appendQuoted(result, text);
  return result;
}

/// How the configuration files of one language are changed and read: the functions of that language's editor.
struct Language {
  Splice (*set)(std::string_view text, std::string_view topKey, std::string_view key, std::string_view entry);
  std::optional<Splice> (*remove)(std::string_view text, std::string_view topKey, std::string_view key);
  bool (*contains)(const std::string& path, std::string_view topKey, std::string_view key);
};

bool holdsMember(const std::string& path, std::string_view topKey, std::string_view key) {
  const auto object = JSONCEditor::readObject(path);
  const json::JSONValue* servers = object ? object->find(topKey) : nullptr;
  return servers != nullptr && servers->object() != nullptr && servers->object()->contains(key);
}

constexpr Language jsonc{&JSONCEditor::set, &JSONCEditor::remove, &holdsMember};

/// The text of an entry, of a server path and arguments that are quoted already.
using EntryText = std::string (*)(const std::string& path, const std::string& arguments);

std::string plainEntry(const std::string& path, const std::string& arguments) {
  return "{\n  \"command\": " + path + ",\n  \"args\": [" + arguments + "]\n}";
}

std::string typedEntry(const std::string& path, const std::string& arguments) {
  return "{\n  \"type\": \"stdio\",\n  \"command\": " + path + ",\n  \"args\": [" + arguments + "]\n}";
}

std::string nestedEntry(const std::string& path, const std::string& arguments) {
  return "{\n  \"source\": \"custom\",\n  \"command\": {\n    \"path\": " + path + ",\n    \"args\": [" +
         arguments + "]\n  }\n}";
}

/// Everything that sets one style apart from another. A further style is a row in `shapeOf`, which does not
/// compile without it.
struct Shape {
  const Language& language;
  std::string_view topKey;  ///< of the member that holds the servers
  EntryText entry;
};

Shape shapeOf(Style style) {
  switch (style) {
    case Style::mcpServers:
      return {jsonc, "mcpServers", plainEntry};
    case Style::vsCode:
      return {jsonc, "servers", typedEntry};
    case Style::zed:
      return {jsonc, "context_servers", nestedEntry};
  }
  throw std::logic_error("a style without a shape");
}

/// Puts what `change` makes of the client's configuration in its place; no change, or one that changes
/// nothing, leaves the file untouched. A file that somebody else writes meanwhile is read again, so that
/// their change stays.
template <class Change>
void edit(const Client& client, Change change) {
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    const std::string file = realConfigFile(client.path);
    const auto old = platform::readTextFile(file);
    const std::optional<Splice> splice = change(old ? std::string_view(old->text) : std::string_view());
    if (!splice || (old && splice->changesNothing())) return;
    if (platform::replaceFile(file, splice->pieces(), old, temporaryPrefix)) {
      return platform::log(logSource, platform::LogLevel::info, "Wrote MCP entry to " + client.path);
    }
  }
  throw platform::SystemError::file(client.path, "another program keeps changing it; nothing was written");
}

/// Runs `edit`; a failure goes to the log before it is raised again.
template <class Change>
void editLogged(const Client& client, Change change) {
  try {
    edit(client, change);
  } catch (const std::runtime_error& error) {
    platform::log(logSource, platform::LogLevel::error,
                  "MCP install failed for " + client.name + ": " + error.what());
    throw;
  }
}

}  // namespace

bool Client::isPresent() const {
  // A file that cannot be looked at may exist, so it counts as present; `install` then says what is wrong
  // with it.
  const auto mayExist = [](const std::string& each) { return !platform::isAbsent(located(each)); };
  return mayExist(path) || std::any_of(evidence.begin(), evidence.end(), mayExist);
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
  return bundle ? *bundle + "/Contents/SharedSupport/ZeltoCLI" : usualServer;
}

bool isRunnable(const std::string& server) {
  return platform::isExecutableFile(server == usualServer ? located(server) : server);
}

std::string entryText(Style style, std::string_view server) {
  std::string arguments;
  for (const std::string_view argument : serverArguments) {
    if (!arguments.empty()) arguments += ", ";
    arguments += quoted(argument);
  }
  return shapeOf(style).entry(quoted(server), arguments);
}

std::string realConfigFile(std::string_view path) {
  return platform::followedPath(platform::expandTilde(path));
}

void install(const Client& client, std::string_view server) {
  const Shape shape = shapeOf(client.style);
  const std::string entry = entryText(client.style, server);
  editLogged(client,
             [&](std::string_view old) { return shape.language.set(old, shape.topKey, memberKey, entry); });
}

void remove(const Client& client) {
  const Shape shape = shapeOf(client.style);
  editLogged(client,
             [&](std::string_view old) { return shape.language.remove(old, shape.topKey, memberKey); });
}

bool isInstalled(const Client& client) {
  const Shape shape = shapeOf(client.style);
  try {
    return shape.language.contains(platform::expandTilde(client.path), shape.topKey, memberKey);
  } catch (const std::runtime_error&) {
    // The agent cannot read such a configuration either, so it has no entry.
    return false;
  }
}

}  // namespace zelto::MCPInstaller
