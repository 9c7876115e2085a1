// `zelto schema`: the trigger types, their sub-events, and the values each one carries.
#pragma once

#include <optional>
#include <string>

#include "cli/Options.h"

namespace zelto {

struct Schema {
  std::optional<std::string> trigger;
  bool values = false;
  GlobalOptions options;
  static ArgumentParser::Declaration declaration();
  void run() const;
};

}  // namespace zelto
