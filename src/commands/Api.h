// `zelto api` and its subcommands: the switch of the local API.
#pragma once

#include "cli/Options.h"

namespace zelto {

struct Api {
  struct Status {
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Start {
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  struct Stop {
    GlobalOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  static ArgumentParser::Declaration declaration();
};

}  // namespace zelto
