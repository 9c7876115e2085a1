// The program as a process among others: its streams, signals, and the place where it stands.
#include <csignal>
#include <filesystem>
#include <future>

#include <sys/wait.h>
#include <unistd.h>

#include "e2e/Zelto.h"

namespace zelto {
namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

TEST(Program, EndsQuietlyWhenNobodyReadsOn) {
  Zelto zelto;
  const support::RawServer large({support::response(R"([{"name":")" + std::string(1'000'000, 'x') + "\"}]")});
  zelto.lookAt(large);
  for (const char* command : {"zelto rules", "zelto rules --json", "zelto rules -g ''"}) {
    const auto outcome = zelto.shell("{ " + std::string(command) + "; echo status $? >&2; } | head -c 1");
    EXPECT_EQ(outcome.error, "status " + std::to_string(128 + SIGPIPE) + "\n") << command;
  }
  // A parent may have switched the signal off.
  EXPECT_EQ(zelto.shell("trap '' PIPE; { zelto rules; echo status $? >&2; } | head -c 1").error,
            "Error: cannot write standard output: Broken pipe\nstatus 1\n");
}

TEST(Program, FailsWhenItsOutputIsLost) {
  Zelto zelto;
  const support::RawServer server({support::response("[]")});
  zelto.lookAt(server);
  for (const char* command :
       {"zelto rules", "zelto rules --json", "zelto --help", "zelto --version", "zelto docs"}) {
    const auto outcome = zelto.shell(std::string(command) + " >/dev/full");
    EXPECT_EQ(outcome.error, "Error: cannot write standard output: No space left on device\n") << command;
    EXPECT_EQ(outcome.status, 1) << command;
  }
  EXPECT_EQ(zelto.shell("zelto rules >&-").status, 1);
  EXPECT_EQ(zelto.shell("zelto rules 2>&- <&-").output, "No rules yet.\n");
}

TEST(Program, PassesLargeScriptsAndOutputsThroughWhole) {
  const Zelto zelto;
  constexpr std::size_t size = 10'000'000;
  const std::string echo = "head -c 10000000 /dev/zero | tr '\\0' x\n";
  const auto outcome =
      zelto.shell("zelto script - --runner /bin/sh", "#" + std::string(size, 'y') + "\n" + echo);
  EXPECT_EQ(outcome.status, 0) << outcome.error;
  EXPECT_THAT(outcome.output, testing::StartsWith("exit    0\n"));
  EXPECT_TRUE(outcome.output.ends_with("\n\nstdout\n" + std::string(size, 'x') + "\n"));
  const auto json = zelto.shell("zelto script - --runner /bin/sh --json", echo);
  EXPECT_TRUE(json.output.find("\"stdout\": \"" + std::string(size, 'x') + "\"\n}") != std::string::npos);
}

TEST(Program, TakesStandardInputThatIsNoTextForAnEmptyScript) {
  Zelto zelto;
  const support::RawServer server({support::response("{}")});
  zelto.lookAt(server);
  for (const char* bytes : {"", " \n", "echo \xff\n", "\u3000\u2028"}) {
    EXPECT_EQ(zelto.shell("zelto script -", bytes).error, "Error: the script is empty\n");
  }
  support::writeFile(zelto.home / "binary.sh", "echo \xff\n");
  EXPECT_EQ(zelto.shell("zelto script ./binary.sh").error, "Error: cannot read ./binary.sh\n");
  EXPECT_THAT(server.requests(), testing::IsEmpty());
}

TEST(Program, WaitsAsLongAsItIsTold) {
  Zelto zelto;
  const support::RawServer server([](int connection, const std::string&) {
    char byte;
    while (::read(connection, &byte, 1) > 0) {
    }
  });
  zelto.lookAt(server);
  for (const char* command :
       {"zelto -t 1", "zelto rules --timeout=1.9", "zelto script script.sh --timeout=-19"}) {
    support::writeFile(zelto.home / "script.sh", "true");
    EXPECT_EQ(zelto.shell(command).error, "Error: cannot reach Zelto (timed out after 1s). Is it running?\n")
        << command;
  }
}

TEST(Program, GoesOnAfterItWasStopped) {
  Zelto zelto;
  std::promise<pid_t> started;
  const support::RawServer server([&](int connection, const std::string&) {
    const pid_t process = started.get_future().get();
    int status = 0;
    ::kill(process, SIGSTOP);
    EXPECT_EQ(::waitpid(process, &status, WUNTRACED), process);
    EXPECT_TRUE(WIFSTOPPED(status));
    ::kill(process, SIGCONT);
    support::sendBytes(connection, support::response("[]"));
  });
  zelto.lookAt(server);
  support::Running rules(zelto, "zelto rules");
  started.set_value(rules.id);
  const auto outcome = rules.end();
  EXPECT_EQ(outcome.output + outcome.error, "No rules yet.\n");
}

TEST(Program, NeverPrintsWhatIsNoText) {
  Zelto zelto;
  EXPECT_EQ(zelto.shell("zelto script $(printf 'a\\377b')").error, "Error: cannot read a\uFFFDb\n");
  zelto.environment["HOME"] = zelto.home / "\xff";
  EXPECT_THAT(zelto.shell("zelto api status --json").output, HasSubstr("/\uFFFD/Library/"));
}

TEST(Program, TakesItsVersionFromTheBundleAroundIt) {
  const Zelto zelto;
  const auto list = [](const std::string& version) {
    return "<plist><dict><key>CFBundleShortVersionString</key>" + version + "</dict></plist>";
  };
  fs::copy_file(ZELTO, zelto.home / "ZeltoCLI");
  EXPECT_EQ(zelto.shell("./ZeltoCLI --version").output, "?\n");
  support::writeFile(zelto.home / "Info.plist", list("<string>9.9</string>"));
  EXPECT_EQ(zelto.shell("./ZeltoCLI --version").output, "9.9\n");
  support::writeFile(zelto.home / "A/Zelto.app/Contents/Info.plist", list("<string>1.4.2</string>"));
  const std::string contents = zelto.home / "A/Zelto.app/Contents";
  fs::create_directories(contents + "/SharedSupport/3/4");
  fs::rename(zelto.home / "ZeltoCLI", contents + "/SharedSupport/ZeltoCLI");
  fs::create_symlink(contents + "/SharedSupport/ZeltoCLI", zelto.home / "link");
  EXPECT_EQ(zelto.shell("./link --version").output, "1.4.2\n");
  support::writeFile(contents + "/SharedSupport/Info.plist", list("<string>2</string>"));
  support::writeFile(contents + "/Info.plist", list("<integer>1</integer>"));
  EXPECT_EQ(zelto.shell("./link --version").output, "2\n");
  support::writeFile(contents + "/Info.plist", list("<string>1.4.2</string>"));
  fs::rename(contents + "/SharedSupport/ZeltoCLI", contents + "/SharedSupport/3/4/ZeltoCLI");
  EXPECT_EQ(zelto.shell("A/Zelto.app/Contents/SharedSupport/3/4/ZeltoCLI --version").output, "?\n");
}

}  // namespace
}  // namespace zelto
