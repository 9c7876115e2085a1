// Any bytes as an agent's configuration, in a real file; letters before them choose the agent, the file's
// mode, and whether a link leads to it. Installing fails and leaves the file as it was, or makes of it what
// the editor makes of the text, and does so once. Removing takes out what was installed: what is left of a
// sound file differs from what was there in blanks alone. Whatever comes, mode and link stay, and nothing is
// left beside the file.
#include <algorithm>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

#include "install/JSONCProperties.h"
#include "install/MCPInstaller.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "support/Fuzz.h"

namespace {

namespace fs = std::filesystem;
namespace Editor = zelto::JSONCEditor;
namespace Installer = zelto::MCPInstaller;
using fuzz::expect;

/// A path that needs care in JSON.
constexpr std::string_view server = "/Ap\"p\\s\n/é \x7f/Zelto";

void install(const Installer::Client& client) {
  Installer::install(client, server);
}

/// One configuration file in a home directory of its own.
class Configuration {
 public:
  Configuration(const Installer::Client& client, mode_t fileMode, bool isLinked, std::string_view text)
      : mode(fileMode) {
    const fs::path home = fuzz::privateDirectory() + "/home", elsewhere = home.string() + "-elsewhere";
    ::setenv("HOME", home.c_str(), 1);
    for (const auto& each : {home, elsewhere}) fs::remove_all(each);
    named = platform::expandTilde(client.path);
    file = isLinked ? elsewhere / "file" : named;
    for (const auto& each : {named, file}) fs::create_directories(each.parent_path());
    if (isLinked) fs::create_symlink(file, named);
    fuzz::writeFile(file, text);
    ::chmod(file.c_str(), mode);
  }

  /// The text, everything around it being as it was made.
  std::string text() const {
    expect(status().st_mode == (S_IFREG | mode), "the mode stays", file.native());
    expect(named == file || fs::read_symlink(named) == file, "a link stays", file.native());
    for (const auto& each : {named, file}) {
      const auto entries = std::distance(fs::directory_iterator(each.parent_path()), {});
      expect(entries == 1, "nothing is left beside the file", file.native());
    }
    return fuzz::contentsOf(file);
  }

  struct stat status() const {
    struct stat result {};
    ::stat(file.c_str(), &result);
    return result;
  }

 private:
  const mode_t mode;
  fs::path named, file;
};

/// Whether the operation succeeds; what it raises is one of two errors, which say something.
template <class Operation>
bool succeeds(Operation operation, const Installer::Client& client) {
  std::string message;
  try {
    operation(client);
    return true;
  } catch (const Editor::EditError& error) {
    message = error.what();
  } catch (const platform::SystemError& error) {
    message = error.what();
  }
  expect(!message.empty(), "a failure says why");
  fuzz::expectUTF8(message, "an error");
  return false;
}

std::string withoutBlanks(std::string text) {
  std::erase_if(text, [](char each) { return each == ' ' || each == '\n'; });
  return text;
}

/// What an install into `before` must have made, and a removal must leave.
void checkRoundTrip(const Installer::Client& client, const Configuration& configuration,
                    std::string_view topKey, const std::string& before) {
  const std::string after = configuration.text();
  expect(after == Editor::set(before, topKey, "zelto", Installer::entryText(client.style, server)).applied(),
         "the file holds what the editor made", before);
  const auto untouched = configuration.status();
  expect(succeeds(install, client) && configuration.status().st_ino == untouched.st_ino,
         "what is installed is not written again", before);
  // A parser may look at another of equal keys, or one in escapes, than the editor.
  const bool isClear = before.find(topKey) == before.rfind(topKey) && before.find('\\') == before.npos;
  const auto sound = isClear ? properties::reading(before) : std::nullopt;
  expect(!sound || Installer::isInstalled(client), "what is installed is found", before);

  expect(succeeds(Installer::remove, client), "what was installed can be removed", before);
  const std::string left = configuration.text();
  const auto removal = Editor::remove(after, topKey, "zelto");
  expect(removal && left == removal->applied(), "the file holds what the editor left", before);
  if (!sound) return;
  const auto* servers = sound->as_object().if_contains(topKey);
  // An object that the entry is taken out of goes with it when it is empty then.
  if (servers != nullptr && servers->as_object().empty()) return;
  const auto meant = Editor::remove(before, topKey, "zelto");
  expect(withoutBlanks(left) == withoutBlanks(meant ? meant->applied() : before),
         "removing undoes installing", before);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  constexpr mode_t modes[] = {0600, 0644, 0640, 0400, 0777};
  constexpr std::string_view topKeys[] = {"mcpServers", "servers", "context_servers"};
  fuzz::Input input(data, size);
  const Installer::Client& client = Installer::clients()[input.choice(Installer::clients().size())];
  const mode_t mode = modes[input.choice(std::size(modes))];
  const bool isLinked = input.choice(2) == 1;
  const std::string before(input.rest);
  const Configuration configuration(client, mode, isLinked, before);
  if (succeeds(install, client)) {
    checkRoundTrip(client, configuration, topKeys[static_cast<std::size_t>(client.style)], before);
  } else {
    expect(configuration.text() == before, "a failure leaves the file as it was", before);
    succeeds(Installer::remove, client);
    configuration.text();
  }
  return 0;
}
