#include "support/Application.h"

#include <cstdlib>
#include <filesystem>

namespace support {

Application::Application(const std::string& program, std::string standIn_) : standIn(std::move(standIn_)) {
  std::filesystem::create_directory(home / "bin");
  std::filesystem::create_symlink(program, home / "bin/zelto");
  environment = {{"HOME", home.path}, {"PATH", home / "bin:" + std::getenv("PATH")}, {"TZ", "UTC"}};
}

Application::~Application() {
  Process({standIn, {"open", "zelto://mcp/stop"}, "", environment}).end();
}

Outcome Application::shell(const std::string& command, const std::string& input, bool onTerminal) const {
  Outcome outcome = Process({"/bin/sh", {"-c", "cd; " + command}, input, environment, onTerminal}).end();
  if (onTerminal) std::erase(outcome.output, '\r');
  return outcome;
}

Running::Running(const Application& application, const std::string& command)
    : Process({"/bin/sh", {"-c", "cd; exec " + command}, "", application.environment}) {}

}  // namespace support
