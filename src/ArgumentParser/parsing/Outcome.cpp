#include "ArgumentParser/parsing/Outcome.h"

#include "ArgumentParser/messages/ErrorMessageGenerator.h"
#include "ArgumentParser/parsing/Requests.h"
#include "platform/Streams.h"

namespace ArgumentParser {
namespace {

CommandStack chosenStack(CommandIdentity command, const CommandStack& otherwise, const CommandTree& tree) {
  const CommandStack found = tree.stackOf(command);
  return found.empty() ? otherwise : found;
}

Request requestOf(const CleanExit& clean, const CommandStack& stack, const CommandTree& tree) {
  if (const auto* help = std::get_if<CleanExit::HelpRequest>(&clean.request)) {
    return helpRequest(chosenStack(help->command, stack, tree));
  }
  if (const auto* dump = std::get_if<CleanExit::DumpRequest>(&clean.request)) {
    return dumpRequest(chosenStack(dump->command, stack, tree));
  }
  return {[text = std::get<CleanExit::Message>(clean.request).text] { return text; }};
}

}  // namespace

Outcome outcomeOf(const std::exception_ptr& thrown, const CommandStack& stack, const CommandTree& tree) {
  try {
    std::rethrow_exception(thrown);
  } catch (const DeclarationError&) {
    throw;
  } catch (const ValidationError& invalid) {
    return Fault{stack, parser_error::UserValidationError{invalid.what()}};
  } catch (const CleanExit& clean) {
    return requestOf(clean, stack, tree);
  } catch (const ExitCode& code) {
    return Request{{}, code.value};
  } catch (...) {
    return Fault{stack, parser_error::UserError{description(thrown)}};
  }
}

Outcome afterRun(Outcome parsed, const CommandTree& tree) {
  Run* run = std::get_if<Run>(&parsed);
  if (run == nullptr) return parsed;
  try {
    run->status = run->record->run();
    platform::flushOutput();
    return parsed;
  } catch (...) {
    return outcomeOf(std::current_exception(), {&tree.root()}, tree);
  }
}

}  // namespace ArgumentParser
