// `zelto mcp` and its subcommands: the MCP server, and the agents it is installed in.
#pragma once

#include <string>

#include "cli/Options.h"

namespace zelto {

struct Mcp {
  struct Status {
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Clients {
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Install {
    std::string client;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Remove {
    std::string client;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Serve {
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  static ArgumentParser::Declaration declaration();
};

}  // namespace zelto
