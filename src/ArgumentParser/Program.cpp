#include "ArgumentParser/Program.h"

#include "ArgumentParser/CommandParser.h"
#include "ArgumentParser/MessageInfo.h"
#include "platform/Streams.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

/// The status of sysexits.h for an error within the program.
constexpr int softwareError = 70;

std::vector<std::string> argumentsFrom(int argc, const char* const* argv) {
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(text::repairedUTF8(argv[i]));
  return arguments;
}

}  // namespace

std::unique_ptr<CommandRecord> parseAsRoot(const CommandTree& tree,
                                           const std::vector<std::string>& arguments) {
  return CommandParser(tree).parse(arguments);
}

int exitStatus(const std::exception_ptr& error, const CommandTree& tree) {
  const MessageInfo info(error, tree);
  const std::string text = info.fullText();
  if (!text.empty()) {
    if (info.goesToStandardOutput()) {
      platform::print(text + "\n");
      platform::flushOutput();
    } else {
      platform::printError(text + "\n");
    }
  }
  return info.status();
}

int main(CommandType root, int argc, const char* const* argv) {
  try {
    const CommandTree tree(root);
    try {
      try {
        parseAsRoot(tree, argumentsFrom(argc, argv))->run();
        platform::flushOutput();
        return ExitCode::success.value;
      } catch (const DeclarationError&) {
        throw;
      } catch (...) {
        return exitStatus(std::current_exception(), tree);
      }
    } catch (const platform::OutputError&) {
      // The text of the outcome itself could not be written.
      return exitStatus(std::current_exception(), tree);
    }
  } catch (const DeclarationError& error) {
    platform::printError(std::string(error.what()) + "\n");
    return softwareError;
  }
}

}  // namespace ArgumentParser
