#include "support/Process.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace support {
namespace {

/// A terminal that passes on what is typed unchanged and does not echo it: its outer end, and the one that
/// programs hold.
void openTerminal(int (&ends)[2], const std::string& typed) {
  ends[0] = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (::grantpt(ends[0]) != 0 || ::unlockpt(ends[0]) != 0) throw std::runtime_error("no terminal");
  ends[1] = ::open(::ptsname(ends[0]), O_RDWR | O_NOCTTY);
  const winsize size{25, 80, 0, 0};
  ::ioctl(ends[1], TIOCSWINSZ, &size);
  termios settings{};
  ::tcgetattr(ends[1], &settings);
  settings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  settings.c_iflag &= ~static_cast<tcflag_t>(ICRNL);
  ::tcsetattr(ends[1], TCSANOW, &settings);
  if (::write(ends[0], typed.data(), typed.size()) < 0) throw std::runtime_error("cannot type");
}

/// Takes what there is, and closes the descriptor at the end.
void drain(int& descriptor, std::string& into) {
  char buffer[65536];
  const auto count = ::read(descriptor, buffer, sizeof buffer);
  if (count > 0)
    into.append(buffer, static_cast<std::size_t>(count));
  else
    ::close(std::exchange(descriptor, -1));
}

}  // namespace

Process::Process(const std::string& line, const std::map<std::string, std::string>& environment,
                 const std::string* typed) {
  std::vector<std::string> variables;
  std::vector<char*> pointers;
  for (const auto& [name, value] : environment) variables.push_back(name + "=" + value);
  for (std::string& each : variables) pointers.push_back(each.data());
  pointers.push_back(nullptr);

  int outputs[2], errors[2];
  if (::pipe(errors) != 0 || (!typed && ::pipe(outputs) != 0)) throw std::runtime_error("no pipe");
  if (typed) openTerminal(outputs, *typed);
  id = ::fork();
  if (id == 0) {
    ::dup2(typed ? outputs[1] : ::open("/dev/null", O_RDONLY), 0);
    ::dup2(outputs[1], 1);
    ::dup2(errors[1], 2);
    for (int each = 3; each < 1024; ++each) ::close(each);
    ::execle("/bin/sh", "sh", "-c", line.c_str(), nullptr, pointers.data());
    ::_exit(127);
  }
  ::close(outputs[1]);
  ::close(errors[1]);
  out = outputs[0];
  error = errors[0];
}

Process::~Process() {
  if (id > 0) end(SIGKILL);
}

bool Process::gather() {
  pollfd polled[] = {{out, POLLIN, 0}, {error, POLLIN, 0}};
  ::poll(polled, 2, 100);
  if (polled[0].revents != 0) drain(out, outcome.output);
  if (polled[1].revents != 0) drain(error, outcome.error);
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
  for (const int each : {out, error}) {
    if (each >= 0) ::close(each);
  }
  int status = 0;
  ::waitpid(std::exchange(id, -1), &status, 0);
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return outcome;
}

}  // namespace support
