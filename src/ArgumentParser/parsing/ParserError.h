// What can be wrong with a command line: values that carry origin and name. ErrorMessageGenerator words them.
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "ArgumentParser/declarations/ParsedValue.h"

namespace ArgumentParser {

namespace parser_error {

struct UnsupportedShell {
  std::optional<std::string> shell;
};
struct UnknownOption {
  Index origin;
  Name name;
};
struct InvalidOption {
  std::string text;
};
struct NonAlphanumericShortOption {
  std::string character;
};
struct MissingValueForOption {
  Index origin;
  Name name;
};
struct MissingValueOrUnknownCompositeOption {
  Index origin;
  Name name;
  Name composite;
};
struct UnexpectedValueForOption {
  Index origin;
  Name name;
  std::string value;
};
struct UnexpectedExtraValues {
  std::vector<std::pair<Index, std::string>> values;
};
struct DuplicateExclusiveValues {
  Index previous;
  Index duplicate;
  std::vector<std::string> originalInput;
};
struct NoValue {
  InputKey key;
};
struct UnableToParseValue {
  std::optional<Index> origin;
  std::optional<Name> name;
  std::string value;
  InputKey key;
  std::optional<std::string> reason;  ///< what the conversion said, if it said anything
};
struct UserValidationError {
  std::string message;  ///< of the `ValidationError` that a command threw
};
struct UserError {
  std::string description;  ///< of anything else that a command threw
};
struct NotParentCommand {
  std::string command;
};
struct NotImplemented {};
struct InvalidState {};
struct MissingSubcommand {};

using Any = std::variant<UnsupportedShell, UnknownOption, InvalidOption, NonAlphanumericShortOption,
                         MissingValueForOption, MissingValueOrUnknownCompositeOption,
                         UnexpectedValueForOption, UnexpectedExtraValues, DuplicateExclusiveValues, NoValue,
                         UnableToParseValue, UserValidationError, UserError, NotParentCommand, NotImplemented,
                         InvalidState, MissingSubcommand>;

}  // namespace parser_error

/// One fault. The stages of parsing throw it.
struct ParserError : std::exception {
  template <class Case>
  ParserError(Case value) : error(std::move(value)) {}
  const char* what() const noexcept override { return "ParserError"; }
  template <class Case>
  const Case* as() const {
    return std::get_if<Case>(&error);
  }

  parser_error::Any error;
};

}  // namespace ArgumentParser
