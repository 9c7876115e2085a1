// The text of every parser error.
#pragma once

#include <exception>
#include <string>

#include "ArgumentParser/declarations/ArgumentDefinition.h"
#include "ArgumentParser/parsing/ParserError.h"

namespace ArgumentParser {

/// Words one error, by the definitions of the deepest command reached, the built-in ones included.
class ErrorMessageGenerator {
 public:
  ErrorMessageGenerator(const ArgumentSet& arguments, const ParserError& error)
      : set(arguments), parserError(error) {}

  /// What went wrong, without "Error: ".
  std::string makeErrorMessage() const;

  /// The line about the argument in question; empty if there is none or it has no abstract.
  std::string makeHelpMessage() const;

 private:
  const ArgumentSet& set;
  const ParserError& parserError;
};

/// The text of a thrown value.
std::string description(const std::exception_ptr& error);

/// The Levenshtein distance of two texts in user-perceived characters.
std::size_t editDistance(std::string_view a, std::string_view b);

}  // namespace ArgumentParser
