#include "ArgumentParser/parsing/CommandParser.h"

#include <new>

#include "ArgumentParser/completion/CompletionRequest.h"
#include "ArgumentParser/declarations/BuiltIns.h"
#include "ArgumentParser/parsing/ArgumentDecoder.h"
#include "ArgumentParser/parsing/Requests.h"

namespace ArgumentParser {

Outcome CommandParser::parse(const std::vector<std::string>& arguments) {
  Outcome outcome = [&]() -> Outcome {
    try {
      return parseAll(arguments);
    } catch (const ParserError& error) {
      return Fault{stack, error};
    } catch (const DeclarationError&) {
      throw;
    } catch (const std::bad_alloc&) {
      throw;
    } catch (...) {
      return Fault{stack, parser_error::InvalidState{}};
    }
  }();
  if (Fault* fault = std::get_if<Fault>(&outcome)) fault->noArguments = arguments.empty();
  return outcome;
}

Outcome CommandParser::parseAll(const std::vector<std::string>& arguments) {
  if (auto request = completionCall(arguments, tree)) return *std::move(request);
  SplitArguments split(arguments);
  if (auto request = completionScriptRequest(split, tree)) return *std::move(request);
  return descend(split);
}

Outcome CommandParser::descend(SplitArguments& split) {
  for (;;) {
    const CommandNode& current = *stack.back();
    Outcome outcome = parseCurrent(split);
    const Run* run = std::get_if<Run>(&outcome);
    if (run == nullptr) return outcome;

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
    if (const auto* help = run->record->as<HelpCommand>()) return helpRequest(stackNamed(help->subcommands));
    return outcome;
  }
}

Outcome CommandParser::parseCurrent(SplitArguments& split) {
  const CommandNode& current = *stack.back();
  ArgumentMatcher matcher(current.arguments(), split, &current);
  matcher.matchOptions();
  matcher.matchPositionals();
  if (auto request = builtInRequest(matcher.capturedUnrecognized, stack)) return *std::move(request);
  Outcome outcome = decoded(matcher);
  if (std::holds_alternative<Run>(outcome)) return outcome;
  // Help is given even if the rest of the line is wrong.
  if (auto request = builtInRequest(split.elements(), stack)) return *std::move(request);
  return outcome;
}

/// The current command's record, filled and validated, or its fault.
Outcome CommandParser::decoded(const ArgumentMatcher& matcher) {
  Run run;
  try {
    run.record = decode(*stack.back(), matcher.values, records);
  } catch (const ParserError& error) {
    return Fault{stack, error};
  }
  try {
    run.record->validate();
  } catch (...) {
    return outcomeOf(std::current_exception(), stack, tree);
  }
  records.push_back(run.record);
  return run;
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

/// The command reached by following the names from the root as far as they are known.
CommandStack CommandParser::stackNamed(const std::vector<std::string>& names) const {
  CommandStack result{&tree.root()};
  for (const std::string& name : names) {
    const CommandNode* child = result.back()->child(name);
    if (child == nullptr) break;
    result.push_back(child);
  }
  return result;
}

}  // namespace ArgumentParser
