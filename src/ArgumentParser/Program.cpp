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

/// Prints the text of an end, if it has any, and returns the process's exit status.
int printed(const CommandError& end) {
  try {
    if (end.text.empty()) return end.status;
    // What the command printed through stdio has to come first.
    std::fflush(stdout);
    if (end.goesToStandardOutput) {
      platform::print(end.text + "\n");
      platform::flushOutput();
    } else {
      platform::printError(end.text + "\n");
    }
    return end.status;
  } catch (const platform::SystemError& error) {
    // The text itself could not be written.
    platform::printError(std::string("Error: ") + error.what() + "\n");
    return ExitCode::failure.value;
  }
}

CommandError endOf(const Outcome& outcome, const CommandTree& tree) {
  const MessageInfo info = messageInfo(outcome, tree);
  return {info.fullText(), info.goesToStandardOutput(), info.status()};
}

/// Prints the end that `end` gives and returns its exit status. A malformed declaration is reported, whenever
/// it comes to light.
template <class End>
int exitStatus(End end) {
  try {
    return printed(end());
  } catch (const DeclarationError& error) {
    platform::printError(std::string(error.what()) + "\n");
    return softwareError;
  }
}

/// Reports that memory has run out, without needing any.
int outOfMemory() {
  try {
    platform::printError("Error: out of memory\n");
  } catch (const std::exception&) {
    // Standard output is lost too, with whatever was waiting for it.
  }
  return ExitCode::failure.value;
}

/// The terminate handler: `main` catches nothing if there is no memory even for the error object, or if one
/// is raised where none may be.
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
