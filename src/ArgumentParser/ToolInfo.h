// The machine-readable model of a command tree, which `--experimental-dump-help` prints as JSON: for
// documentation tools, and for the completion generators.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ArgumentParser {

/// A dump that cannot be read; `what()` says why.
struct ToolInfoError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct ToolInfoHeader {
  std::int64_t serializationVersion = 0;
};

struct NameInfoV0 {
  std::string kind;  ///< "long", "short" or "longWithSingleDash"
  std::string name;  ///< without its dashes
  /// The name as typed.
  std::string synopsisString() const { return (kind == "long" ? "--" : "-") + name; }
  friend bool operator==(const NameInfoV0&, const NameInfoV0&) = default;
};

/// How a value is completed: the kind's key in the dump, and the texts it carries.
struct CompletionKindV0 {
  std::string
      kind;  ///< "list", "file", "directory", "shellCommand", "custom", "customAsync", "customDeprecated"
  std::vector<std::string> texts = {};
  friend bool operator==(const CompletionKindV0&, const CompletionKindV0&) = default;
};

struct ArgumentInfoV0 {
  std::string kind;  ///< "positional", "option" or "flag"
  bool shouldDisplay = true;
  std::string sectionTitle = {};
  bool isOptional = false;
  bool isRepeating = false;
  std::string parsingStrategy = {};
  std::vector<NameInfoV0> names = {};
  std::optional<NameInfoV0> preferredName = {};
  std::string valueName = {};
  std::optional<std::string> defaultValue = {};
  std::vector<std::string> allValues = {};
  std::map<std::string, std::string> allValueDescriptions = {};
  std::optional<CompletionKindV0> completionKind = {};
  std::string abstract = {};
  std::string discussion = {};
  friend bool operator==(const ArgumentInfoV0&, const ArgumentInfoV0&) = default;
};

struct CommandInfoV0 {
  std::vector<std::string> superCommands = {};
  bool shouldDisplay = true;
  std::string commandName = {};
  std::vector<std::string> aliases = {};
  std::string abstract = {};
  std::string discussion = {};
  std::optional<std::string> defaultSubcommand = {};
  std::vector<CommandInfoV0> subcommands = {};
  std::vector<ArgumentInfoV0> arguments = {};
  friend bool operator==(const CommandInfoV0&, const CommandInfoV0&) = default;
};

struct ToolInfoV0 {
  std::int64_t serializationVersion = 0;
  CommandInfoV0 command;
  friend bool operator==(const ToolInfoV0&, const ToolInfoV0&) = default;
};

/// The model as JSON text: keys sorted, empty fields left out, "/" escaped.
std::string dumpText(const ToolInfoV0& info);

/// The version of a dump. Raises `ToolInfoError`.
ToolInfoHeader readToolInfoHeader(std::string_view text);

/// The model that `dumpText` wrote. Raises `ToolInfoError`.
ToolInfoV0 readToolInfo(std::string_view text);

}  // namespace ArgumentParser
