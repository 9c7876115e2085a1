// Registers the MCP server with AI agents: the catalogue of agents, and the entry in their configuration
// files.
#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zelto::MCPInstaller {

/// The shape of an agent's configuration file: its language, under which key its servers are, and what an
/// entry holds.
enum class Style { mcpServers, vsCode, zed };

/// An agent.
struct Client {
  std::string id;      ///< what a person types
  std::string name;    ///< what a person reads
  std::string detail;  ///< what to do after installing
  std::string path;    ///< its configuration file; may begin with "~"
  Style style;
  std::vector<std::string> evidence;  ///< further paths that show it is here; may begin with "~"

  /// Whether its configuration file or any of the evidence exists, or cannot be looked at.
  bool isPresent() const;
};

/// The agents, in the order of every listing.
const std::vector<Client>& clients();

/// The arguments with which an agent starts the server.
inline constexpr std::array<std::string_view, 2> serverArguments{"mcp", "serve"};

/// The server cannot be registered.
struct InstallError : std::runtime_error {
  static InstallError missingServer() {
    return InstallError("Zelto's binary is missing, so the MCP server cannot run.");
  }

 private:
  using std::runtime_error::runtime_error;
};

/// The path that entries point at: the server of the application bundle around the running executable, or
/// that of the application in its usual place. Whether anything is there is not looked at.
std::string serverPath();

/// Whether the server at that path can be started.
bool isRunnable(const std::string& server);

/// The JSON text of an entry that starts the server at `server`.
std::string entryText(Style style, std::string_view server);

/// The file to edit for the configuration path `path`: symbolic links of the file and of its directory
/// followed, dangling ones too. Raises `platform::SystemError` if a link cannot be read.
std::string realConfigFile(std::string_view path);

/// Writes the entry that starts the server at `server` into the agent's configuration file, which is created
/// if it is missing and left alone if the entry is there already. Raises `JSONCEditor::EditError` or
/// `platform::SystemError`; the file is then as it was.
void install(const Client& client, std::string_view server);

/// Takes the entry out, if there is one. Raises like `install`.
void remove(const Client& client);

/// Whether the agent's configuration file holds an entry. A file that cannot be read or parsed holds none.
bool isInstalled(const Client& client);

}  // namespace zelto::MCPInstaller
