// The program beside a stand-in for the application, in a world of their own.
#pragma once

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

/// A command line of the application's world at work while the test goes on.
class Running : public Process {
 public:
  Running(const Application& application, const std::string& command);
};

}  // namespace support
