#include "ArgumentParser/messages/MessageInfo.h"

#include "ArgumentParser/declarations/BuiltIns.h"
#include "ArgumentParser/messages/ErrorMessageGenerator.h"
#include "ArgumentParser/messages/HelpGenerator.h"
#include "ArgumentParser/messages/UsageGenerator.h"

namespace ArgumentParser {
namespace {

using Kind = MessageInfo::Kind;

/// The usage of the stack and, if it has a help flag, where to find more.
std::string usageWithPointer(const CommandStack& stack) {
  std::string text = usageMessage(stack);
  const auto names = helpNames(stack);
  if (names.empty()) return text;
  if (!text.empty()) text += '\n';
  return text + "  See '" + toolName(stack) + " " + preferredName(names).synopsisString() +
         "' for more information.";
}

/// The definitions of the stack's last command and the built-in ones.
ArgumentSet allDefinitions(const CommandStack& stack) {
  ArgumentSet set = stack.back()->arguments();
  for (ArgumentDefinition& builtIn : builtInDefinitions(stack)) {
    // A built-in name that the command declares itself means the command's own argument.
    std::erase_if(builtIn.names, [&](const Name& name) { return set.find(name) != nullptr; });
    set.content.push_back(std::move(builtIn));
  }
  return set;
}

struct Describe {
  const CommandTree& tree;

  MessageInfo operator()(const Run& run) const { return {.exitCode = run.status}; }

  MessageInfo operator()(const Request& request) const {
    if (!request.answer) return {.exitCode = request.status};
    try {
      return {.kind = Kind::help, .message = request.answer()};
    } catch (...) {
      return messageInfo(outcomeOf(std::current_exception(), {&tree.root()}, tree), tree);
    }
  }

  MessageInfo operator()(const Fault& fault) const {
    const auto* thrown = fault.parserError.as<parser_error::UserError>();
    if (thrown != nullptr && !fault.noArguments) {
      return {.message = thrown->description, .exitCode = ExitCode::failure.value};
    }
    const ArgumentSet set = allDefinitions(fault.commandStack);
    const ErrorMessageGenerator generator(set, fault.parserError);
    MessageInfo info{.kind = Kind::validation, .message = generator.makeErrorMessage()};
    if (fault.noArguments) {
      info.usage = "\n" + HelpGenerator({&tree.root()}, Visibility::default_).rendered();
    } else {
      info.usage = usageWithPointer(fault.commandStack);
      info.help = generator.makeHelpMessage();
    }
    return info;
  }
};

}  // namespace

MessageInfo messageInfo(const Outcome& outcome, const CommandTree& tree) {
  return std::visit(Describe{tree}, outcome);
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
