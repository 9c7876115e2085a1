#include "cli/Settings.h"

#include <cstdlib>

#include "platform/Terminal.h"

namespace zelto {

Settings settings;

bool Settings::colourEnabled() const {
  static const bool isWelcome = platform::outputIsTerminal() && std::getenv("NO_COLOR") == nullptr;
  return allowsColour && isWelcome;
}

}  // namespace zelto
