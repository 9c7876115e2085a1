// `zelto health`: whether the application is there, and what it is running.
#pragma once

#include "cli/Options.h"

namespace zelto {

struct Health {
  GlobalOptions options;

  static ArgumentParser::Declaration declaration();
  void run() const;
};

}  // namespace zelto
