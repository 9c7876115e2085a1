// The terminal: whether a stream is one, and how wide it is.
#pragma once

#include <optional>

namespace platform {

/// Whether the descriptor is connected to a terminal.
bool isTerminal(int descriptor);

/// Whether standard output is. Asked once.
bool outputIsTerminal();

/// Whether standard input is.
bool inputIsTerminal();

struct TerminalSize {
  int columns;
  int rows;
};

/// The size of the terminal that standard output goes to, in characters; nothing if there is no terminal. A
/// size that the terminal does not know is 0.
std::optional<TerminalSize> terminalSize();

}  // namespace platform
