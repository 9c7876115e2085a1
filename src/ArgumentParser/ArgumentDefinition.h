// One declared input of a command, in the form that all of parsing, help, completion and the dump read.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "ArgumentParser/Name.h"
#include "ArgumentParser/ParserError.h"
#include "ArgumentParser/SplitArguments.h"

namespace ArgumentParser {

/// Where an option or positional takes its values from.
enum class ParsingStrategy {
  default_,           ///< the value right behind the option; a positional: the next value
  scanningForValue,   ///< the first value anywhere behind the option
  unconditional,      ///< the next argument, whatever it looks like
  upToNextOption,     ///< all values right behind the option, at least one
  allRemainingInput,  ///< everything behind
  postTerminator,     ///< positionals: every value behind the first "--", and only those
  allUnrecognized     ///< positionals: all that nothing else claims, options included
};

/// Which of several flags for one value counts when more than one is given.
enum class FlagExclusivity { exclusive, chooseFirst, chooseLast };

/// How the value of an argument is completed in a shell.
struct CompletionKind {
  /// Gets the words of the command line, the index of the word at the cursor, and the cursor's place within
  /// it.
  using Custom = std::function<std::vector<std::string>(const std::vector<std::string>& words,
                                                        std::size_t wordIndex, std::size_t cursorIndex)>;
  using CustomDeprecated = std::function<std::vector<std::string>(const std::vector<std::string>& words)>;

  enum class Kind { default_, list, file, directory, shellCommand, custom, customAsync, customDeprecated };

  static CompletionKind list(std::vector<std::string> values) { return {Kind::list, std::move(values)}; }
  static CompletionKind file(std::vector<std::string> extensions = {}) {
    return {Kind::file, std::move(extensions)};
  }
  static CompletionKind directory() { return {Kind::directory}; }
  static CompletionKind shellCommand(std::string text) { return {Kind::shellCommand, {std::move(text)}}; }
  static CompletionKind custom(Custom function) { return {Kind::custom, {}, std::move(function)}; }
  static CompletionKind customAsync(Custom function) { return {Kind::customAsync, {}, std::move(function)}; }
  static CompletionKind customDeprecated(CustomDeprecated function) {
    return {Kind::customDeprecated,
            {},
            [function = std::move(function)](const auto& words, std::size_t, std::size_t) {
              return function(words);
            }};
  }

  Kind kind = Kind::default_;
  std::vector<std::string> texts = {};  ///< a list's values, a file's extensions, a shell command's text
  Custom function = {};
};

/// The longer help of an argument: a text, or its values one by one behind an optional preamble.
struct ArgumentDiscussion {
  std::string text = {};
  std::vector<std::pair<std::string, std::string>> values = {};  ///< each value and its description
  bool isEnumerated() const { return !values.empty(); }
};

/// One value given for a definition, where it was given and under which name. A flag's value is the number of
/// its case.
struct ParsedValue {
  std::variant<std::string, int> value;
  std::optional<Index> origin = std::nullopt;
  std::optional<Name> name = std::nullopt;

  const std::string& text() const { return std::get<std::string>(value); }
  int flagCase() const { return std::get<int>(value); }
};

/// All values given for one key, in input order.
struct ParsedElement {
  InputKey key;
  std::vector<ParsedValue> values = {};
};

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
  std::vector<ArgumentDefinition> content;

  /// The definition that has the name, or null; of several the last one.
  const ArgumentDefinition* find(const Name& name) const;
  /// The first definition that fills the key, or null.
  const ArgumentDefinition* find(const InputKey& key) const;
  /// Whether a positional takes all the input from some point on.
  bool capturesAllRemainingInput() const;
  const ArgumentDefinition* positional(ParsingStrategy strategy) const;
};

/// What the arguments of one command came to.
class ParsedValues {
 public:
  const ParsedElement* find(const InputKey& key) const;
  ParsedElement& at(const InputKey& key);

 private:
  std::vector<ParsedElement> elements;
};

}  // namespace ArgumentParser
