// The second stage of parsing: matches elements of the command line with the definitions of one command.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ArgumentParser/declarations/ArgumentDefinition.h"
#include "ArgumentParser/declarations/CommandTree.h"
#include "ArgumentParser/parsing/SplitArguments.h"

namespace ArgumentParser {

/// What the arguments of one command came to.
class ParsedValues {
 public:
  const ParsedElement* find(const InputKey& key) const;
  ParsedElement& at(const InputKey& key);

 private:
  std::vector<ParsedElement> elements;
};

/// Claims for one command what its definitions know and leaves the rest for others.
class ArgumentMatcher {
 public:
  /// `node` is the command whose children's names may end the pass; null if there is none.
  ArgumentMatcher(const ArgumentSet& definitions, SplitArguments& input, const CommandNode* node)
      : set(definitions), split(input), command(node) {}

  /// Gives every known option and flag its value. Raises `ParserError`.
  void matchOptions();

  /// Gives the positionals, in declared order, the values that are left.
  void matchPositionals();

  ParsedValues values;
  /// What an `allUnrecognized` positional has taken: the elements, for a look at the built-in flags among
  /// them.
  std::vector<SplitArguments::Element> capturedUnrecognized;

 private:
  bool endsPass(const SplitArguments::Element& element) const;
  void record(const ArgumentDefinition& flag, const SplitArguments::Element& element);
  void takeValue(const ArgumentDefinition& option, std::size_t position);
  bool takeAttachedValue(const ArgumentDefinition& option, const SplitArguments::Element& element);
  std::size_t nextValue(std::size_t position);
  void takeLater(const ArgumentDefinition& option, const SplitArguments::Element& element, std::size_t from,
                 bool onlyValues, std::size_t most);
  [[noreturn]] void raiseMissing(const SplitArguments::Element& element) const;
  void store(const ArgumentDefinition& definition, ParsedValue value);

  const ArgumentSet& set;
  SplitArguments& split;
  const CommandNode* command;
  std::size_t scannedTo = 0;  ///< no value is left between a scanning option and this position
};

}  // namespace ArgumentParser
