#include "install/Mcp.h"

#include <algorithm>
#include <stdexcept>

#include "cli/CLIError.h"
#include "cli/Out.h"
#include "install/MCPInstaller.h"
#include "mcp/MCPServer.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

using ArgumentParser::command;
using ArgumentParser::type;
using MCPInstaller::Client;
using Out::Style;

/// The clients that a person means: every present one for "all", else the one of that id or name.
std::vector<Client> resolveClients(const std::string& reference) {
  std::vector<Client> chosen;
  std::vector<std::string> ids;
  for (const Client& client : MCPInstaller::clients()) {
    if (reference == "all") {
      if (client.isPresent()) chosen.push_back(client);
    } else if (text::equalIgnoringCase(client.id, reference) ||
               text::equalIgnoringCase(client.name, reference)) {
      return {client};
    }
    ids.push_back(client.id);
  }
  if (!chosen.empty()) return chosen;
  if (reference == "all") throw CLIError("no MCP client found on this Mac");
  throw CLIError("no client " + reference + ". One of: " + text::joined(ids, ", ") + ", all");
}

std::vector<Client> installedClients() {
  std::vector<Client> installed = MCPInstaller::clients();
  std::erase_if(installed, [](const Client& client) { return !MCPInstaller::isInstalled(client); });
  return installed;
}

/// Runs `change` for each client that `reference` means, and prints `deed` and what `change` returns. The
/// first failure ends it; those done stay done.
template <class Change>
void forEachClient(const std::string& reference, Out::Deed deed, Change change) {
  for (const Client& client : resolveClients(reference)) {
    Out::StyledText changed;
    try {
      changed = change(client);
    } catch (const std::runtime_error& failure) {
      throw CLIError(client.name + ": " + failure.what());
    }
    Out::done(deed, changed);
    Out::flush();
  }
}

std::string argumentsText() {
  const auto& arguments = MCPInstaller::serverArguments;
  return text::joined({arguments.begin(), arguments.end()}, " ");
}

}  // namespace

ArgumentParser::Declaration Mcp::declaration() {
  return command<Mcp>(
      {.commandName = "mcp",
       .abstract = "The MCP server, and the agents it is installed in",
       .subcommands = {type<Status>(), type<Clients>(), type<Install>(), type<Remove>(), type<Serve>()},
       .defaultSubcommand = type<Status>()});
}

ArgumentParser::Declaration Mcp::Status::declaration() {
  return command<Status>({.abstract = "Where the server is and who has it"},
                         [](auto& it) { it.group(&Status::options, "options"); });
}

void Mcp::Status::run() const {
  options.apply();
  const std::string server = MCPInstaller::serverPath();
  const bool isRunnable = MCPInstaller::isRunnable(server);
  std::vector<std::string> names;
  JSONArray ids;
  for (const Client& client : installedClients()) {
    names.push_back(client.name);
    ids.push_back(client.id);
  }
  if (settings.jsonMode) {
    const auto& arguments = MCPInstaller::serverArguments;
    return Out::json(JSONObject{{"server", server},
                                {"args", JSONArray(arguments.begin(), arguments.end())},
                                {"runnable", isRunnable},
                                {"installedIn", std::move(ids)}});
  }
  Out::fields({{"server", server + " " + argumentsText()},
               {"runnable", isRunnable ? Out::paint("yes", Style::green) : Out::paint("no", Style::red)},
               {"installed", names.empty() ? Out::paint("nowhere", Style::dim) : text::joined(names, ", ")}});
}

ArgumentParser::Declaration Mcp::Clients::declaration() {
  return command<Clients>({.abstract = "Which agents Zelto is installed in"},
                          [](auto& it) { it.group(&Clients::options, "options"); });
}

void Mcp::Clients::run() const {
  options.apply();
  JSONArray list;
  Out::Table table{{""}, {"ID", Style::cyan}, {"NAME"}, {"CONFIG", Style::dim}};
  for (const Client& client : MCPInstaller::clients()) {
    const bool isPresent = client.isPresent(), isInstalled = MCPInstaller::isInstalled(client);
    list.push_back(JSONObject{{"id", client.id},
                              {"name", client.name},
                              {"path", client.path},
                              {"present", isPresent},
                              {"installed", isInstalled}});
    table.row(
        {Out::marker(isInstalled), client.id, client.name, isPresent ? client.path : "not on this Mac"});
  }
  if (settings.jsonMode) return Out::json(std::move(list));
  table.print();
}

ArgumentParser::Declaration Mcp::Install::declaration() {
  return command<Install>(
      {.abstract = "Add Zelto to an agent's config",
       .discussion = "zelto mcp clients lists the ids. `all` installs into every agent found on this Mac."},
      [](auto& it) {
        it.argument(&Install::client, "client", {.help = "Client id, or all"});
        it.group(&Install::options, "options");
      });
}

void Mcp::Install::run() const {
  options.apply();
  // Looked up once, so that what is written is what was checked.
  const std::string server = MCPInstaller::serverPath();
  forEachClient(client, Out::Deed::installed, [&](const Client& each) {
    if (!MCPInstaller::isRunnable(server)) throw MCPInstaller::InstallError::missingServer();
    MCPInstaller::install(each, server);
    return each.name + Out::paint("  " + each.detail, Style::dim);
  });
}

ArgumentParser::Declaration Mcp::Remove::declaration() {
  return command<Remove>({.abstract = "Take Zelto out of an agent's config"}, [](auto& it) {
    it.argument(&Remove::client, "client", {.help = "Client id, or all"});
    it.group(&Remove::options, "options");
  });
}

void Mcp::Remove::run() const {
  options.apply();
  forEachClient(client, Out::Deed::removed, [](const Client& each) {
    MCPInstaller::remove(each);
    return Out::StyledText(each.name);
  });
}

ArgumentParser::Declaration Mcp::Serve::declaration() {
  return command<Serve>(
      {.abstract = "Speak MCP on stdin and stdout",
       .discussion = "For an agent to run, not for a person. Nothing but JSON-RPC reaches stdout."});
}

void Mcp::Serve::run() const {
  serve();
}

}  // namespace zelto
