// What the fuzz targets share: input in pieces, a private world, what was printed, and how a fault is told.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// Ends the process with `property` and `detail` on standard error unless `holds`.
void expect(bool holds, std::string_view property, std::string_view detail = {});

/// Ends the process unless `text` is UTF-8.
void expectUTF8(std::string_view text, std::string_view what);

/// A fuzzer's input, taken from the front.
class Input {
 public:
  Input(const unsigned char* data, std::size_t size) : rest(reinterpret_cast<const char*>(data), size) {}

  /// The next byte; 0 at the end.
  unsigned char byte();
  /// A number below `count`: the letters from "a" on stand for 0 and what follows, so that seeds can be read.
  std::size_t choice(std::size_t count);
  /// The bytes up to the next record separator (U+001E), which no JSON text holds, or to the end.
  std::string piece();
  /// All that is left, cut at record separators.
  std::vector<std::string> pieces();

  std::string_view rest;
};

/// The path of a directory of this process alone, which is also its HOME; removed at the end.
const std::string& privateDirectory();

/// Creates or replaces a file; the directory exists.
void writeFile(const std::string& path, std::string_view bytes);
std::string contentsOf(const std::string& path);

struct Printed {
  std::string output;
  std::string error;
};
/// Whether the program takes its output and its diagnostics to be on a terminal.
extern bool isOnTerminal;

/// Whether a terminal would show all of `utf8`, and obey no more of it than line feeds and tabs.
bool isShown(std::string_view utf8);

/// Runs `action` and returns what it wrote to the standard streams. From the first call on, they lead nowhere
/// else.
Printed printedBy(const std::function<void()>& action);

/// How often the program has asked for the system's launcher, which in here never starts anything: each time
/// it is told that there is none.
extern int launches;

/// The application's API on a loopback port, and the control file that leads to it. Each connection is read
/// to the end of its request and gets the next of the answers as it stands; when there are no more, it is
/// closed.
namespace api {

inline constexpr std::string_view token = "tOkEn-0f-tHe-aPi";

/// Sets the answers of the calls to come. Starts the server if it does not run yet.
void answer(std::vector<std::string> answers);
/// The requests since `answer`.
std::vector<std::string> requests();
/// Answers with status 200 and `body`.
std::string success(std::string_view body);

}  // namespace api
}  // namespace fuzz
