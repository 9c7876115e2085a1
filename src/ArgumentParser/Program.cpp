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

/// Prints what there is to say of the end and returns the process's exit status.
int exitStatus(const MessageInfo& info) {
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

int parseAndRun(const CommandTree& tree, const std::vector<std::string>& arguments) {
  CommandParser::Result parsed = CommandParser(tree).parse(arguments);
  if (const auto* error = std::get_if<CommandError>(&parsed)) return exitStatus(MessageInfo(*error, tree));
  std::get<CommandParser::Record>(parsed)->run();
  platform::flushOutput();
  return ExitCode::success.value;
}

}  // namespace

std::unique_ptr<CommandRecord> parseAsRoot(const CommandTree& tree,
                                           const std::vector<std::string>& arguments) {
  CommandParser::Result parsed = CommandParser(tree).parse(arguments);
  if (auto* error = std::get_if<CommandError>(&parsed)) throw std::move(*error);
  return std::get<CommandParser::Record>(std::move(parsed));
}

int main(CommandType root, int argc, const char* const* argv) {
  try {
    const CommandTree tree(root);
    try {
      try {
        return parseAndRun(tree, argumentsFrom(argc, argv));
      } catch (const DeclarationError&) {
        throw;
      } catch (...) {
        return exitStatus(MessageInfo(std::current_exception(), tree));
      }
    } catch (const platform::OutputError&) {
      // The text of the outcome itself could not be written.
      return exitStatus(MessageInfo(std::current_exception(), tree));
    }
  } catch (const DeclarationError& error) {
    platform::printError(std::string(error.what()) + "\n");
    return softwareError;
  }
}

}  // namespace ArgumentParser
