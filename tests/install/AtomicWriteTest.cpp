// What becomes of a configuration file when writing it fails, or ends halfway because the process dies.
#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "install/MCPInstaller.h"
#include "support/Surroundings.h"

static std::vector<std::string> calls;
static std::string failing;

static long observed(const char* name, long number, auto... arguments) {
  calls.push_back(name);
  if (failing != name) return ::syscall(number, arguments...);
  errno = EIO;
  return -1;
}

// In place of the system's: these note that they were called, and fail if told to.
extern "C" {
ssize_t write(int file, const void* bytes, size_t size) {
  return observed("write", SYS_write, file, bytes, size);
}
int fchmod(int file, mode_t mode) noexcept {
  return int(observed("fchmod", SYS_fchmod, file, mode));
}
int fsync(int file) {
  return int(observed("fsync", SYS_fsync, file));
}
int rename(const char* from, const char* to) noexcept {
  return int(observed("rename", SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}
}

namespace zelto::MCPInstaller {
namespace {

namespace fs = std::filesystem;

struct AtomicWriteTest : testing::Test {
  support::TemporaryDirectory home;
  support::ScopedVariable variable{"HOME", home.path};
  const Client& cursor = clients()[2];
  const std::string directory = home / ".cursor", file = directory + "/mcp.json", old = "{ /* mine */ }\n";

  static struct stat statusOf(const std::string& path) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    return status;
  }
  static mode_t modeOf(const std::string& path) { return statusOf(path).st_mode & 07777; }

  /// Installs in a process that is killed at its stop number `limit`, where each system call stops it before
  /// and after. Gives how the process ended.
  int installKilledAt(int limit) const {
    const pid_t child = ::fork();
    if (child == 0) {
      if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(1);
      ::raise(SIGSTOP);
      install(cursor);
      ::_exit(0);
    }
    int status = 0;
    for (int stop = 0; ::waitpid(child, &status, 0) == child && WIFSTOPPED(status); ++stop) {
      stop == limit ? ::kill(child, SIGKILL) : ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    }
    return status;
  }
};

TEST_F(AtomicWriteTest, LeavesOldOrNewWhereverItIsKilled) {
  const mode_t mask = ::umask(027);
  for (const mode_t mode : {0604, 0640}) {
    const bool exists = mode == 0604;  // else the file is new, and the umask decides
    int olds = 0, news = 0, halves = 0, status = SIGKILL;
    for (int limit = 0; WIFSIGNALED(status); ++limit) {
      SCOPED_TRACE(limit);
      fs::remove_all(directory);
      if (exists) support::writeFile(file, old);
      ::chmod(file.c_str(), mode);
      status = installKilledAt(limit);
      if (status == 1 << 8) GTEST_SKIP() << "this machine does not let a process trace its child";
      const std::string content = support::contentsOf(file);
      const bool isOld = exists ? content == old : !fs::exists(file);
      ++(isOld ? olds : news);
      ASSERT_TRUE(isOld || (isInstalled(cursor) && content.ends_with(exists ? old.substr(1) : "}\n")))
          << content;
      ASSERT_TRUE(!fs::exists(file) || modeOf(file) == mode) << modeOf(file);
      if (!fs::exists(directory)) continue;
      for (const auto& each : fs::directory_iterator(directory)) {
        if (each.path() == file) continue;
        ++halves;
        ASSERT_TRUE(isOld && each.path().filename().string().starts_with(".zelto-")) << each.path();
        ASSERT_EQ(modeOf(each.path()) & 0177 & ~mode, 0u);
      }
    }
    EXPECT_TRUE(status == 0 && olds > 20 && news > 2 && halves > 4) << olds << ", " << news << ", " << halves;
  }
  ::umask(mask);
}

TEST_F(AtomicWriteTest, LeavesTheOldFileAloneWhenAnyStepFails) {
  support::writeFile(file, old);
  const auto failure = [&] { install(cursor); };
  for (const char* const call : {"write", "fchmod", "fsync", "rename"}) {
    failing = call;
    EXPECT_THAT(failure, testing::ThrowsMessage<std::runtime_error>(file + ": Input/output error")) << call;
    failing.clear();
    EXPECT_EQ(support::contentsOf(file), old) << call;
    EXPECT_EQ(std::distance(fs::directory_iterator(directory), {}), 1) << call;
  }
  fs::remove(file);
  fs::create_directory(file);
  EXPECT_THAT(failure, testing::ThrowsMessage<std::runtime_error>(file + ": Is a directory"));
  fs::remove(file);
  fs::create_symlink("/dev/null", file);
  EXPECT_THAT(failure, testing::ThrowsMessage<std::runtime_error>("/dev/null: not a regular file"));
}

TEST_F(AtomicWriteTest, KeepsModeAndOwnerAndReachesTheDiskInOrder) {
  for (const mode_t mode : {0600, 0444, 04755}) {
    support::writeFile(file, old);
    const bool mayGiveAway = ::chown(file.c_str(), 12, 34) == 0;
    ::chmod(file.c_str(), mode);
    calls.clear();
    install(cursor);
    EXPECT_THAT(calls, testing::ElementsAre("write", "fchmod", "fsync", "rename", "fsync"));
    EXPECT_EQ(modeOf(file), mode);
    EXPECT_TRUE(!mayGiveAway || (statusOf(file).st_uid == 12 && statusOf(file).st_gid == 34));
    fs::remove(file);
  }
}

}  // namespace
}  // namespace zelto::MCPInstaller
