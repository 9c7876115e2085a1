#include "Script.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <optional>
#include <system_error>
#include <vector>

#include <boost/nowide/utf/convert.hpp>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" char** environ;

namespace standin {
namespace {

[[noreturn]] void raise(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

void shut(int& descriptor) {
  if (descriptor >= 0) close(descriptor);
  descriptor = -1;
}

// One output stream of a script: the pipe, and what came out of it.
struct Stream {
  int readEnd = -1, writeEnd = -1;
  std::string text;

  Stream() {
    int ends[2];
    if (pipe(ends) != 0) raise("pipe");
    readEnd = ends[0], writeEnd = ends[1];
    fcntl(readEnd, F_SETFL, O_NONBLOCK);
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { shut(readEnd), shut(writeEnd); }

  // Takes what the pipe holds now. Both bounds are there for a script that writes without end: the caller has
  // to see its time limit, and memory must not fill.
  void drain() {
    constexpr std::size_t mostKept = 64 << 20;
    char buffer[65536];
    for (int round = 0; readEnd >= 0 && round < 64; ++round) {
      const ssize_t count = read(readEnd, buffer, sizeof buffer);
      if (count < 0 && errno == EAGAIN) return;
      if (count == 0 || (count < 0 && errno != EINTR)) shut(readEnd);
      if (count > 0) text.append(buffer, std::min(static_cast<std::size_t>(count), mostKept - text.size()));
    }
  }
};

// A script that is too long for an argument list goes through a file that only its owner can read.
struct ScriptFile {
  std::string path = "/tmp/zelto-script.XXXXXX";

  explicit ScriptFile(const std::string& text) {
    const int descriptor = mkstemp(path.data());
    if (descriptor < 0) raise("script file");
    FILE* file = fdopen(descriptor, "w");
    const bool written = fwrite(text.data(), 1, text.size(), file) == text.size();
    if (fclose(file) == 0 && written) return;
    unlink(path.c_str());
    raise("script file");
  }
  ScriptFile(const ScriptFile&) = delete;
  ScriptFile& operator=(const ScriptFile&) = delete;
  ~ScriptFile() { unlink(path.c_str()); }
};

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

// Runs between fork and exec, so only what is safe after a fork of a threaded process may be called.
[[noreturn]] void becomeScript(int output, int errors, char** arguments, char** environment) {
  setpgid(0, 0);
  signal(SIGPIPE, SIG_DFL);
  dup2(open("/dev/null", O_RDONLY), 0), dup2(output, 1), dup2(errors, 2);
  // A connection that a background child of the script keeps open would never end for the client. Descriptors
  // are given out lowest first, and the server never has as many as this.
  for (int descriptor = 3; descriptor < 1024; ++descriptor) close(descriptor);
  execve(arguments[0], arguments, environment);
  constexpr std::string_view complaint = "the runner cannot be run\n";
  _exit(write(2, complaint.data(), complaint.size()) < 0 ? 126 : 127);
}

}  // namespace

std::string valueText(const boost::json::value& value) {
  if (const auto* text = value.if_string()) return std::string(*text);
  if (!value.is_double()) return boost::json::serialize(value);
  char buffer[32];
  return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value.get_double()).ptr};
}

std::string environmentName(std::string_view key) {
  std::string name = "ZELTO_";
  bool inWord = false;
  for (const char c : key) {
    const auto byte = static_cast<unsigned char>(c);
    if (inWord && std::isupper(byte)) name += '_';
    inWord = std::islower(byte) || std::isdigit(byte);
    name += std::isalnum(byte) ? static_cast<char>(std::toupper(byte)) : '_';
  }
  return name;
}

std::string repairUTF8(std::string_view text) {
  return boost::nowide::utf::convert_string<char>(text.data(), text.data() + text.size());
}

boost::json::object runScript(const Script& script, const std::atomic<bool>& stopping) {
  constexpr std::size_t longestArgument = 100'000;
  std::optional<ScriptFile> file;
  // zsh is every Mac's shell but not every development machine's.
  const bool noZsh = script.runner == "/bin/zsh" && access("/bin/zsh", X_OK) != 0;
  std::vector<std::string> arguments = {noZsh ? "/bin/sh" : script.runner, "-c", script.text};
  if (script.text.size() > longestArgument || script.text.find('\0') != std::string::npos) {
    arguments = {arguments[0], file.emplace(script.text).path};
  }
  std::vector<std::string> environment;
  for (char** entry = environ; *entry; ++entry) environment.push_back(*entry);
  for (const auto& [key, value] : script.values) {
    environment.push_back(environmentName(key) + "=" + valueText(value));
  }
  const std::vector<char*> argumentList = pointers(arguments), environmentList = pointers(environment);

  Stream output, errors;
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  const auto elapsed = [&] { return std::chrono::duration<double>(Clock::now() - start).count(); };
  const pid_t child = fork();
  if (child < 0) raise("fork");
  if (child == 0) {
    becomeScript(output.writeEnd, errors.writeEnd, const_cast<char**>(argumentList.data()),
                 const_cast<char**>(environmentList.data()));
  }
  setpgid(child, child);  // in both processes, so that the group exists before either needs it
  shut(output.writeEnd), shut(errors.writeEnd);

  int status = 0;
  bool killed = false;
  // The child's end, not the pipes', ends the run: a process that it leaves behind may hold them open.
  for (bool ended = false; !ended;) {
    pollfd descriptors[] = {{output.readEnd, POLLIN, 0}, {errors.readEnd, POLLIN, 0}};
    poll(descriptors, 2, output.readEnd < 0 && errors.readEnd < 0 ? 1 : 20);
    ended = waitpid(child, &status, WNOHANG) == child;
    output.drain(), errors.drain();
    if (!ended && !killed && (stopping || elapsed() >= script.timeout)) {
      kill(-child, SIGKILL);
      killed = true;
    }
  }
  const int exitCode = killed ? 124 : WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  return {{"exitCode", exitCode},
          {"duration", elapsed()},
          {"stdout", repairUTF8(output.text)},
          {"stderr", repairUTF8(errors.text)}};
}

}  // namespace standin
