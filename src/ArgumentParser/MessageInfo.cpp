#include "ArgumentParser/MessageInfo.h"

#include "ArgumentParser/BuiltIns.h"
#include "ArgumentParser/CompletionRequest.h"
#include "ArgumentParser/CompletionsGenerator.h"
#include "ArgumentParser/ErrorMessageGenerator.h"
#include "ArgumentParser/HelpGenerator.h"
#include "ArgumentParser/ToolInfo.h"
#include "ArgumentParser/UsageGenerator.h"

namespace ArgumentParser {
namespace {

using namespace parser_error;

/// The usage of the stack and, if it has a help flag, where to find more.
std::string usageWithPointer(const CommandStack& stack) {
  std::string text = usageMessage(stack);
  const auto names = helpNames(stack);
  if (names.empty()) return text;
  if (!text.empty()) text += '\n';
  return text + "  See '" + toolName(stack) + " " + preferredName(names).synopsisString() +
         "' for more information.";
}

CommandStack chosenStack(CommandIdentity command, const CommandStack& otherwise, const CommandTree& tree) {
  const CommandStack found = tree.stackOf(command);
  return found.empty() ? otherwise : found;
}

}  // namespace

MessageInfo::MessageInfo(const CommandError& error, const CommandTree& tree) {
  describe(error.commandStack, error.parserError, tree);
}

MessageInfo::MessageInfo(const std::exception_ptr& error, const CommandTree& tree) {
  const CommandStack rootAlone{&tree.root()};
  try {
    std::rethrow_exception(error);
  } catch (const CommandError& located) {
    describe(located.commandStack, located.parserError, tree);
  } catch (const ParserError& bare) {
    describe(rootAlone, bare, tree);
  } catch (...) {
    describeThrown(rootAlone, error, tree);
  }
}

void MessageInfo::describe(const CommandStack& stack, const ParserError& error, const CommandTree& tree) {
  if (const auto* request = error.as<HelpRequested>()) {
    message = HelpGenerator(stack, request->visibility).rendered();
  } else if (error.as<DumpHelpRequested>() != nullptr) {
    message = dumpText(makeToolInfo(stack));
  } else if (error.as<VersionRequested>() != nullptr) {
    const auto found = version(stack);
    message = found ? found->text() : "Unspecified version";
  } else if (const auto* script = error.as<CompletionScriptRequested>()) {
    try {
      message = completionScript(CompletionShell::chosen(script->shell), tree);
    } catch (const ParserError& unsupported) {
      describe(stack, unsupported, tree);
    }
  } else if (const auto* response = error.as<CompletionScriptCustomResponse>()) {
    message = response->text;
  } else if (const auto* thrown = error.as<UserValidationError>()) {
    describeThrown(stack, thrown->error, tree);
  } else {
    describeFault(stack, error, tree);
  }
}

void MessageInfo::describeThrown(const CommandStack& stack, const std::exception_ptr& error,
                                 const CommandTree& tree) {
  try {
    std::rethrow_exception(error);
  } catch (const ValidationError& invalid) {
    kind = Kind::validation;
    message = invalid.what();
    usage = usageWithPointer(stack);
  } catch (const CleanExit& clean) {
    if (const auto* help_ = std::get_if<CleanExit::HelpRequest>(&clean.request)) {
      describe(chosenStack(help_->command, stack, tree), HelpRequested{Visibility::default_}, tree);
    } else if (const auto* dump = std::get_if<CleanExit::DumpRequest>(&clean.request)) {
      describe(chosenStack(dump->command, stack, tree), DumpHelpRequested{}, tree);
    } else {
      message = std::get<CleanExit::Message>(clean.request).text;
    }
  } catch (const ExitCode& code) {
    kind = Kind::other;
    exitCode = code.value;
  } catch (...) {
    kind = Kind::other;
    message = description(error);
    exitCode = ExitCode::failure.value;
  }
}

void MessageInfo::describeFault(const CommandStack& stack, const ParserError& error,
                                const CommandTree& tree) {
  ArgumentSet set = stack.back()->arguments();
  for (ArgumentDefinition& builtIn : builtInDefinitions(stack)) {
    // A name that the command has taken for itself means its own argument.
    std::erase_if(builtIn.names, [&](const Name& name) { return set.find(name) != nullptr; });
    set.content.push_back(std::move(builtIn));
  }
  const ErrorMessageGenerator generator(set, error);
  kind = Kind::validation;
  message = generator.makeErrorMessage();
  help = generator.makeHelpMessage();
  usage = error.as<NoArguments>() != nullptr
              ? "\n" + HelpGenerator({&tree.root()}, Visibility::default_).rendered()
              : usageWithPointer(stack);
}

std::string MessageInfo::fullText() const {
  std::string error = message.empty() ? std::string() : "Error: " + message;
  switch (kind) {
    case Kind::help:
      return message;
    case Kind::other:
      return error;
    default:
      break;
  }
  return (error.empty() ? error : error + "\n") + (help.empty() ? help : "Help:  " + help + "\n") + usage;
}

std::int32_t MessageInfo::status() const {
  switch (kind) {
    case Kind::help:
      return ExitCode::success.value;
    case Kind::validation:
      return ExitCode::validationFailure.value;
    default:
      return exitCode;
  }
}

}  // namespace ArgumentParser
