#include "support/Process.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace support {
namespace {

using Clock = std::chrono::steady_clock;

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

Outcome run(const Invocation& invocation) {
  std::vector<std::string> arguments{invocation.program};
  arguments.insert(arguments.end(), invocation.arguments.begin(), invocation.arguments.end());
  auto environment = environmentOf(invocation);
  const auto argv = pointers(arguments), envp = pointers(environment);

  int in[2] = {-1, -1}, out[2] = {-1, -1}, err[2];
  if (::pipe2(err, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  if (invocation.onTerminal) {
    out[0] = openTerminal(invocation.columns, out[1]);
    in[0] = ::fcntl(out[1], F_DUPFD_CLOEXEC, 0);
    in[1] = ::fcntl(out[0], F_DUPFD_CLOEXEC, 0);
  } else if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }

  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(in[0], 0);
    ::dup2(out[1], 1);
    ::dup2(err[1], 2);
    ::execve(argv[0], argv.data(), envp.data());
    ::_exit(127);
  }
  for (const int end : {in[0], out[1], err[1]}) ::close(end);
  ::fcntl(in[1], F_SETFL, O_NONBLOCK);
  const auto ignored = std::signal(SIGPIPE, SIG_IGN);

  Outcome outcome;
  std::string_view left = invocation.input;
  const auto deadline = Clock::now() + std::chrono::minutes(1);
  bool outOpen = true, errOpen = true, inOpen = true;
  while (outOpen || errOpen) {
    if (inOpen && left.empty() && !invocation.onTerminal) {
      ::close(in[1]);
      inOpen = false;
    }
    pollfd polled[] = {{outOpen ? out[0] : -1, POLLIN, 0},
                       {errOpen ? err[0] : -1, POLLIN, 0},
                       {inOpen && !left.empty() ? in[1] : -1, POLLOUT, 0}};
    ::poll(polled, 3, 100);
    if (polled[0].revents != 0) outOpen = drain(out[0], outcome.output);
    if (polled[1].revents != 0) errOpen = drain(err[0], outcome.error);
    if (polled[2].revents != 0) {
      const auto count = ::write(in[1], left.data(), left.size());
      left.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : (errno == EAGAIN ? 0 : left.size()));
    }
    if (Clock::now() > deadline) {
      ::kill(child, SIGKILL);
      break;
    }
  }
  std::signal(SIGPIPE, ignored);
  for (const int end : {out[0], err[0], inOpen ? in[1] : -1}) {
    if (end >= 0) ::close(end);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return outcome;
}

}  // namespace support
