// Runs programs side by side and prints what they took:
//   bench_measure [-r ROUNDS] [-n RUNS] [-i FILE] [-b COMMAND] PROGRAM [ARGUMENT...] [-- PROGRAM
//   [ARGUMENT...]]...
// Each round runs each program RUNS times, all of them in turn, since a machine's pace drifts. It prints one
// line a round: for each program the median wall seconds, the median seconds of processor time, and the peak
// memory in bytes, its children's included. A program reads nothing and writes to /dev/null; with -i it reads
// FILE through one pipe and writes to another. -b is a shell command to run before each run, unmeasured. A
// program that fails ends it all.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;  // NOLINT(readability-redundant-declaration): macOS does not declare it

namespace {

#ifdef __APPLE__
constexpr double memoryUnit = 1;
#else
constexpr double memoryUnit = 1024;
#endif

/// What one program took in one round.
struct Program {
  std::vector<char*> arguments;
  std::vector<double> wall, processor;
  double memory = 0;
};

struct Options {
  int rounds = 1;
  int runs = 1;
  std::string input;
  std::string before;
};

void check(bool isFine, const std::string& what) {
  if (!isFine) throw std::runtime_error("bench_measure: " + what);
}

pid_t start(char* const* arguments, int input, int output, int error) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input, 0);
  posix_spawn_file_actions_adddup2(&actions, output, 1);
  posix_spawn_file_actions_adddup2(&actions, error, 2);
  pid_t process = 0;
  const int fault = ::posix_spawnp(&process, arguments[0], &actions, nullptr, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  check(fault == 0, std::string("cannot run ") + arguments[0]);
  return process;
}

rusage end(pid_t process, const char* name) {
  int status = 0;
  rusage usage{};
  check(::wait4(process, &status, 0, &usage) == process, "no such process");
  check(WIFEXITED(status), std::string(name) + " was killed");
  check(WEXITSTATUS(status) == 0, std::string(name) + " exited with " + std::to_string(WEXITSTATUS(status)));
  return usage;
}

int opened(const char* path, int flags) {
  const int file = ::open(path, flags | O_CLOEXEC);
  check(file >= 0, std::string("cannot open ") + path);
  return file;
}

/// A `cat` at one end of a pipe, and the other end for the measured program.
struct Cat {
  Cat(int input, int output, bool isSource) {
    int ends[2];
    check(::pipe(ends) == 0, "cannot make a pipe");
    for (const int each : ends) ::fcntl(each, F_SETFD, FD_CLOEXEC);
    char name[] = "cat";
    char* const arguments[] = {name, nullptr};
    process = start(arguments, isSource ? input : ends[0], isSource ? ends[1] : output, output);
    end = isSource ? ends[0] : ends[1];
    ::close(isSource ? ends[1] : ends[0]);
  }
  pid_t process;
  int end;
};

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

void run(Program& program, const Options& options, int null) {
  if (!options.before.empty()) check(std::system(options.before.c_str()) == 0, options.before + " failed");
  const auto begin = std::chrono::steady_clock::now();
  rusage usage{};
  if (options.input.empty()) {
    usage = end(start(program.arguments.data(), null, null, null), program.arguments[0]);
  } else {
    const int file = opened(options.input.c_str(), O_RDONLY);
    const Cat source(file, null, true);
    const Cat sink(null, null, false);
    const pid_t process = start(program.arguments.data(), source.end, sink.end, null);
    for (const int each : {file, source.end, sink.end}) ::close(each);
    usage = end(process, program.arguments[0]);
    end(source.process, "cat");
    end(sink.process, "cat");
  }
  program.wall.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
  program.processor.push_back(seconds(usage.ru_utime) + seconds(usage.ru_stime));
  program.memory = std::max(program.memory, static_cast<double>(usage.ru_maxrss) * memoryUnit);
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

std::vector<Program> readPrograms(int argc, char** argv, int at) {
  std::vector<Program> programs(1);
  for (; at < argc; ++at) {
    if (std::string(argv[at]) == "--") {
      programs.emplace_back();
    } else {
      programs.back().arguments.push_back(argv[at]);
    }
  }
  for (Program& each : programs) {
    check(!each.arguments.empty(), "no program");
    each.arguments.push_back(nullptr);
  }
  return programs;
}

void measure(int argc, char** argv) {
  Options options;
  // The plus sign keeps GNU's getopt from looking for options among the programs' arguments.
  for (int option; (option = ::getopt(argc, argv, "+r:n:i:b:")) != -1;) {
    if (option == 'r') options.rounds = std::atoi(optarg);
    if (option == 'n') options.runs = std::atoi(optarg);
    if (option == 'i') options.input = optarg;
    if (option == 'b') options.before = optarg;
    check(option != '?', "see the first lines of bench/measure.cpp");
  }
  const std::vector<Program> programs = readPrograms(argc, argv, optind);
  const int null = opened("/dev/null", O_RDWR);
  for (Program each : programs) run(each, options, null);  // to warm up
  for (int round = 0; round < options.rounds; ++round) {
    std::vector<Program> measured = programs;
    for (int i = 0; i < options.runs; ++i) {
      for (Program& each : measured) run(each, options, null);
    }
    for (const Program& each : measured) {
      std::printf("%.6f %.6f %.0f ", median(each.wall), median(each.processor), each.memory);
    }
    std::puts("");
    std::fflush(stdout);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    measure(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
