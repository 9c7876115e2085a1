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

CommandParser::Result CommandParser::parse(const std::vector<std::string>& arguments) {
  try {
    Found found = parseAll(arguments);
    if (auto* request = std::get_if<ParserError>(&found)) return CommandError(stack, std::move(*request));
    return std::get<Record>(std::move(found));
  } catch (const ParserError& error) {
    const CommandError located(stack, error);
    if (!arguments.empty() || !isFault(error)) return located;
    return CommandError(stack, parser_error::NoArguments{std::make_exception_ptr(located)});
  } catch (const DeclarationError&) {
    throw;
  } catch (...) {
    return CommandError(stack, parser_error::InvalidState{});
  }
}

CommandParser::Found CommandParser::parseAll(const std::vector<std::string>& arguments) {
  checkForCompletionCall(arguments, tree);
  SplitArguments split(arguments);
  checkForCompletionScriptRequest(split, tree);
  return descend(split);
}

CommandParser::Found CommandParser::descend(SplitArguments& split) {
  for (;;) {
    const CommandNode& current = *stack.back();
    Found found = parseCurrent(split);
    if (std::holds_alternative<ParserError>(found)) return found;

    const auto& elements = split.elements();
    const std::string* first = elements.empty() ? nullptr : elements.front().text();
    if (const CommandNode* child = first != nullptr ? current.child(*first) : nullptr) {
      split.remove(elements.front().index);
      split.compact();
      stack.push_back(child);
      continue;
    }
    if (elements.size() == 1 || !current.configuration().defaultSubcommand) {
      if (auto request = builtInRequest(elements, stack)) return *std::move(request);
    }
    if (const CommandNode* child = current.defaultSubcommand()) {
      stack.push_back(child);
      continue;
    }
    checkNothingIsLeft(split);
    if (isHelpCommand(current)) {
      return helpRequest(*static_cast<HelpCommand*>(std::get<Record>(found)->fields()));
    }
    return found;
  }
}

CommandParser::Found CommandParser::parseCurrent(SplitArguments& split) {
  const CommandNode& current = *stack.back();
  ArgumentMatcher matcher(current.arguments(), split, &current);
  matcher.matchOptions();
  matcher.matchPositionals();
  if (auto request = builtInRequest(matcher.capturedUnrecognized, stack)) return *std::move(request);
  try {
    Record record = decode(current, matcher.values);
    validate(*record);
    return record;
  } catch (const ParserError&) {
    // Who asks for help gets it, also where the line is wrong otherwise.
    if (auto request = builtInRequest(split.elements(), stack)) return *std::move(request);
    throw;
  }
}

void CommandParser::validate(CommandRecord& record) {
  try {
    record.validate();
  } catch (...) {
    throw ParserError(parser_error::UserValidationError{std::current_exception()});
  }
}

void CommandParser::checkNothingIsLeft(const SplitArguments& split) {
  parser_error::UnexpectedExtraValues extra;
  for (const auto& element : split.elements()) {
    if (const ParsedArgument* option = element.option()) {
      throw ParserError(parser_error::UnknownOption{element.index, option->name});
    }
    if (const std::string* text = element.text()) extra.values.emplace_back(element.index, *text);
  }
  if (!extra.values.empty()) throw ParserError(std::move(extra));
}

ParserError CommandParser::helpRequest(const HelpCommand& help) {
  stack = {&tree.root()};
  for (const std::string& name : help.subcommands) {
    const CommandNode* child = stack.back()->child(name);
    if (child == nullptr) break;
    stack.push_back(child);
  }
  return parser_error::HelpRequested{Visibility::default_};
}

}  // namespace ArgumentParser
