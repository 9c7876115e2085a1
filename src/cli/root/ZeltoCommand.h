// The root of the command tree.
#pragma once

#include "ArgumentParser/ArgumentParser.h"

namespace zelto {

struct ZeltoCommand {
  static ArgumentParser::Declaration declaration();
};

}  // namespace zelto
