#include "ArgumentParser/CommandParser.h"

#include "ArgumentParser/ArgumentDecoder.h"
#include "ArgumentParser/ArgumentMatcher.h"
#include "ArgumentParser/BuiltIns.h"
#include "ArgumentParser/CompletionRequest.h"

namespace ArgumentParser {
namespace {

/// Whether what a command threw asks for an end that is no fault.
bool isRequest(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const CleanExit&) {
    return true;
  } catch (const ExitCode&) {
    return true;
  } catch (...) {
    return false;
  }
}

/// Whether the error is a fault of the command line, not a request or a command's own way to end.
bool isFault(const ParserError& error) {
  if (const auto* user = error.as<parser_error::UserValidationError>()) return !isRequest(user->error);
  return error.as<parser_error::HelpRequested>() == nullptr &&
         error.as<parser_error::VersionRequested>() == nullptr &&
         error.as<parser_error::DumpHelpRequested>() == nullptr;
}

}  // namespace

std::unique_ptr<CommandRecord> CommandParser::parse(const std::vector<std::string>& arguments) {
  try {
    return parseAll(arguments);
  } catch (const ParserError& error) {
    const CommandError located(stack, error);
    if (!arguments.empty() || !isFault(error)) throw located;
    throw CommandError(stack, parser_error::NoArguments{std::make_exception_ptr(located)});
  } catch (const DeclarationError&) {
    throw;
  } catch (...) {
    throw CommandError(stack, parser_error::InvalidState{});
  }
}

std::unique_ptr<CommandRecord> CommandParser::parseAll(const std::vector<std::string>& arguments) {
  checkForCompletionCall(arguments, tree);
  SplitArguments split(arguments);
  checkForCompletionScriptRequest(split, tree);
  return descend(split);
}

std::unique_ptr<CommandRecord> CommandParser::descend(SplitArguments& split) {
  for (;;) {
    const CommandNode& current = *stack.back();
    auto record = parseCurrent(split);
    validate(*record, split);

    const auto& elements = split.elements();
    const std::string* first = elements.empty() ? nullptr : elements.front().text();
    if (const CommandNode* child = first != nullptr ? current.child(*first) : nullptr) {
      split.remove(elements.front().index);
      split.compact();
      stack.push_back(child);
      continue;
    }
    if (elements.size() == 1) checkForBuiltInFlags(elements, stack);
    if (const CommandNode* child = current.defaultSubcommand()) {
      stack.push_back(child);
      continue;
    }
    checkNothingIsLeft(split);
    if (isHelpCommand(current)) raiseHelp(*static_cast<HelpCommand*>(record->fields()));
    return record;
  }
}

std::unique_ptr<CommandRecord> CommandParser::parseCurrent(SplitArguments& split) {
  const CommandNode& current = *stack.back();
  ArgumentMatcher matcher(current.arguments(), split, &current);
  matcher.matchOptions();
  matcher.matchPositionals();
  checkForBuiltInFlags(matcher.capturedUnrecognized, stack);
  try {
    return decode(current, matcher.values);
  } catch (const ParserError&) {
    // Who asks for help gets it, also where the line is wrong otherwise.
    checkForBuiltInFlags(split.elements(), stack);
    throw;
  }
}

void CommandParser::validate(CommandRecord& record, const SplitArguments& split) const {
  try {
    record.validate();
  } catch (...) {
    checkForBuiltInFlags(split.elements(), stack);
    throw ParserError(parser_error::UserValidationError{std::current_exception()});
  }
}

void CommandParser::checkNothingIsLeft(const SplitArguments& split) const {
  checkForBuiltInFlags(split.elements(), stack);
  parser_error::UnexpectedExtraValues extra;
  for (const auto& element : split.elements()) {
    if (const ParsedArgument* option = element.option()) {
      throw ParserError(parser_error::UnknownOption{element.index, option->name});
    }
    if (const std::string* text = element.text()) extra.values.emplace_back(element.index, *text);
  }
  if (!extra.values.empty()) throw ParserError(std::move(extra));
}

void CommandParser::raiseHelp(const HelpCommand& help) {
  stack = {&tree.root()};
  for (const std::string& name : help.subcommands) {
    const CommandNode* child = stack.back()->child(name);
    if (child == nullptr) break;
    stack.push_back(child);
  }
  throw ParserError(parser_error::HelpRequested{Visibility::default_});
}

}  // namespace ArgumentParser
