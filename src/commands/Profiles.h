// `zelto profiles` and its subcommands.
#pragma once

#include <optional>
#include <string>

#include "cli/Options.h"

namespace zelto {

struct Profiles {
  struct List {
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Add {
    std::string name;
    std::optional<std::string> icon;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Activate {
    std::string id;
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  static ArgumentParser::Declaration declaration();
};

}  // namespace zelto
