// Runs a program and keeps what it prints.
#pragma once

#include <chrono>
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

/// A program at work while the test goes on. Killed at the end of its scope, or of its minute.
class Process {
 public:
  explicit Process(const Invocation& invocation);
  Process(const Process&) = delete;
  ~Process();

  /// Gathers what comes, and feeds the input, until `text` stands in the output or the diagnostics. False if
  /// the program ends before.
  bool shows(const std::string& text);
  /// Waits for the end, after sending `signal` if that is not 0.
  Outcome end(int signal = 0);

  int id = -1;

 private:
  bool gather();

  std::string typed;
  bool keepsInput;
  int in = -1, out = -1, error = -1;
  Outcome outcome;
  std::chrono::steady_clock::time_point deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
};

}  // namespace support
