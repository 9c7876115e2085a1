#include "support/Application.h"

#include <cstdlib>
#include <filesystem>

namespace support {

Application::Application(const std::string& program, std::string standIn_) : standIn(std::move(standIn_)) {
  std::filesystem::create_directory(home / "bin");
  std::filesystem::create_symlink(program, home / "bin/zelto");
  environment = {{"HOME", home.path}, {"PATH", home / "bin:" + std::getenv("PATH")}, {"TZ", "UTC"}};
  for (const char* kept : {"TMPDIR", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
    if (const char* value = std::getenv(kept)) environment[kept] = value;
  }
}

Application::~Application() {
  shell("'" + standIn + "' open zelto://mcp/stop");
}

Outcome Application::shell(const std::string& command, const std::string& input, bool onTerminal) const {
  if (onTerminal) {
    Outcome outcome = Process("cd; " + command, environment, &input).end();
    std::erase(outcome.output, '\r');
    return outcome;
  }
  const TemporaryDirectory directory;
  writeFile(directory / "input", input);
  return Process("cd; cat '" + directory.path + "/input' | {\n" + command + "\n}", environment).end();
}

Running::Running(const Application& application, const std::string& command)
    : Process("cd; exec " + command, application.environment) {}

}  // namespace support
