// `zelto docs`, `zelto prompt` and `zelto runners`: what the application tells its own code generator.
#pragma once

#include <optional>
#include <string>

#include "cli/Options.h"

namespace zelto {

struct Docs {
  std::optional<std::string> topic;
  GlobalOptions options;
  static ArgumentParser::Declaration declaration();
  void run() const;
};

struct Prompt {
  std::string kind;
  std::optional<std::string> sub;
  std::string runner;
  GlobalOptions options;
  static ArgumentParser::Declaration declaration();
  void run() const;
};

struct Runners {
  GlobalOptions options;
  static ArgumentParser::Declaration declaration();
  void run() const;
};

}  // namespace zelto
