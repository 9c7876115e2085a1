// How a command ends other than by returning: the values that its `validate` and `run` may throw.
#pragma once

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>
#include <variant>

namespace ArgumentParser {

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

  explicit CleanExit(std::variant<HelpRequest, Message, DumpRequest> what);
  CleanExit(const CleanExit&);
  CleanExit& operator=(const CleanExit&);
  ~CleanExit() override;
  static CleanExit helpRequest(CommandIdentity command = nullptr);
  static CleanExit message(std::string text);
  static CleanExit dumpRequest(CommandIdentity command = nullptr);
  const char* what() const noexcept override;

  std::variant<HelpRequest, Message, DumpRequest> request;
};

}  // namespace ArgumentParser
