// The program as a process among others: its streams, its signals and its patience.
#include <csignal>
#include <future>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include "e2e/Zelto.h"

namespace zelto {
namespace {

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
  EXPECT_EQ(zelto.shell("zelto rules >&-; zelto rules <&- >&- 2>&-").error,
            "Error: cannot write standard output: Bad file descriptor\n");
  // An agent that takes no diagnostics still talks.
  EXPECT_EQ(zelto
                .shell("{ { sleep 0.2; zelto mcp serve 2>&1 >&3; echo status $? >&3; } | true; } 3>&1",
                       R"({"id":9,"method":"ping"})")
                .output,
            "{\"jsonrpc\":\"2.0\",\"id\":9,\"result\":{}}\nstatus 0\n");
}

TEST(Program, TellsTheWholeOfAnError) {
  Zelto zelto;
  const support::RawServer server({support::response(R"({"error":"a\u0000b"})", 400)});
  zelto.lookAt(server);
  EXPECT_EQ(zelto.shell("zelto").error, std::string("Error: HTTP 400: a\0b\n", 21));
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

#ifndef SANITIZED  // A sanitizer needs more memory than the limits here leave.

/// Whether `ulimit -v` limits anything, which on macOS it does not.
bool memoryIsLimited(const Zelto& zelto) {
  return zelto.shell("ulimit -v 4000; exec zelto --version").status != 0;
}

TEST(Program, EndsWithStatusOneWhereMemoryRunsOut) {
  Zelto zelto;
  if (!memoryIsLimited(zelto)) GTEST_SKIP() << "this system does not limit a process's memory";
  const support::RawServer server(
      {support::response("[{\"name\":\"" + std::string(1'000'000, 'x') + "\"}]")});
  zelto.lookAt(server);
  zelto.environment["BIG"] = std::string(100'000, 'x');
  const std::pair<std::string, std::string> cases[] = {
      {"rules", "0\n1\nError: out of memory\n"},
      {"rules set x a=$BIG b=$BIG c=$BIG",
       "1\nError: no rule matching x. List them with: zelto rules\nError: out of memory\n"}};
  for (const auto& [line, expected] : cases) {
    // Where the program just starts, the shell (status 2) and the loader (127) may still fail, with words of
    // their own.
    const auto outcome = zelto.shell(
        "least=5000; until (ulimit -v $least; exec zelto --version); do least=$((least + 100)); done "
        ">/dev/null 2>&1\n"
        "for limit in $(seq $least 60 $((least + 7000))); do (ulimit -v $limit; exec zelto " +
        line +
        ") >/dev/null; echo $?; done 2>&1 | sort -u | grep -vxe 2 -e 127 -e '[^E].*:.*' -e 'cannot .*'");
    EXPECT_EQ(outcome.output, expected);
  }
}

TEST(Program, ServesOnWhereAMessageOrAnAnswerDoesNotFitIntoMemory) {
  Zelto zelto;
  if (!memoryIsLimited(zelto)) GTEST_SKIP() << "this system does not limit a process's memory";
  const support::RawServer server({support::response("[\"" + std::string(30'000'000, 'x') + "\"]")});
  zelto.lookAt(server);
  const std::string ping = R"({"id":1,"method":"ping"})", large(30'000'000, 'y'),
                    call = R"({"id":2,"method":"tools/call","params":{"name":"zelto_list_rules"}})",
                    pong = R"({"jsonrpc":"2.0","id":1,"result":{}})";
  EXPECT_EQ(
      zelto
          .shell("ulimit -v 40000; zelto mcp serve",
                 ping + "\n" + large + "\n" + ping + "\n" + call + "\n" + ping + "\n" + large)
          .output,
      pong + "\n" + pong +
          "\n{\"jsonrpc\":\"2.0\",\"id\":2,\"result\":{\"content\":[{\"text\":\"tool error: out of memory\","
          "\"type\":\"text\"}],\"isError\":true}}\n" +
          pong + "\n");
}

#endif

TEST(Program, WaitsAsLongAsItIsTold) {
  Zelto zelto;
  const support::RawServer server([](int connection, const std::string&) {
    char byte;
    support::sendBytes(connection, "HTTP/1.1 200");
    while (::read(connection, &byte, 1) > 0) {
    }
  });
  zelto.lookAt(server);
  const std::string error = "cannot reach Zelto (timed out after 1s). Is it running?";
  for (const char* command :
       {"zelto -t 1", "zelto rules --timeout=1.9", "echo true | zelto script - --timeout=-19"}) {
    EXPECT_EQ(zelto.shell(command).error, "Error: " + error + "\n") << command;
  }
  // No limit at all, as a socket would have it, is not what was asked for.
  EXPECT_EQ(zelto.shell("zelto --timeout=-1").error,
            "Error: cannot reach Zelto (timed out after -1s). Is it running?\n");
  const char* watching =
      R"({"method":"tools/call","params":{"name":"zelto_watch","arguments":{"wait":-19}}})";
  EXPECT_THAT(zelto.shell("zelto mcp serve", watching).output, testing::HasSubstr(error));
}

TEST(Program, GoesOnAfterItWasStopped) {
  Zelto zelto;
  std::promise<pid_t> started;
  const support::RawServer server([&](int connection, const std::string&) {
    const pid_t process = started.get_future().get();
    int status = 0;
    // By then it waits for the answer.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
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

}  // namespace
}  // namespace zelto
