// What becomes of a configuration file, and of who may read it, when writing it fails, or ends halfway
// because the process dies, or somebody else writes it too.
#include <filesystem>
#include <fstream>
#include <functional>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "install/MCPInstaller.h"
#include "support/Surroundings.h"

static std::vector<std::string> calls;
static std::string failing;
static int error = EIO;
static int pointsToLive = -1;
static size_t mostAtOnce = SIZE_MAX;
static std::function<void()> meanwhile;

/// Before and after each call is a point at which the process may be killed.
static void passPoint() {
  if (pointsToLive-- == 0) ::raise(SIGKILL);
}

static int observed(const char* name, long number, auto... arguments) {
  calls.push_back(name);
  passPoint();
  errno = error;
  const long result = failing == name ? -1 : ::syscall(number, arguments...);
  passPoint();
  return int(result);
}

// In place of the system's: these note that they were called, and fail if told to.
extern "C" {
ssize_t read(int file, void* bytes, size_t size) {
  return ::syscall(SYS_read, file, bytes, std::min(size, mostAtOnce));
}
ssize_t write(int file, const void* bytes, size_t size) {
  return observed("write", SYS_write, file, bytes, std::min(size, mostAtOnce));
}
int mkdir(const char* path, mode_t mode) noexcept {
  if (failing == "mkdir") return observed("mkdir", 0);
  return int(::syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}
int fchmod(int file, mode_t mode) noexcept {
  return observed("fchmod", SYS_fchmod, file, mode);
}
int fchown(int file, uid_t user, gid_t group) noexcept {
  return observed("fchown", SYS_fchown, file, user, group);
}
int fsync(int file) {
  if (meanwhile) meanwhile();
  return observed("fsync", SYS_fsync, file);
}
int lstat(const char* path, struct stat* status) noexcept {
  if (failing == "lstat") return observed("lstat", 0);
  return ::fstatat(AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}
int fstat(int file, struct stat* status) noexcept {
  if (failing == "fstat") return observed("fstat", 0);
  return ::fstatat(file, "", status, AT_EMPTY_PATH);
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
  const std::string server = "/server";
  const std::string directory = home / ".cursor", file = directory + "/mcp.json", old = "{ /* mine */ }\n";

  static mode_t modeOf(const std::string& path) { return mode_t(fs::status(path).permissions()); }
  std::vector<std::string> entries() const {
    std::vector<std::string> names;
    for (const fs::path& each : fs::directory_iterator(directory)) names.push_back(each.filename());
    return names;
  }
  void attempt() { install(cursor, server); }
  void expectFailure(const std::string& message) {
    EXPECT_THAT([&] { attempt(); }, testing::ThrowsMessage<std::runtime_error>(testing::StartsWith(message)));
    failing.clear();
  }
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
        attempt();
        ::_exit(0);
      }
      ::waitpid(child, &status, 0);
      const std::string content = support::contentsOf(file);
      const bool isOld = exists ? content == old : !fs::exists(file);
      const bool isNew = isInstalled(cursor) && content.ends_with(exists ? old.substr(1) : "}\n");
      seen += isOld ? "o" : isNew ? "n" : content;
      EXPECT_TRUE(!fs::exists(file) || modeOf(file) == mode) << modeOf(file);
      for (const std::string& each : entries()) {
        if (each == "mcp.json") continue;
        EXPECT_TRUE(isOld && each.starts_with(".zelto-")) << each;
        EXPECT_EQ(modeOf(directory + "/" + each) & 0177 & ~mode, 0u);
        seen += "+";
      }
      // The next run clears up after the killed one.
      attempt();
      EXPECT_TRUE(isInstalled(cursor) && (isNew || entries().size() == 1));
    }
    // The old one with a part of the new one beside it up to the rename, then the new one.
    EXPECT_EQ(seen, exists ? "o+o+o+o+o+o+o+o+o+o+o+nnnn" : "o+o+o+o+o+nnnn");
  }
  ::umask(mask);
}

TEST_F(AtomicWriteTest, LeavesTheOldFileAloneWhenAnyStepFails) {
  for (const char* const call : {"fstat", "write", "fchmod", "fsync", "lstat", "rename"}) {
    SCOPED_TRACE(call);
    support::writeFile(file, old);
    failing = call;
    expectFailure(file + ": Input/output error");
    EXPECT_EQ(support::contentsOf(file), old);
    EXPECT_THAT(entries(), testing::ElementsAre("mcp.json"));
    // Without a file there are directories to take away again.
    fs::remove_all(directory);
    failing = call == std::string("fchmod") ? "write" : call;
    expectFailure(file + ": Input/output error");
    EXPECT_FALSE(fs::exists(directory));
  }
  failing = "mkdir";
  expectFailure(directory + ": Input/output error");
  fs::create_directories(file);
  expectFailure(file + ": Is a directory");
  fs::remove(file);
  // No device of the machine, which a fault would replace for everybody.
  const std::string pipe = home / "pipe";
  ::mkfifo(pipe.c_str(), 0600);
  fs::create_symlink(pipe, file);
  expectFailure(pipe + ": not a regular file");
  EXPECT_FALSE(isInstalled(cursor));
  fs::remove(file);
  std::ofstream(file).close();
  fs::resize_file(file, (256u << 20) + 1);
  expectFailure(file + ": larger than 256 MiB");
  // A circle of links is no missing file.
  fs::remove(file);
  fs::create_symlink("mcp.json", file);
  expectFailure(directory + "/mcp.json: Too many levels of symbolic links");
  EXPECT_TRUE(fs::is_symlink(file));
}

TEST_F(AtomicWriteTest, KeepsModeAndOwnerAndReachesTheDiskInOrder) {
  for (const mode_t mode : {0600u, 0444u, 04755u}) {
    support::writeFile(file, old);
    const bool mayGiveAway = ::chown(file.c_str(), 12, 34) == 0;
    ::chmod(file.c_str(), mode);
    calls.clear();
    attempt();
    std::erase(calls, "fchown");
    // What was before the entry, the entry, and what was after it.
    EXPECT_THAT(calls, testing::ElementsAre("write", "write", "write", "fchmod", "fsync", "rename", "fsync"));
    EXPECT_EQ(modeOf(file), mode);
    struct stat status {};
    ::stat(file.c_str(), &status);
    EXPECT_TRUE(!mayGiveAway || (status.st_uid == 12 && status.st_gid == 34));
    fs::remove(file);
  }
}

TEST_F(AtomicWriteTest, GivesNobodyMoreRightsWhereOwnerOrGroupCannotBeKept) {
  support::writeFile(file, old);
  if (::chown(file.c_str(), 12, 34) != 0) GTEST_SKIP() << "files can be given away by root alone";
  error = EPERM;
  failing = "fchown";
  expectFailure(file + ": cannot keep its owner: Operation not permitted");
  EXPECT_EQ(support::contentsOf(file), old);
  const std::pair<mode_t, mode_t> modes[] = {{0600, 0600}, {0640, 0600}, {0604, 0600},
                                             {0664, 0644}, {0646, 0644}, {02675, 0655}};
  for (const auto& [before, after] : modes) {
    support::writeFile(file, old);
    ASSERT_EQ(::chown(file.c_str(), ::getuid(), 34), 0);
    ::chmod(file.c_str(), before);
    failing = "fchown";
    attempt();
    EXPECT_EQ(modeOf(file), after) << std::oct << before;
  }
  failing.clear();
  error = EIO;
}

/// An access list as the system stores it: a version, then tag, rights and user for each entry.
std::string accessList(std::initializer_list<std::array<unsigned, 3>> entries) {
  std::string bytes{'\2', '\0', '\0', '\0'};
  for (const auto& [tag, rights, user] : entries) {
    for (const unsigned value : {tag, rights, user & 0xFFFF, user >> 16})
      bytes.append({char(value & 0xFF), char(value >> 8 & 0xFF)});
  }
  return bytes;
}

std::string attributeOf(const std::string& path, const char* name) {
  char value[256];
  const auto size = ::getxattr(path.c_str(), name, value, sizeof value);
  return size < 0 ? "none" : std::string(value, std::size_t(size));
}

TEST_F(AtomicWriteTest, KeepsAccessListsAndAttributes) {
  constexpr unsigned nobody = ~0u;
  const std::string list =
      accessList({{1, 6, nobody}, {2, 6, 1234}, {4, 0, nobody}, {16, 6, nobody}, {32, 0, nobody}});
  const char *const listed = "system.posix_acl_access", *const preset = "system.posix_acl_default";
  const auto give = [](const std::string& path, const char* name, const std::string& value) {
    return ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
  };
  support::writeFile(file, old);
  if (!give(file, listed, list)) GTEST_SKIP() << "this file system has no access lists";
  const bool hasAttributes = give(file, "user.empty", "") && give(file, "user.note", "a text");
  // What the list gives to its group is not for another one.
  if (::chown(file.c_str(), ::getuid(), 34) == 0) {
    error = EPERM;
    failing = "fchown";
    expectFailure(file + ": cannot keep its group: Operation not permitted");
    error = EIO;
  }
  attempt();
  EXPECT_TRUE(isInstalled(cursor));
  EXPECT_EQ(attributeOf(file, listed), list);
  EXPECT_EQ(modeOf(file), 0660u);
  EXPECT_EQ(attributeOf(file, "user.note"), hasAttributes ? "a text" : "none");
  EXPECT_EQ(attributeOf(file, "user.empty"), hasAttributes ? "" : "none");

  // What the folder gives to new files is not for one that replaces an old one.
  give(directory, preset, list);
  fs::remove(file);
  std::ofstream(home / "moved") << old;
  ::chmod((home / "moved").c_str(), 0640);
  fs::rename(home / "moved", file);
  attempt();
  EXPECT_EQ(attributeOf(file, listed), "none");
  EXPECT_EQ(modeOf(file), 0640u);
  fs::remove(file);
  attempt();
  std::ofstream(directory + "/another").close();
  EXPECT_EQ(attributeOf(file, listed), attributeOf(directory + "/another", listed));
  EXPECT_EQ(modeOf(file), modeOf(directory + "/another"));
}

TEST_F(AtomicWriteTest, ReadsAndWritesInPieces) {
  const std::string text = "{ \"settings\": \"" + std::string(1000, 'x') + "\" }\n";
  support::writeFile(file, text);
  mostAtOnce = 7;
  attempt();
  EXPECT_TRUE(isInstalled(cursor));
  mostAtOnce = SIZE_MAX;
  EXPECT_THAT(support::contentsOf(file), testing::EndsWith(text.substr(1)));
}

TEST_F(AtomicWriteTest, KeepsWhatOthersWriteMeanwhile) {
  for (const bool exists : {true, false}) {
    fs::remove_all(directory);
    if (exists) support::writeFile(file, old);
    meanwhile = [&] {
      meanwhile = {};
      support::writeFile(file, "{ \"theirs\": 1 }");
    };
    attempt();
    EXPECT_TRUE(isInstalled(cursor));
    EXPECT_THAT(support::contentsOf(file), testing::EndsWith(" \"theirs\": 1 }"));
  }
  int saves = 0;
  fs::remove(file);
  meanwhile = [&] { support::writeFile(file, "{ \"save\": " + std::to_string(++saves) + " }"); };
  expectFailure("~/.cursor/mcp.json: another program keeps changing it; nothing was written");
  meanwhile = {};
  EXPECT_EQ(support::contentsOf(file), "{ \"save\": " + std::to_string(saves) + " }");
  EXPECT_THAT(entries(), testing::ElementsAre("mcp.json"));
}

TEST_F(AtomicWriteTest, RemovesLeftoversOfOthersOnlyIfTheyAreDead) {
  support::writeFile(file, old);
  for (const char* name : {".zelto-aB3xyZ", ".zelto-living", ".zelto-abc", ".zelto-12345-", ".zeltoXabcdef"})
    std::ofstream(directory + "/" + name).close();
  const int living = ::open((directory + "/.zelto-living").c_str(), O_RDONLY);
  ::flock(living, LOCK_EX);
  attempt();
  EXPECT_THAT(entries(), testing::UnorderedElementsAre("mcp.json", ".zelto-living", ".zelto-abc",
                                                       ".zelto-12345-", ".zeltoXabcdef"));
  ::close(living);
}

}  // namespace
}  // namespace zelto::MCPInstaller
