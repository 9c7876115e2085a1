#include "ArgumentParser/Program.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "ArgumentParser/messages/MessageInfo.h"
#include "ArgumentParser/parsing/CommandParser.h"
#include "platform/Streams.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

/// The status of sysexits.h for an error within the program.
constexpr int softwareError = 70;

/// Prints the words of an end, if it has any, and returns the process's exit status.
int printed(const CommandError& end) {
  try {
    if (end.text.empty()) return end.status;
    // What the command has printed by other means comes first.
    std::fflush(stdout);
    if (end.goesToStandardOutput) {
      platform::print(end.text + "\n");
      platform::flushOutput();
    } else {
      platform::printError(end.text + "\n");
    }
    return end.status;
  } catch (const platform::SystemError& error) {
    // The words themselves could not be written.
    platform::printError(std::string("Error: ") + error.what() + "\n");
    return ExitCode::failure.value;
  }
}

CommandError endOf(const Outcome& outcome, const CommandTree& tree) {
  const MessageInfo info = messageInfo(outcome, tree);
  return {info.fullText(), info.goesToStandardOutput(), info.status()};
}

/// The exit status of what `end` gives; a malformed declaration is told, whenever it comes to light.
template <class End>
int exitStatus(End end) {
  try {
    return printed(end());
  } catch (const DeclarationError& error) {
    platform::printError(std::string(error.what()) + "\n");
    return softwareError;
  }
}

/// Says so where even that must not take any memory.
int outOfMemory() {
  try {
    platform::printError("Error: out of memory\n");
  } catch (const std::exception&) {
    // Standard output is lost as well, with what waited for it.
  }
  return ExitCode::failure.value;
}

/// Where not even the memory for an error is left, or one is raised where none may be, nothing comes back to
/// `main`.
[[noreturn]] void endForWantOfMemory() {
  try {
    if (const auto thrown = std::current_exception()) std::rethrow_exception(thrown);
  } catch (const std::bad_alloc&) {
  } catch (...) {
    std::abort();
  }
  std::_Exit(outOfMemory());
}

}  // namespace

CommandError::CommandError(std::string words, bool isForOutput, std::int32_t exitStatus)
    : text(std::move(words)), goesToStandardOutput(isForOutput), status(exitStatus) {}

int main(CommandType root, int argc, const char* const* argv) {
  std::set_terminate(endForWantOfMemory);
  try {
    return exitStatus([&] {
      const CommandTree tree(root);
      return endOf(afterRun(CommandParser(tree).parse(argumentsFrom(argc, argv)), tree), tree);
    });
  } catch (...) {
    return outOfMemory();
  }
}

std::vector<std::string> argumentsFrom(int argc, const char* const* argv) {
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(text::repairedUTF8(argv[i]));
  return arguments;
}

std::shared_ptr<CommandRecord> parseAsRoot(const CommandTree& tree,
                                           const std::vector<std::string>& arguments) {
  Outcome outcome = CommandParser(tree).parse(arguments);
  if (Run* run = std::get_if<Run>(&outcome)) return std::move(run->record);
  throw endOf(outcome, tree);
}

void exit(CommandType root, const std::exception_ptr& error) {
  std::exit(exitStatus([&]() -> CommandError {
    if (!error) return {{}, false, ExitCode::success.value};
    try {
      std::rethrow_exception(error);
    } catch (const CommandError& end) {
      return end;
    } catch (...) {
      const CommandTree tree(root);
      return endOf(outcomeOf(error, {&tree.root()}, tree), tree);
    }
  }));
}

}  // namespace ArgumentParser
