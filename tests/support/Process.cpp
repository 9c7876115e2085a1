#include "support/Process.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace support {
namespace {

std::vector<std::string> environmentOf(const Invocation& invocation) {
  auto variables = invocation.environment;
  for (const char* kept : {"PATH", "TMPDIR", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
    if (const char* value = std::getenv(kept)) variables.try_emplace(kept, value);
  }
  std::vector<std::string> lines;
  for (const auto& [name, value] : variables) lines.push_back(name + "=" + value);
  return lines;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& each : texts) result.push_back(each.data());
  result.push_back(nullptr);
  return result;
}

int openTerminal(unsigned short columns, int& inside) {
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0)
    throw std::runtime_error("no terminal");
  inside = ::open(::ptsname(master), O_RDWR | O_NOCTTY | O_CLOEXEC);
  winsize size{};
  size.ws_col = columns;
  size.ws_row = 25;
  ::ioctl(inside, TIOCSWINSZ, &size);
  termios settings{};
  ::tcgetattr(inside, &settings);
  settings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  ::tcsetattr(inside, TCSANOW, &settings);
  return master;
}

/// Takes what there is; false at the end.
bool drain(int descriptor, std::string& into) {
  char buffer[65536];
  const auto count = ::read(descriptor, buffer, sizeof buffer);
  if (count > 0) into.append(buffer, static_cast<std::size_t>(count));
  return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

}  // namespace

Process::Process(const Invocation& invocation) : typed(invocation.input), keepsInput(invocation.onTerminal) {
  std::vector<std::string> arguments{invocation.program};
  arguments.insert(arguments.end(), invocation.arguments.begin(), invocation.arguments.end());
  auto environment = environmentOf(invocation);
  const auto argv = pointers(arguments), envp = pointers(environment);

  int inputs[2] = {-1, -1}, outputs[2] = {-1, -1}, errors[2];
  if (::pipe2(errors, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  if (invocation.onTerminal) {
    outputs[0] = openTerminal(invocation.columns, outputs[1]);
    inputs[0] = ::fcntl(outputs[1], F_DUPFD_CLOEXEC, 0);
    inputs[1] = ::fcntl(outputs[0], F_DUPFD_CLOEXEC, 0);
  } else if (::pipe2(inputs, O_CLOEXEC) != 0 || ::pipe2(outputs, O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  id = ::fork();
  if (id == 0) {
    ::dup2(inputs[0], 0);
    ::dup2(outputs[1], 1);
    ::dup2(errors[1], 2);
    ::execve(argv[0], argv.data(), envp.data());
    ::_exit(127);
  }
  for (const int end : {inputs[0], outputs[1], errors[1]}) ::close(end);
  in = inputs[1];
  out = outputs[0];
  error = errors[0];
  ::fcntl(in, F_SETFL, O_NONBLOCK);
}

Process::~Process() {
  if (id > 0) end(SIGKILL);
}

bool Process::gather() {
  const auto close = [](int& descriptor) { ::close(std::exchange(descriptor, -1)); };
  if (in >= 0 && typed.empty() && !keepsInput) close(in);
  pollfd polled[] = {{out, POLLIN, 0}, {error, POLLIN, 0}, {typed.empty() ? -1 : in, POLLOUT, 0}};
  ::poll(polled, 3, 100);
  if (polled[0].revents != 0 && !drain(out, outcome.output)) close(out);
  if (polled[1].revents != 0 && !drain(error, outcome.error)) close(error);
  if (polled[2].revents != 0) {
    const auto ignored = std::signal(SIGPIPE, SIG_IGN);
    const auto count = ::write(in, typed.data(), typed.size());
    typed.erase(0, count > 0 ? static_cast<std::size_t>(count) : (errno == EAGAIN ? 0 : typed.size()));
    std::signal(SIGPIPE, ignored);
  }
  return (out >= 0 || error >= 0) && std::chrono::steady_clock::now() < deadline;
}

bool Process::shows(const std::string& text) {
  const auto found = [&] { return (outcome.output + outcome.error).find(text) != std::string::npos; };
  while (!found() && gather()) {
  }
  return found();
}

Outcome Process::end(int signal) {
  if (signal != 0) ::kill(id, signal);
  while (gather()) {
  }
  if (std::chrono::steady_clock::now() >= deadline) ::kill(id, SIGKILL);
  for (const int each : {in, out, error}) {
    if (each >= 0) ::close(each);
  }
  int status = 0;
  ::waitpid(std::exchange(id, -1), &status, 0);
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return outcome;
}

}  // namespace support
