// `zelto events`, `zelto history` and `zelto watch`: the two feeds of the application, their tails and live.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/Options.h"

namespace zelto {

struct Events {
  std::int64_t count = 0;
  bool follow = false;
  std::optional<std::int64_t> since;
  GlobalOptions options;
  static ArgumentParser::Declaration declaration();
  void run() const;
};

struct History {
  std::int64_t count = 0;
  bool follow = false;
  std::optional<std::int64_t> since;
  bool verbose = false;
  GlobalOptions options;
  static ArgumentParser::Declaration declaration();
  void run() const;
};

struct Watch {
  std::optional<std::string> only;
  bool verbose = false;
  GlobalOptions options;
  static ArgumentParser::Declaration declaration();
  void run() const;
};

}  // namespace zelto
