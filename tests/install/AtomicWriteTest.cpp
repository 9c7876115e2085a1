// What becomes of a configuration file when writing it fails, or ends halfway because the process dies.
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "install/MCPInstaller.h"
#include "support/Surroundings.h"

static std::vector<std::string> calls;
static std::string failing;
static int pointsToLive = -1;

/// Before and after each call is a point at which the process may be killed.
static void passPoint() {
  if (pointsToLive-- == 0) ::raise(SIGKILL);
}

static int observed(const char* name, long number, auto... arguments) {
  calls.push_back(name);
  passPoint();
  errno = EIO;
  const long result = failing == name ? -1 : ::syscall(number, arguments...);
  passPoint();
  return int(result);
}

// In place of the system's: these note that they were called, and fail if told to.
extern "C" {
ssize_t write(int file, const void* bytes, size_t size) {
  return observed("write", SYS_write, file, bytes, size);
}
int fchmod(int file, mode_t mode) noexcept {
  return observed("fchmod", SYS_fchmod, file, mode);
}
int fsync(int file) {
  return observed("fsync", SYS_fsync, file);
}
int rename(const char* from, const char* to) noexcept {
  return observed("rename", SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0);
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

  static mode_t modeOf(const std::string& path) { return mode_t(fs::status(path).permissions()); }
};

TEST_F(AtomicWriteTest, LeavesOldOrNewWhereverItIsKilled) {
  const mode_t mask = ::umask(027);
  for (const bool exists : {true, false}) {
    const mode_t mode = exists ? 0604 : 0640;  // the umask decides on that of a new file
    std::string seen;
    for (int points = 0, status = SIGKILL; WIFSIGNALED(status); ++points) {
      SCOPED_TRACE(points);
      fs::remove_all(directory);
      if (exists) support::writeFile(file, old);
      ::chmod(file.c_str(), mode);
      const pid_t child = ::fork();
      if (child == 0) {
        pointsToLive = points;
        install(cursor);
        ::_exit(0);
      }
      ::waitpid(child, &status, 0);
      const std::string content = support::contentsOf(file);
      const bool isOld = exists ? content == old : !fs::exists(file);
      const bool isNew = isInstalled(cursor) && content.ends_with(exists ? old.substr(1) : "}\n");
      seen += isOld ? "o" : isNew ? "n" : content;
      EXPECT_TRUE(!fs::exists(file) || modeOf(file) == mode) << modeOf(file);
      for (const fs::path& each : fs::directory_iterator(directory)) {
        if (each == file) continue;
        EXPECT_TRUE(isOld && each.filename().string().starts_with(".zelto-")) << each;
        EXPECT_EQ(modeOf(each) & 0177 & ~mode, 0u);
        seen += "+";
      }
    }
    // The old one with a part of the new one beside it up to the rename, then the new one.
    EXPECT_EQ(seen, "o+o+o+o+o+o+o+nnnn");
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
  // No device of the machine, which a fault would replace for everybody.
  const std::string pipe = home / "pipe";
  ::mkfifo(pipe.c_str(), 0600);
  fs::create_symlink(pipe, file);
  std::thread writer([&] { ::close(::open(pipe.c_str(), O_WRONLY)); });
  EXPECT_THAT(failure, testing::ThrowsMessage<std::runtime_error>(pipe + ": not a regular file"));
  // Lets the writer go if nobody has read.
  const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
  writer.join();
  ::close(reader);
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
    struct stat status {};
    ::stat(file.c_str(), &status);
    EXPECT_TRUE(!mayGiveAway || (status.st_uid == 12 && status.st_gid == 34));
    fs::remove(file);
  }
}

}  // namespace
}  // namespace zelto::MCPInstaller
