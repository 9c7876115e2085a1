// Sets the entry in a configuration file given by path and writes the result to standard output: the same
// work as peers/jsonc_parser.mjs.
#include "install/JSONCEditor.h"
#include "install/MCPInstaller.h"
#include "platform/Files.h"

int main(int argc, char** argv) {
  if (argc != 2) return 64;
  const auto source = platform::readTextFile(argv[1]);
  if (!source) return 1;
  const std::string entry = zelto::MCPInstaller::entryText(zelto::MCPInstaller::Style::zed, "/bin/ZeltoCLI");
  const auto edited = zelto::JSONCEditor::set(source->text, "context_servers", "zelto", entry);
  for (const std::string_view piece : edited.pieces()) {
    if (!platform::writeAll(1, piece)) return 1;
  }
  return 0;
}
