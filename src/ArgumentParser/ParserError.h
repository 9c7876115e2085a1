// What can go wrong, or be asked for, while a command line is parsed: values that carry origin and name.
// Their wording is made elsewhere (ErrorMessageGenerator).
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "ArgumentParser/Name.h"
#include "ArgumentParser/SplitArguments.h"

namespace ArgumentParser {

struct CommandNode;

/// Which definitions a help text shows: `default_` the ordinary ones, `hidden` those and the hidden ones,
/// `private_` all.
enum class Visibility { default_, hidden, private_ };

/// Tells two definitions apart: the field's name, and the option groups above it.
struct InputKey {
  std::string name;
  std::vector<std::string> path = {};
  friend bool operator==(const InputKey&, const InputKey&) = default;
};

/// A fault of a declaration itself. No input of a user leads here.
struct DeclarationError : std::logic_error {
  using std::logic_error::logic_error;
};

/// Thrown by a command's `validate` or `run`: printed with the usage, status 64.
struct ValidationError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Thrown by a command to end with a status and no words.
struct ExitCode : std::exception {
  explicit ExitCode(std::int32_t status) : value(status) {}
  const char* what() const noexcept override { return "ExitCode"; }
  std::int32_t value;

  static const ExitCode success, failure, validationFailure;
};
inline const ExitCode ExitCode::success{0};
inline const ExitCode ExitCode::failure{1};
inline const ExitCode ExitCode::validationFailure{64};

/// Identifies a command declaration; null means none.
using CommandIdentity = const void*;

/// Thrown by a command to end with success and a text on standard output.
struct CleanExit : std::exception {
  struct HelpRequest {
    CommandIdentity command = nullptr;  ///< whose help; null: that of the command at hand
  };
  struct Message {
    std::string text;
  };
  struct DumpRequest {
    CommandIdentity command = nullptr;
  };

  explicit CleanExit(std::variant<HelpRequest, Message, DumpRequest> what) : request(std::move(what)) {}
  static CleanExit helpRequest(CommandIdentity command = nullptr) { return CleanExit(HelpRequest{command}); }
  static CleanExit message(std::string text) { return CleanExit(Message{std::move(text)}); }
  static CleanExit dumpRequest(CommandIdentity command = nullptr) { return CleanExit(DumpRequest{command}); }
  const char* what() const noexcept override {
    const auto* message = std::get_if<Message>(&request);
    if (message != nullptr) return message->text.c_str();
    return std::holds_alternative<DumpRequest>(request) ? "--experimental-dump-help" : "--help";
  }

  std::variant<HelpRequest, Message, DumpRequest> request;
};

struct ParserError;

namespace parser_error {

struct HelpRequested {
  Visibility visibility;
};
struct CompletionScriptRequested {
  std::optional<std::string> shell;
};
struct CompletionScriptCustomResponse {
  std::string text;
};
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
  std::exception_ptr error;
};
struct NoArguments {
  std::exception_ptr error;  ///< a `CommandError`, or what a command threw
};
struct NotParentCommand {
  std::string command;
};
struct VersionRequested {};
struct DumpHelpRequested {};
struct NotImplemented {};
struct InvalidState {};
struct MissingSubcommand {};

using Any =
    std::variant<HelpRequested, CompletionScriptRequested, CompletionScriptCustomResponse, UnsupportedShell,
                 UnknownOption, InvalidOption, NonAlphanumericShortOption, MissingValueForOption,
                 MissingValueOrUnknownCompositeOption, UnexpectedValueForOption, UnexpectedExtraValues,
                 DuplicateExclusiveValues, NoValue, UnableToParseValue, UserValidationError, NoArguments,
                 NotParentCommand, VersionRequested, DumpHelpRequested, NotImplemented, InvalidState,
                 MissingSubcommand>;

}  // namespace parser_error

/// One error or request of the parser.
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

/// A parser error together with the commands reached, root first.
struct CommandError : std::exception {
  CommandError(std::vector<const CommandNode*> stack, ParserError error)
      : commandStack(std::move(stack)),
        parserError(std::move(error)) {}  // NOLINT(bugprone-throw-keyword-missing)
  const char* what() const noexcept override { return "CommandError"; }

  std::vector<const CommandNode*> commandStack;
  ParserError parserError;
};

}  // namespace ArgumentParser
