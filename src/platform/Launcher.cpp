#include "platform/Launcher.h"

#include <cerrno>
#include <csignal>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/FileDescriptor.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): macOS does not declare it

namespace platform {
namespace {

struct FileActions {
  posix_spawn_file_actions_t actions{};
  FileActions() { ::posix_spawn_file_actions_init(&actions); }
  ~FileActions() { ::posix_spawn_file_actions_destroy(&actions); }
};

/// A child starts with the default action for SIGPIPE, even where this process ignores it.
struct Attributes {
  posix_spawnattr_t attributes{};
  Attributes() {
    sigset_t broken{};
    // Macros on macOS, so without "::".
    sigemptyset(&broken);
    sigaddset(&broken, SIGPIPE);
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setsigdefault(&attributes, &broken);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  }
  ~Attributes() { ::posix_spawnattr_destroy(&attributes); }
};

/// A pipe whose ends no other child inherits.
bool openPipe(FileDescriptor& reading, FileDescriptor& writing) {
  int ends[2];
  if (::pipe(ends) != 0) return false;
  reading = FileDescriptor(ends[0]);
  writing = FileDescriptor(ends[1]);
  return ::fcntl(ends[0], F_SETFD, FD_CLOEXEC) == 0 && ::fcntl(ends[1], F_SETFD, FD_CLOEXEC) == 0;
}

}  // namespace

std::optional<std::string> openURL(const std::string& launcher, const std::string& url,
                                   const std::optional<std::string>& application) {
  FileDescriptor reading, writing;
  if (!openPipe(reading, writing)) return std::nullopt;
  FileActions files;
  ::posix_spawn_file_actions_addopen(&files.actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  ::posix_spawn_file_actions_adddup2(&files.actions, writing.get(), STDERR_FILENO);

  std::vector<const char*> arguments{launcher.c_str()};
  if (application) arguments.insert(arguments.end(), {"-a", application->c_str()});
  arguments.insert(arguments.end(), {url.c_str(), nullptr});

  const Attributes attributes;
  pid_t child = 0;
  if (::posix_spawn(&child, launcher.c_str(), &files.actions, &attributes.attributes,
                    const_cast<char* const*>(arguments.data()), environ) != 0) {
    return std::nullopt;
  }
  writing.close();
  // Read to the end before the wait: a child that fills the pipe would otherwise never end.
  auto complaint = readToEnd(reading.get());
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  return complaint.value_or(std::string());
}

}  // namespace platform
