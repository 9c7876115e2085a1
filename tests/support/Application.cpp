#include "support/Application.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

Application::Application(const std::string& program, std::string standIn_) : standIn(std::move(standIn_)) {
  std::filesystem::create_directory(home / "bin");
  std::filesystem::create_symlink(program, home / "bin/zelto");
  environment = {{"HOME", home.path}, {"PATH", home / "bin:" + std::getenv("PATH")}, {"TZ", "UTC"}};
}

Application::~Application() {
  run({standIn, {"open", "zelto://mcp/stop"}, "", environment});
}

Outcome Application::shell(const std::string& command, const std::string& input, bool onTerminal) const {
  Outcome outcome = run({"/bin/sh", {"-c", "cd; " + command}, input, environment, onTerminal});
  if (onTerminal) std::erase(outcome.output, '\r');
  return outcome;
}

Running::Running(const Application& application, const std::string& command) {
  int outputs[2], errors[2];
  if (::pipe2(outputs, O_CLOEXEC) != 0 || ::pipe2(errors, O_CLOEXEC) != 0)
    throw std::runtime_error("no pipe");
  out = outputs[0];
  error = errors[0];
  process = ::fork();
  if (process == 0) {
    ::dup2(outputs[1], 1);
    ::dup2(errors[1], 2);
    for (const auto& [name, value] : application.environment) ::setenv(name.c_str(), value.c_str(), 1);
    ::execl("/bin/sh", "sh", "-c", ("cd; exec " + command).c_str(), nullptr);
    ::_exit(127);
  }
  ::close(outputs[1]);
  ::close(errors[1]);
}

Running::~Running() {
  if (process > 0) end(SIGKILL);
  ::close(out);
  ::close(error);
}

bool Running::gather() {
  pollfd polled[] = {{out, POLLIN, 0}, {error, POLLIN, 0}};
  ::poll(polled, 2, 100);
  bool open = false;
  for (const auto& [pipe, into] :
       {std::pair(polled[0], &outcome.output), std::pair(polled[1], &outcome.error)}) {
    char buffer[65536];
    const auto count = pipe.revents != 0 ? ::read(pipe.fd, buffer, sizeof buffer) : -1;
    if (count > 0) into->append(buffer, static_cast<std::size_t>(count));
    open = open || count != 0;
  }
  return open && std::chrono::steady_clock::now() < deadline;
}

bool Running::shows(const std::string& text) {
  const auto found = [&] { return (outcome.output + outcome.error).find(text) != std::string::npos; };
  while (!found() && gather()) {
  }
  return found();
}

void Running::signal(int number) const {
  ::kill(process, number);
}

Outcome Running::end(int number) {
  if (number != 0) signal(number);
  while (gather()) {
  }
  if (std::chrono::steady_clock::now() >= deadline) signal(SIGKILL);
  int status = 0;
  ::waitpid(process, &status, 0);
  process = -1;
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return outcome;
}

}  // namespace support
