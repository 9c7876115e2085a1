// `zelto groups` and its subcommands.
#pragma once

#include <string>

#include "cli/Options.h"

namespace zelto {

struct Groups {
  struct List {
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Enable {
    std::string name;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Disable {
    std::string name;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Rename {
    std::string name, newName;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  static ArgumentParser::Declaration declaration();
};

}  // namespace zelto
