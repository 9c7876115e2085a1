// Sets the entry in a configuration file given by path and writes the result to standard output: the same
// work as peers/jsonc_parser.mjs.
#include <cstdio>

#include "install/JSONCEditor.h"
#include "install/MCPInstaller.h"
#include "platform/Files.h"

int main(int argc, char** argv) {
  if (argc != 2) return 64;
  const auto source = platform::readFile(argv[1]);
  if (!source) return 1;
  const std::string entry = zelto::MCPInstaller::entryText(zelto::MCPInstaller::Style::zed, "/bin/ZeltoCLI");
  const std::string edited = zelto::JSONCEditor::set(*source, "context_servers", "zelto", entry);
  return std::fwrite(edited.data(), 1, edited.size(), stdout) == edited.size() ? 0 : 1;
}
