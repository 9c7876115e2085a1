// `zelto rules` and its subcommands.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/Options.h"

namespace zelto {

struct Rules {
  struct List {
    std::string scope;
    std::optional<std::string> group;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Show {
    std::string id;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Add {
    std::string trigger;
    std::optional<std::string> sub, name, group, action;
    std::vector<std::string> set;
    bool disabled = false;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Set {
    std::string id;
    std::vector<std::string> assignments;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Remove {
    std::vector<std::string> ids;
    bool force = false;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Enable {
    std::vector<std::string> ids;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Disable {
    std::vector<std::string> ids;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Fire {
    std::string id;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  static ArgumentParser::Declaration declaration();
};

}  // namespace zelto
