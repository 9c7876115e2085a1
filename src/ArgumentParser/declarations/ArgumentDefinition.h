// One declared input of a command, in the form that all of parsing, help, completion and the dump read.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ArgumentParser/declarations/CompletionKind.h"
#include "ArgumentParser/declarations/Exits.h"
#include "ArgumentParser/declarations/Name.h"
#include "ArgumentParser/declarations/ParsedValue.h"

namespace ArgumentParser {

/// Where an option or positional takes its values from.
enum class ParsingStrategy {
  default_,           ///< the value right after the option; a positional: the next value
  scanningForValue,   ///< the first value anywhere after the option
  unconditional,      ///< the next argument, whatever it looks like
  upToNextOption,     ///< all values right after the option, at least one
  allRemainingInput,  ///< everything that follows
  postTerminator,     ///< positionals: every value after the first "--", and only those
  allUnrecognized     ///< positionals: all that nothing else claims, options included
};

/// Which of several flags for one value counts when more than one is given.
enum class FlagExclusivity { exclusive, chooseFirst, chooseLast };

/// Which definitions a help text shows: `default_` the ordinary ones, `hidden` those and the hidden ones,
/// `private_` all.
enum class Visibility { default_, hidden, private_ };

/// The longer help of an argument: a text, or its values one by one after an optional preamble.
struct ArgumentDiscussion {
  std::string text = {};
  std::vector<std::pair<std::string, std::string>> values = {};  ///< each value and its description
  bool isEnumerated() const { return !values.empty(); }
};

/// One declared input.
struct ArgumentDefinition {
  enum class Kind { named, positional };
  enum class Update { nullary, unary, optionalUnary };

  struct Help {
    bool isOptional = false;
    bool isRepeating = false;
    bool isComposite = false;  ///< one of several flags that fill one value
    std::optional<std::string> defaultValue = std::nullopt;
    std::vector<std::string> allValueStrings = {};
    std::string abstract = {};
    ArgumentDiscussion discussion = {};
    std::string valueName = {};
    Visibility visibility = Visibility::default_;
    std::string parentTitle = {};
  };

  /// Converts what was parsed (null if nothing was) and stores it in the record. Raises `ParserError`.
  using Decode = std::function<void(void* record, const ParsedElement* parsed)>;

  // Compiled once, in the library, and not in every file with declarations.
  ArgumentDefinition();
  ArgumentDefinition(const ArgumentDefinition&);
  ArgumentDefinition(ArgumentDefinition&&) noexcept;
  ArgumentDefinition& operator=(const ArgumentDefinition&);
  ArgumentDefinition& operator=(ArgumentDefinition&&) noexcept;
  ~ArgumentDefinition();

  Kind kind = Kind::named;
  InputKey key = {};
  std::vector<Name> names = {};
  Update update = Update::nullary;
  ParsingStrategy parsingStrategy = ParsingStrategy::default_;
  FlagExclusivity exclusivity = FlagExclusivity::chooseLast;
  int flagCase = 1;  ///< what a flag records
  CompletionKind completion = {};
  Help help = {};
  Decode decode = {};  ///< empty for the further flags of a key, whose first decodes for all

  bool isPositional() const { return kind == Kind::positional; }
  bool isFlag() const { return !isPositional() && update == Update::nullary; }
  bool takesValue() const { return !isPositional() && update != Update::nullary; }
  bool isVisible(Visibility requested) const { return help.visibility <= requested; }
  /// The declared value name, else the preferred name, else the key's name by the kebab rule, else "value".
  std::string valueName() const;
};

/// The definitions of one command, in declared order, those of option groups in the groups' places.
struct ArgumentSet {
  /// The record of a command further up that a field wants to have.
  struct Parent {
    CommandIdentity identity;
    std::string typeName;
    std::function<void(void* record, std::shared_ptr<const void> found)> store;
  };

  std::vector<ArgumentDefinition> content = {};
  std::vector<Parent> parents = {};
  bool onlyChecks = false;  ///< nothing is added: declarations are only checked, which is cheap
  std::vector<const void*> checkedGroups = {};

  /// Whether the option group has been checked before; it counts as checked from now on.
  bool isChecked(const void* group);

  /// The definition that has the name, or null; of several the last one.
  const ArgumentDefinition* find(const Name& name) const;
  /// The first definition that fills the key, or null.
  const ArgumentDefinition* find(const InputKey& key) const;
  /// Whether a positional takes all the input from some point on.
  bool capturesAllRemainingInput() const;
  const ArgumentDefinition* positional(ParsingStrategy strategy) const;
};

}  // namespace ArgumentParser
