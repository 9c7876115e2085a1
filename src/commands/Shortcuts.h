// `zelto shortcuts` and its subcommands.
#pragma once

#include <string>

#include "cli/Options.h"

namespace zelto {

struct Shortcuts {
  struct List {
    bool builtin = false;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Install {
    std::string name;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  static ArgumentParser::Declaration declaration();
};

}  // namespace zelto
