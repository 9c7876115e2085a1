#include "support/Fuzz.h"

#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <thread>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "client/StartAPI.h"
#include "client/SystemRoot.h"
#include "platform/Connection.h"
#include "platform/FileDescriptor.h"
#include "platform/Files.h"
#include "platform/Launcher.h"
#include "platform/Log.h"
#include "platform/Streams.h"
#include "platform/Terminal.h"
#include "text/Number.h"
#include "text/Unicode.h"

/// The real standard error, whatever becomes of the stream.
static const int report = ::dup(STDERR_FILENO);

// In place of the library's own, whose files are then not linked: nothing that a fuzzer finds may start a
// program of the machine or fill its log, and each input chooses what is a terminal.
const char* const zelto::launcherPath = "";
const char* const zelto::systemRoot = "~";

namespace platform {
std::optional<std::string> openURL(const std::string&, const std::string&,
                                   const std::optional<std::string>&) {
  ++fuzz::launches;
  return std::nullopt;
}
void log(const LogSource&, LogLevel, std::string_view) {}
bool isTerminal(int descriptor) {
  return descriptor != STDIN_FILENO && fuzz::isOnTerminal;
}
bool outputIsTerminal() {
  return fuzz::isOnTerminal;
}
bool inputIsTerminal() {
  return false;
}
std::optional<TerminalSize> terminalSize() {
  return std::nullopt;
}
}  // namespace platform

namespace fuzz {
namespace {

struct PrivateDirectory {
  std::string path = std::filesystem::canonical(std::filesystem::temp_directory_path()) / "zelto-fuzz-XXXXXX";
  PrivateDirectory() {
    if (::mkdtemp(path.data()) == nullptr) std::abort();
  }
  ~PrivateDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
};

/// A file in place of a standard stream.
class Catcher {
 public:
  explicit Catcher(int stream) {
    std::string path = privateDirectory() + "/stream-XXXXXX";
    file = ::mkstemp(path.data());
    ::unlink(path.c_str());
    ::dup2(file, stream);
  }
  std::string take() {
    std::string bytes(static_cast<std::size_t>(::lseek(file, 0, SEEK_END)), '\0');
    if (::pread(file, bytes.data(), bytes.size(), 0) < 0 || ::ftruncate(file, 0) != 0) std::abort();
    ::lseek(file, 0, SEEK_SET);
    return bytes;
  }

 private:
  int file;
};

std::string readRequest(int connection) {
  constexpr std::string_view field = "Content-Length: ";
  std::string request;
  char buffer[65536];
  for (;;) {
    if (const std::size_t head = request.find("\r\n\r\n"); head != std::string::npos) {
      const std::size_t at = request.find(field) + field.size();
      const auto length = text::decimal<std::size_t>(request.substr(at, request.find('\r', at) - at));
      if (request.size() >= head + 4 + length.value_or(0)) return request;
    }
    const auto count = ::read(connection, buffer, sizeof buffer);
    if (count <= 0) return request;
    request.append(buffer, static_cast<std::size_t>(count));
  }
}

class Server {
 public:
  Server() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(listening, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(listening, 64) != 0) {
      std::abort();
    }
    ::getsockname(listening, reinterpret_cast<sockaddr*>(&address), &size);
    const std::string file = privateDirectory() + "/control.json";
    writeFile(file, R"({"host":"127.0.0.1","port":)" + std::to_string(ntohs(address.sin_port)) +
                        R"(,"token":")" + std::string(api::token) + "\"}");
    ::setenv("ZELTO_CONTROL_FILE", file.c_str(), 1);
    std::thread([this] { run(); }).detach();
  }

  std::mutex mutex;
  std::vector<std::string> answers, requests;

 private:
  void run() {
    for (;;) {
      const platform::FileDescriptor connection(::accept(listening, nullptr, nullptr));
      std::string request = readRequest(connection.get()), bytes;
      {
        const std::lock_guard lock(mutex);
        if (requests.size() < answers.size()) bytes = answers[requests.size()];
        requests.push_back(std::move(request));
      }
      platform::secureSocket(connection.get());
      static_cast<void>(platform::sendSome(connection.get(), bytes));
    }
  }

  const int listening = ::socket(AF_INET, SOCK_STREAM, 0);
};

/// Lives as long as the process, for its thread does.
Server& server() {
  static Server& only = *new Server;
  return only;
}

}  // namespace

int launches = 0;
bool isOnTerminal = false;

bool isShown(std::string_view utf8) {
  for (std::string_view rest = utf8; !rest.empty(); rest.remove_prefix(text::firstCodePoint(rest).length)) {
    const char32_t each = text::firstCodePoint(rest).value;
    const bool isControl = (each < 0x20 && each != '\n' && each != '\t') || (each >= 0x7F && each < 0xA0);
    // Embeddings, overrides and isolates turn the order of what follows.
    if (isControl || (each >= 0x202A && each <= 0x202E) || (each >= 0x2066 && each <= 0x2069)) return false;
  }
  return true;
}

void expect(bool holds, std::string_view property, std::string_view detail) {
  if (holds) return;
  std::string message = "broken: ";
  message.append(property).append("\n").append(detail).append("\n");
  platform::writeAll(report, message);
  std::abort();
}

void expectUTF8(std::string_view text, std::string_view what) {
  if (!text::isUTF8(text)) expect(false, std::string(what) + " is UTF-8", text);
}

unsigned char Input::byte() {
  if (rest.empty()) return 0;
  const auto first = static_cast<unsigned char>(rest.front());
  rest.remove_prefix(1);
  return first;
}

std::size_t Input::choice(std::size_t count) {
  return static_cast<unsigned char>(byte() - 'a') % count;
}

std::string Input::piece() {
  const std::size_t end = rest.find('\x1e');
  std::string result(rest.substr(0, end));
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return result;
}

std::vector<std::string> Input::pieces() {
  std::vector<std::string> result;
  while (!rest.empty()) result.push_back(piece());
  return result;
}

const std::string& privateDirectory() {
  static const PrivateDirectory directory;
  return directory.path;
}

void writeFile(const std::string& path, std::string_view bytes) {
  const platform::FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600));
  if (!platform::writeAll(file.get(), bytes)) std::abort();
}

std::string contentsOf(const std::string& path) {
  return platform::readFile(path).value_or("");
}

Printed printedBy(const std::function<void()>& action) {
  static Catcher output(STDOUT_FILENO), error(STDERR_FILENO);
  action();
  platform::flushOutput();
  return {output.take(), error.take()};
}

namespace api {

void answer(std::vector<std::string> answers) {
  const std::lock_guard lock(server().mutex);
  server().answers = std::move(answers);
  server().requests.clear();
}

std::vector<std::string> requests() {
  const std::lock_guard lock(server().mutex);
  return server().requests;
}

std::string success(std::string_view body) {
  return "HTTP/1.1 200 OK\r\n\r\n" + std::string(body);
}

}  // namespace api
}  // namespace fuzz

/// libFuzzer calls this first. Its own messages and those of the sanitizers go to the real standard error
/// whatever the program does with the stream; home, time zone and screen are the same everywhere.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
  static std::vector<char*> extended(*arguments, *arguments + *count);
  static char closing[] = "-close_fd_mask=3";
  extended.insert(extended.end(), {closing, nullptr});
  *count += 1;
  *arguments = extended.data();
  ::setenv("HOME", fuzz::privateDirectory().c_str(), 1);
  ::setenv("TZ", "UTC", 1);
  for (const char* variable : {"ZELTO_CONTROL_FILE", "COLUMNS", "LINES", "SHELL", "SAP_SHELL"})
    ::unsetenv(variable);
  // Nobody types anything.
  ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
  return 0;
}
