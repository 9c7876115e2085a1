// Runs a program to its end and keeps what it printed.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace support {

struct Outcome {
  std::string output;
  std::string error;
  int status = 0;  ///< the exit status, or 128 and the signal that ended it
};

struct Invocation {
  std::string program;
  std::vector<std::string> arguments;
  std::string input = {};
  /// The whole environment besides PATH, TMPDIR and what sanitizers read.
  std::map<std::string, std::string> environment = {};
  /// Standard input and output on a pseudo-terminal, the input typed into it; `output` then has its CR LF
  /// ends.
  bool onTerminal = false;
  /// Columns of that terminal; 0 is one that does not know.
  unsigned short columns = 80;
};

/// Runs it, feeding `input` while gathering both outputs. A program that runs for over a minute is killed.
Outcome run(const Invocation& invocation);

}  // namespace support
