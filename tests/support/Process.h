// Runs a command line and keeps what it prints.
#pragma once

#include <chrono>
#include <map>
#include <string>

namespace support {

struct Outcome {
  std::string output;
  std::string error;
  int status = 0;  ///< the exit status, or 128 and the signal that ended it
};

/// A line of the shell at work while the test goes on. Killed at the end of its scope, or of its minute.
class Process {
 public:
  /// Without `typed` there is no input. With it, standard input and output are a terminal of 80 columns into
  /// which that is typed; `output` then has its CR LF ends.
  Process(const std::string& line, const std::map<std::string, std::string>& environment,
          const std::string* typed = nullptr);
  Process(const Process&) = delete;
  ~Process();

  /// Gathers what comes until `text` stands in the output or the diagnostics. False if the program ends
  /// before.
  bool shows(const std::string& text);
  /// Waits for the end, after sending `signal` if that is not 0.
  Outcome end(int signal = 0);

  int id = -1;

 private:
  bool gather();

  int out = -1, error = -1;
  Outcome outcome;
  std::chrono::steady_clock::time_point deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
};

}  // namespace support
