#include "platform/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace platform {

bool isTerminal(int descriptor) {
  return ::isatty(descriptor) == 1;
}

bool outputIsTerminal() {
  static const bool is = isTerminal(STDOUT_FILENO);
  return is;
}

bool inputIsTerminal() {
  return isTerminal(STDIN_FILENO);
}

std::optional<TerminalSize> terminalSize() {
  winsize size{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return std::nullopt;
  return TerminalSize{size.ws_col, size.ws_row};
}

}  // namespace platform
