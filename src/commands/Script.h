// `zelto script test`: runs a script as a rule would.
#pragma once

#include <string>
#include <vector>

#include "cli/Options.h"

namespace zelto {

struct Script {
  struct Test {
    std::string file;
    std::string runner;
    double timeout = 0;  ///< seconds; the script's own limit, not that of the request
    std::vector<std::string> value;
    OutputOptions options;
    static ArgumentParser::Declaration declaration();
    void run() const;
  };

  static ArgumentParser::Declaration declaration();
};

}  // namespace zelto
