// A command's declaration: its configuration, its arguments in order, and how its record is made and run.
#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "ArgumentParser/declarations/ArgumentDefinition.h"
#include "ArgumentParser/declarations/Arguments.h"
#include "ArgumentParser/declarations/Exits.h"

namespace ArgumentParser {

class Declaration;

/// Refers to a command type in another declaration. Null means no command.
class CommandType {
 public:
  CommandType() = default;
  explicit CommandType(Declaration (*function)()) : declare(function) {}
  Declaration declaration() const;
  CommandIdentity identity() const { return reinterpret_cast<CommandIdentity>(declare); }
  explicit operator bool() const { return declare != nullptr; }
  friend bool operator==(const CommandType&, const CommandType&) = default;

 private:
  Declaration (*declare)() = nullptr;
};

/// The command type `Command`, for lists of subcommands.
template <class Command>
CommandType type() {
  return CommandType(&Command::declaration);
}

/// Further children of a command, listed in help under a heading of their own.
struct CommandGroup {
  std::string name;
  std::vector<CommandType> subcommands;
};

/// A version: a text, or a function that is called when something asks for the text or whether there is one.
/// An empty text is no version.
class Version {
 public:
  Version() = default;
  Version(const char* text) : fixed(text) {}
  Version(std::string text) : fixed(std::move(text)) {}
  template <class LookUp>
  requires std::is_invocable_r_v<std::string, LookUp> Version(LookUp function)
      : lookUp(std::move(function)) {}
  bool isEmpty() const { return text().empty(); }
  std::string text() const { return lookUp ? lookUp() : fixed; }

 private:
  std::string fixed;
  std::function<std::string()> lookUp;
};

/// What a command is called and says about itself. Every field may be left out.
struct CommandConfiguration {
  /// Absent: the type's name by the kebab rule, so that renaming the C++ type renames the command.
  std::optional<std::string> commandName = {};
  std::optional<std::string> superCommandName = {};  ///< shown before the root's name in usage and help
  std::string abstract = {};                         ///< one line
  std::optional<std::string> usage = {};             ///< replaces the generated usage; empty: none is printed
  std::string discussion = {};
  Version version = {};       ///< makes `--version` available here and below
  bool shouldDisplay = true;  ///< false: in no list of subcommands and no completion
  std::vector<CommandType> subcommands = {};
  std::vector<CommandGroup> groupedSubcommands = {};
  CommandType defaultSubcommand = {};               ///< one of the children: chosen when none is named
  std::optional<NameSpecification> helpNames = {};  ///< absent: the nearest ancestor's, else -h and --help
  std::vector<std::string> aliases = {};
};

namespace detail {

/// What can be done with the records of one type. A table of functions, and not virtual functions, since the
/// tables and type descriptions of those would be relocated at every start.
struct RecordOperations {
  void* (*make)();
  void (*destroy)(void* fields);
  void (*validate)(void* fields);
  std::int32_t (*run)(void* fields);
};

}  // namespace detail

/// A command's record, whatever its type.
class CommandRecord {
 public:
  /// A new record, its fields as they are initialised.
  CommandRecord(CommandIdentity type, const detail::RecordOperations& typeOperations);
  CommandRecord(const CommandRecord&) = delete;
  CommandRecord& operator=(const CommandRecord&) = delete;
  ~CommandRecord();

  void* fields() const { return record; }
  CommandIdentity identity() const { return commandIdentity; }
  void validate() { operations.validate(record); }
  /// The status that the process ends with.
  std::int32_t run() { return operations.run(record); }
  /// The record of `Command`, or null if this is another command's.
  template <class Command>
  Command* as() {
    return commandIdentity == type<Command>().identity() ? static_cast<Command*>(record) : nullptr;
  }

 private:
  CommandIdentity commandIdentity;
  const detail::RecordOperations& operations;
  void* record;
};

/// One command as the framework sees it. Its arguments are declared only when somebody looks at them.
class Declaration {
 public:
  CommandConfiguration configuration;
  std::string typeName;
  /// Adds the definitions to a set, or only checks them, as the set says. Raises `DeclarationError`.
  std::function<void(ArgumentSet&)> declareArguments;
  CommandIdentity identity = nullptr;
  const detail::RecordOperations* operations = nullptr;
  bool hasRun = true;

  std::shared_ptr<CommandRecord> makeRecord() const;
};

inline Declaration CommandType::declaration() const {
  return declare();
}

namespace detail {

template <class Command>
concept Runnable = requires(Command& command) {
  command.run();
};

/// Compile-time checks of operations that would not do what they seem to, each with a sentence that says why.
template <class Command>
constexpr void checkOperations() {
  if constexpr (Runnable<Command>) {
    using Result = decltype(std::declval<Command&>().run());
    static_assert(std::is_void_v<Result> || std::same_as<Result, int>,
                  "A command's run gives back nothing, or an int, which is the exit status.");
  } else {
    static_assert(
        !requires { &Command::run; }, "A command's run is called without arguments.");
  }
  if constexpr (requires(Command & command) { command.validate(); }) {
    static_assert(
        std::is_void_v<decltype(std::declval<Command&>().validate())>,
        "A command's validate gives back nothing: it throws a ValidationError that says what is wrong.");
  } else {
    static_assert(
        !requires { &Command::validate; }, "A command's validate is called without arguments.");
  }
}

template <class Command>
void validateRecord(void* fields) {
  if constexpr (requires(Command & command) { command.validate(); }) {
    static_cast<Command*>(fields)->validate();
  }
}

template <class Command>
std::int32_t runRecord(void* fields) {
  if constexpr (!Runnable<Command>) {
    throw CleanExit::helpRequest(type<Command>().identity());
  } else if constexpr (std::is_void_v<decltype(std::declval<Command&>().run())>) {
    static_cast<Command*>(fields)->run();
    return 0;
  } else {
    return static_cast<Command*>(fields)->run();
  }
}

template <class Command>
inline constexpr RecordOperations operationsOf{makeRecord<Command>, destroyRecord<Command>,
                                               validateRecord<Command>, runRecord<Command>};

}  // namespace detail

/// Declares the command `Command`: a record with plain fields and, unless it only groups others, a `run`. The
/// function gets an `Arguments<Command>` and names the fields in order.
template <class Command, class DeclareArguments>
Declaration command(CommandConfiguration configuration, DeclareArguments declareArguments) {
  detail::checkOperations<Command>();
  return {std::move(configuration),
          std::string(detail::typeName<Command>),
          [declareArguments](ArgumentSet& set) {
            detail::InitialRecord fresh(detail::makeRecord<Command>, detail::destroyRecord<Command>);
            Arguments<Command> arguments(set, fresh);
            declareArguments(arguments);
          },
          type<Command>().identity(),
          &detail::operationsOf<Command>,
          detail::Runnable<Command>};
}

/// Declares a command without arguments of its own.
template <class Command>
Declaration command(CommandConfiguration configuration) {
  return command<Command>(std::move(configuration), [](Arguments<Command>&) {});
}

}  // namespace ArgumentParser
