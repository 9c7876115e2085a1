// The command line of the stand-in: a launcher for the application's URLs, and the server that they start.
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include "Server.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* help = R"(usage: zelto-standin serve [--start-delay SECONDS]
       zelto-standin open [-a PATH] URL

A stand-in for the application: the local API over rules in memory.

  serve  answers in the foreground until it is interrupted
  open   opens zelto://mcp/start or zelto://mcp/stop, which start a server in the
         background and stop it; -a is accepted and has no effect

  --start-delay SECONDS  wait before the API comes up

ZELTO_CONTROL_FILE is where the address and the token are announced, by default
~/Library/Application Support/Zelto/control.json. ZELTO_STANDIN_START_DELAY is a
start delay that open heeds too. With ZELTO_STANDIN_RECENT set, the events that
it begins with are minutes and hours old, not of a fixed day.
)";

[[noreturn]] void raise(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

// Absolute, and in a directory that exists.
fs::path controlFilePath() {
  const char* named = getenv("ZELTO_CONTROL_FILE");
  const char* home = getenv("HOME");
  std::string text = named && *named ? named : "~/Library/Application Support/Zelto/control.json";
  if (text == "~" || text.starts_with("~/")) {
    if (!home || !*home) throw std::runtime_error("HOME is not set");
    text.replace(0, 1, home);
  }
  const fs::path path = fs::absolute(text);
  fs::create_directories(path.parent_path());
  return path;
}

// A server holds a record lock beside its control file as long as it lives. Unlike the pid in the control
// file it can't be stale, and it is there while the API is still starting.
struct flock wholeFile() {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

int openLock(const fs::path& control) {
  const std::string path = control.string() + ".lock";
  const int lock = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (lock < 0) raise(path);
  return lock;
}

// The process id of the server for this control file, 0 if there is none.
pid_t runningServer(const fs::path& control) {
  const int lock = openLock(control);
  struct flock owner = wholeFile();
  const int result = fcntl(lock, F_GETLK, &owner);
  close(lock);
  return result == 0 && owner.l_type != F_UNLCK ? owner.l_pid : 0;
}

void writeControlFile(const fs::path& control, int port, const std::string& token) {
  const std::string text = boost::json::serialize(
      boost::json::object{{"host", "127.0.0.1"}, {"port", port}, {"token", token}, {"pid", getpid()}});
  std::string temporary = control.string() + ".XXXXXX";
  const int file = mkstemp(temporary.data());  // mode 0600
  if (file < 0) raise(temporary);
  const bool whole = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  close(file);
  if (whole && rename(temporary.c_str(), control.c_str()) == 0) return;
  unlink(temporary.c_str());
  raise(control.string());
}

int stopPipe[2];

void requestStop(int) {
  if (write(stopPipe[1], "", 1) < 0) return;
}

// True if the server was asked to stop; waits for that up to `seconds`, for ever if negative.
bool stopRequested(double seconds) {
  pollfd descriptor{stopPipe[0], POLLIN, 0};
  // Only -1 is "for ever" on every system.
  const int milliseconds = seconds < 0 ? -1 : static_cast<int>(seconds * 1000);
  int result = 0;
  while ((result = poll(&descriptor, 1, milliseconds)) < 0) {
  }
  return result > 0;
}

void serve(double startDelay) {
  const fs::path control = controlFilePath();
  struct flock claim = wholeFile();
  const int lock = openLock(control);
  if (fcntl(lock, F_SETLK, &claim) != 0) {
    throw std::runtime_error("a server is already running for " + control.string());
  }
  if (pipe(stopPipe) != 0) raise("pipe");
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) signal(number, requestStop);
  if (stopRequested(startDelay)) return;

  const boost::json::object seed = standin::seed();
  standin::Store store(seed);
  const std::string token = standin::randomHex(48);
  httplib::Server server;
  installRoutes(server, store, seed, token);
  const int port = server.bind_to_any_port("127.0.0.1");
  if (port <= 0) throw std::runtime_error("no port to listen on");
  writeControlFile(control, port, token);  // the socket is open: who connects now is answered soon
  std::thread listener([&] { server.listen_after_bind(); });
  std::printf("Listening on 127.0.0.1:%d, announced in %s\n", port, control.c_str());
  std::fflush(stdout);

  stopRequested(-1);
  fs::remove(control);
  // Before any client learns that it stops: a start that one of them asks for must not find it still there.
  claim.l_type = F_UNLCK;
  fcntl(lock, F_SETLK, &claim);
  store.stop();
  while (!server.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  server.stop();
  listener.join();
}

// Leaves the launcher's session, streams and directory behind, then serves.
void serveInBackground(double startDelay) {
  const fs::path control = controlFilePath();
  if (runningServer(control) != 0) return;
  const pid_t child = fork();
  if (child < 0) raise("fork");
  if (child > 0) {
    // A stop that follows at once must find it.
    for (int round = 0; round < 100 && runningServer(control) == 0; ++round) usleep(10'000);
    return;
  }
  setsid();
  const int null = open("/dev/null", O_RDWR);
  for (const int stream : {0, 1, 2}) dup2(null, stream);
  for (int descriptor = 3; descriptor < 1024; ++descriptor) close(descriptor);
  setenv("ZELTO_CONTROL_FILE", control.c_str(), 1);
  if (chdir("/") != 0) _exit(1);
  serve(startDelay);
}

void stopServer() {
  const pid_t server = runningServer(controlFilePath());
  if (server == 0) return;
  kill(server, SIGTERM);
  // A start that follows at once must find it gone.
  for (int round = 0; round < 500 && runningServer(controlFilePath()) == server; ++round) usleep(10'000);
}

// A command line that can't be understood.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

void run(std::vector<std::string> arguments) {
  const auto take = [&](std::string_view expected) {
    const bool found = !arguments.empty() && arguments.front() == expected;
    if (found) arguments.erase(arguments.begin());
    return found;
  };
  if (take("--help") || take("-h")) {
    std::fputs(help, stdout);
    return;
  }
  const char* variable = getenv("ZELTO_STANDIN_START_DELAY");
  std::string delay = variable && *variable ? variable : "0";
  const bool opens = take("open");
  if (!opens && !take("serve")) throw UsageError("no command, see --help");
  if (const std::string option = opens ? "-a" : "--start-delay"; take(option)) {
    if (arguments.empty()) throw UsageError(option + " needs a value, see --help");
    if (!opens) delay = arguments.front();
    arguments.erase(arguments.begin());
  }
  char* end = nullptr;
  const double seconds = strtod(delay.c_str(), &end);
  if (delay.empty() || *end || !(seconds >= 0 && seconds < 1e6)) {
    throw UsageError("the start delay is a number of seconds, not " + delay);
  }
  if (arguments.size() != (opens ? 1 : 0)) throw UsageError("missing or unexpected argument, see --help");
  if (!opens) return serve(seconds);
  if (arguments[0] == "zelto://mcp/start") return serveInBackground(seconds);
  if (arguments[0] == "zelto://mcp/stop") return stopServer();
  throw std::runtime_error("nothing opens " + arguments[0]);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    run({argv + 1, argv + argc});
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zelto-standin: %s\n", error.what());
    return dynamic_cast<const UsageError*>(&error) ? 64 : 1;
  }
}
