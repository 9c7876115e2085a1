// The program beside a stand-in for the application, in a world of their own.
#pragma once

#include <chrono>
#include <map>
#include <string>

#include "support/Process.h"
#include "support/Surroundings.h"

namespace support {

/// A private home directory in which the program runs, and starts the stand-in when it wants to. Whatever a
/// test does, the stand-in ends with it.
class Application {
 public:
  /// The paths of the two executables.
  Application(const std::string& program, std::string standIn);
  Application(const Application&) = delete;
  ~Application();

  /// Runs a command line of the shell in the home directory; the program is `zelto`. On a terminal `input` is
  /// typed, and the line ends of the output are LF alone.
  Outcome shell(const std::string& command, const std::string& input = {}, bool onTerminal = false) const;

  TemporaryDirectory home;
  std::map<std::string, std::string> environment;

 private:
  std::string standIn;
};

/// A command line at work while the test goes on, its outputs in pipes. Killed at the end of its scope, or of
/// its minute.
class Running {
 public:
  Running(const Application& application, const std::string& command);
  Running(const Running&) = delete;
  ~Running();

  /// Reads what comes until `text` stands in the output or the diagnostics. False if it ends before.
  bool shows(const std::string& text);
  /// Sends a signal.
  void signal(int number) const;
  /// Waits for the end, after sending `number` if that is not 0.
  Outcome end(int number = 0);

  int process = -1;

 private:
  bool gather();

  int out = -1, error = -1;
  Outcome outcome;
  std::chrono::steady_clock::time_point deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
};

}  // namespace support
