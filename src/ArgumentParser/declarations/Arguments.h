// The builder with which a command names its arguments, in order, by pointer to member.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "ArgumentParser/declarations/ArgumentDefinition.h"
#include "ArgumentParser/declarations/ArgumentValue.h"
#include "ArgumentParser/declarations/Exits.h"

namespace ArgumentParser {

/// The choices for an option of one value; `ParsingStrategy` says what each does.
enum class SingleValueParsingStrategy {
  next = static_cast<int>(ParsingStrategy::default_),
  scanningForValue = static_cast<int>(ParsingStrategy::scanningForValue),
  unconditional = static_cast<int>(ParsingStrategy::unconditional)
};
/// The choices for a repeated option.
enum class ArrayParsingStrategy {
  singleValue = static_cast<int>(ParsingStrategy::default_),
  unconditionalSingleValue = static_cast<int>(ParsingStrategy::unconditional),
  upToNextOption = static_cast<int>(ParsingStrategy::upToNextOption),
  remaining = static_cast<int>(ParsingStrategy::allRemainingInput)
};
/// The choices for a repeated positional.
enum class ArgumentArrayParsingStrategy {
  remaining = static_cast<int>(ParsingStrategy::default_),
  allUnrecognized = static_cast<int>(ParsingStrategy::allUnrecognized),
  postTerminator = static_cast<int>(ParsingStrategy::postTerminator),
  captureForPassthrough = static_cast<int>(ParsingStrategy::allRemainingInput)
};
/// A positional that is not repeated has no choice.
enum class SingleArgumentParsingStrategy { next = static_cast<int>(ParsingStrategy::default_) };

/// The forms that an option or positional of values can have, from its field's type: `T` (required unless it
/// has a default), `std::optional<T>`, `std::vector<T>` (repeating).
template <class Field>
struct FieldShape {
  using Value = Field;
  using OptionStrategy = SingleValueParsingStrategy;
  using ArgumentStrategy = SingleArgumentParsingStrategy;
  static constexpr bool isOptional = false, isRepeating = false;
};
template <class Held>
struct FieldShape<std::optional<Held>> : FieldShape<Held> {
  static constexpr bool isOptional = true;
};
template <class Held>
struct FieldShape<std::vector<Held>> {
  using Value = Held;
  using OptionStrategy = ArrayParsingStrategy;
  using ArgumentStrategy = ArgumentArrayParsingStrategy;
  static constexpr bool isOptional = true, isRepeating = true;
};

/// What help says about an argument.
struct ArgumentHelp {
  ArgumentHelp() = default;
  ArgumentHelp(const char* text) : abstract(text) {}
  ArgumentHelp(std::string text, std::string longer = {}, std::string name = {},
               Visibility shown = Visibility::default_)
      : abstract(std::move(text)),
        discussion(std::move(longer)),
        valueName(std::move(name)),
        visibility(shown) {}
  static ArgumentHelp hidden() { return {{}, {}, {}, Visibility::hidden}; }
  static ArgumentHelp private_() { return {{}, {}, {}, Visibility::private_}; }

  std::string abstract = {};
  std::string discussion = {};
  std::string valueName = {};
  Visibility visibility = Visibility::default_;
};

/// How a positional is declared, besides its field.
template <class Field>
struct ArgumentSpec {
  using Value = typename FieldShape<Field>::Value;

  ArgumentHelp help = {};
  std::optional<Field> defaultValue = {};
  bool atLeastOne = false;  ///< a repeating one that must be given
  typename FieldShape<Field>::ArgumentStrategy parsing = {};
  CompletionKind completion = {};
  /// Converts a text in place of the type's own conversion: nothing for one that is no such value; what it
  /// throws is shown behind the error.
  std::function<std::optional<Value>(const std::string&)> transform = {};
};

/// How an option is declared, besides its field.
template <class Field>
struct OptionSpec {
  using Value = typename FieldShape<Field>::Value;

  ArgumentHelp help = {};
  NameSpecification name = {};
  std::optional<Field> defaultValue = {};
  /// Makes the value one that may be left out; the option alone then stands for this.
  std::optional<Value> defaultAsFlag = {};
  typename FieldShape<Field>::OptionStrategy parsing = {};
  CompletionKind completion = {};
  std::function<std::optional<Value>(const std::string&)> transform = {};
};

enum class FlagInversion { prefixedNo, prefixedEnableDisable };

/// How a Boolean flag is declared. `inversion` and the two fields behind it belong together.
struct FlagSpec {
  ArgumentHelp help = {};
  NameSpecification name = {};
  std::optional<FlagInversion> inversion = {};
  FlagExclusivity exclusivity = FlagExclusivity::exclusive;
  std::optional<bool> defaultValue = {};
};

/// One flag of an enumerated set: the value it stands for, its case's name, and how it is called and
/// explained.
template <class Value>
struct FlagCase {
  Value value;
  std::string caseName;
  NameSpecification name = {};
  ArgumentHelp help = {};
};

template <class Value>
struct EnumeratedFlagSpec {
  std::vector<FlagCase<Value>> cases;
  FlagExclusivity exclusivity = FlagExclusivity::exclusive;
  std::optional<Value> defaultValue = {};
  ArgumentHelp help = {};
};

/// An option group: its title makes it a section of its own in help.
struct GroupSpec {
  std::string title = {};
  Visibility visibility = Visibility::default_;
};

namespace detail {

/// The two name lists of an inverted flag: those that set and those that clear it.
std::pair<std::vector<Name>, std::vector<Name>> invertedNames(std::string_view key,
                                                              const NameSpecification& names,
                                                              FlagInversion inversion);

/// Fills in all that a definition takes from its declaration whatever the field's type.
ArgumentDefinition::Help makeHelp(const ArgumentHelp& help, const GroupSpec& group);

[[noreturn]] void raiseUnableToParse(const InputKey& key, const ParsedValue& given,
                                     std::optional<std::string> reason = {});
[[noreturn]] void raiseNoValue(const InputKey& key);

template <class Value>
Value converted(const InputKey& key, const ParsedValue& given,
                const std::function<std::optional<Value>(const std::string&)>& transform) {
  std::optional<Value> value;
  try {
    if (transform) {
      value = transform(given.text());
    } else if constexpr (requires { ArgumentValue<Value>::parse(given.text()); }) {
      value = ArgumentValue<Value>::parse(given.text());
    }
  } catch (const std::exception& error) {
    raiseUnableToParse(key, given, error.what());
  }
  if (!value) raiseUnableToParse(key, given);
  return *std::move(value);
}

template <class Value>
std::string defaultText(const Value& value) {
  if constexpr (requires { ArgumentValue<Value>::text(value); }) {
    return ArgumentValue<Value>::text(value);
  } else {
    return {};
  }
}
template <class Value>
std::string defaultText(const std::optional<Value>& value) {
  return value ? defaultText(*value) : std::string();
}
template <class Value>
std::string defaultText(const std::vector<Value>& values) {
  std::string result;
  for (const Value& value : values) result.append(result.empty() ? "" : ", ").append(defaultText(value));
  return result;
}

/// Adds the fixed choices of an enumeration to a definition that takes one.
template <class Value>
void describeValues(ArgumentDefinition& definition) {
  if constexpr (EnumeratedArgument<Value>) {
    std::vector<std::pair<std::string, std::string>> described;
    bool anyDescribed = false;
    for (const auto& each : EnumeratedValues<Value>::values()) {
      definition.help.allValueStrings.push_back(each.name);
      described.emplace_back(each.name, each.description);
      anyDescribed = anyDescribed || !each.description.empty();
    }
    if (anyDescribed) definition.help.discussion.values = std::move(described);
    if (definition.completion.kind == CompletionKind::Kind::default_) {
      definition.completion = CompletionKind::list(definition.help.allValueStrings);
    }
  }
}

}  // namespace detail

/// Names the fields of `Record`, each call one argument (or group of them), in the order that usage and help
/// show. `key` is the field's name.
template <class Record>
class Arguments {
 public:
  explicit Arguments(ArgumentSet& target)
      : Arguments(target, [](void* root) { return static_cast<Record*>(root); }, {}, {}) {}

  /// A positional.
  template <class Field>
  Arguments& argument(Field Record::*field, std::string_view key,
                      const ArgumentSpec<std::type_identity_t<Field>>& spec = {}) {
    using Shape = FieldShape<Field>;
    ArgumentDefinition definition = make(key, spec.help);
    definition.kind = ArgumentDefinition::Kind::positional;
    definition.update = ArgumentDefinition::Update::unary;
    definition.parsingStrategy = static_cast<ParsingStrategy>(spec.parsing);
    definition.completion = spec.completion;
    definition.help.isRepeating = Shape::isRepeating;
    definition.help.isOptional = (Shape::isOptional && !spec.atLeastOne) || spec.defaultValue.has_value();
    describe<Field>(definition, spec.defaultValue);
    definition.decode = decoder<Field>(definition, field, spec.defaultValue, {}, spec.transform);
    return add(std::move(definition));
  }

  /// An option, which takes a value.
  template <class Field>
  Arguments& option(Field Record::*field, std::string_view key,
                    const OptionSpec<std::type_identity_t<Field>>& spec = {}) {
    using Shape = FieldShape<Field>;
    ArgumentDefinition definition = make(key, spec.help);
    definition.names = spec.name.makeNames(key);
    definition.update =
        spec.defaultAsFlag ? ArgumentDefinition::Update::optionalUnary : ArgumentDefinition::Update::unary;
    definition.parsingStrategy = static_cast<ParsingStrategy>(spec.parsing);
    definition.completion = spec.completion;
    definition.help.isRepeating = Shape::isRepeating;
    definition.help.isOptional = Shape::isOptional || spec.defaultValue.has_value();
    describe<Field>(definition, spec.defaultValue);
    showDefault(definition, spec.defaultAsFlag);
    definition.decode =
        decoder<Field>(definition, field, spec.defaultValue, spec.defaultAsFlag, spec.transform);
    return add(std::move(definition));
  }

  /// A Boolean flag: a `bool`, or with an inversion also a `std::optional<bool>`.
  template <class Field>
  Arguments& flag(Field Record::*field, std::string_view key, const FlagSpec& spec = {}) {
    ArgumentDefinition definition = make(key, spec.help);
    definition.help.isOptional = !spec.inversion || spec.defaultValue || FieldShape<Field>::isOptional;
    definition.decode = [locate = locate, field, key = definition.key, spec](void* root,
                                                                             const ParsedElement* given) {
      Field& target = locate(root)->*field;
      if (given != nullptr && !given->values.empty()) {
        target = given->values.back().flagCase() != 0;
      } else if (spec.defaultValue) {
        target = *spec.defaultValue;
      } else if (spec.inversion && !FieldShape<Field>::isOptional) {
        detail::raiseNoValue(key);
      }
    };
    if (!spec.inversion) {
      definition.names = spec.name.makeNames(key);
      return add(std::move(definition));
    }
    definition.help.isComposite = true;
    definition.exclusivity = spec.exclusivity;
    ArgumentDefinition opposite = definition;
    opposite.decode = {};
    opposite.flagCase = 0;
    std::tie(definition.names, opposite.names) = detail::invertedNames(key, spec.name, *spec.inversion);
    if (spec.defaultValue) {
      (*spec.defaultValue ? definition : opposite).help.defaultValue =
          preferredName((*spec.defaultValue ? definition : opposite).names).synopsisString();
    }
    return add(std::move(definition)).add(std::move(opposite));
  }

  /// A flag that counts how often it is given.
  Arguments& countedFlag(int Record::*field, std::string_view key, const FlagSpec& spec = {}) {
    ArgumentDefinition definition = make(key, spec.help);
    definition.names = spec.name.makeNames(key);
    definition.help.isOptional = true;
    definition.help.isRepeating = true;
    definition.decode = [locate = locate, field](void* root, const ParsedElement* given) {
      locate(root)->*field = given != nullptr ? static_cast<int>(given->values.size()) : 0;
    };
    return add(std::move(definition));
  }

  /// A set of flags, one for each case, that fill one value: a `V`, a `std::optional<V>`, or a
  /// `std::vector<V>`, which keeps every one given.
  template <class Field>
  Arguments& enumeratedFlag(Field Record::*field, std::string_view key,
                            const EnumeratedFlagSpec<typename FieldShape<Field>::Value>& spec) {
    using Shape = FieldShape<Field>;
    int number = 0;
    for (const auto& flagCase : spec.cases) {
      ArgumentDefinition definition = make(key, flagCase.help.abstract.empty() ? spec.help : flagCase.help);
      definition.help.visibility =
          std::max({definition.help.visibility, spec.help.visibility, flagCase.help.visibility});
      definition.names = flagCase.name.makeNames(flagCase.caseName);
      definition.help.isComposite = true;
      definition.help.isOptional = Shape::isOptional || spec.defaultValue.has_value();
      definition.help.isRepeating = Shape::isRepeating;
      definition.exclusivity = Shape::isRepeating ? FlagExclusivity::chooseLast : spec.exclusivity;
      definition.flagCase = number;
      if (spec.defaultValue && *spec.defaultValue == flagCase.value) {
        definition.help.defaultValue = preferredName(definition.names).synopsisString();
      }
      if (number == 0) definition.decode = flagDecoder(definition.key, field, spec);
      ++number;
      add(std::move(definition));
    }
    return *this;
  }

  /// All arguments of an option group, a record with a `static void arguments(Arguments<Group>&)`.
  template <class Group>
  Arguments& group(Group Record::*field, std::string_view key, const GroupSpec& spec = {}) {
    auto path = keyPath;
    path.emplace_back(key);
    const GroupSpec inner{spec.title.empty() ? groupSpec.title : spec.title,
                          std::max(spec.visibility, groupSpec.visibility)};
    Arguments<Group> arguments(
        set, [outer = locate, field](void* root) { return &(outer(root)->*field); }, std::move(path), inner);
    Group::arguments(arguments);
    return *this;
  }

 private:
  template <class>
  friend class Arguments;
  using Locate = std::function<Record*(void*)>;

  Arguments(ArgumentSet& target, Locate find, std::vector<std::string> path, GroupSpec spec)
      : set(target), locate(std::move(find)), keyPath(std::move(path)), groupSpec(std::move(spec)) {}

  ArgumentDefinition make(std::string_view key, const ArgumentHelp& help) const {
    ArgumentDefinition definition;
    definition.key = {std::string(key), keyPath};
    definition.help = detail::makeHelp(help, groupSpec);
    return definition;
  }

  Arguments& add(ArgumentDefinition definition) {
    if (!definition.isPositional() && definition.names.empty()) {
      throw DeclarationError("The option or flag '" + definition.key.name + "' has no name.");
    }
    set.content.push_back(std::move(definition));
    return *this;
  }

  /// An empty default is not shown.
  template <class Value>
  static void showDefault(ArgumentDefinition& definition, const std::optional<Value>& value) {
    if (!value) return;
    if (std::string text = detail::defaultText(*value); !text.empty()) definition.help.defaultValue = text;
  }

  template <class Field>
  static void describe(ArgumentDefinition& definition, const std::optional<Field>& defaultValue) {
    showDefault(definition, defaultValue);
    detail::describeValues<typename FieldShape<Field>::Value>(definition);
  }

  template <class Field, class Value = typename FieldShape<Field>::Value>
  ArgumentDefinition::Decode decoder(
      const ArgumentDefinition& definition, Field Record::*field, const std::optional<Field>& defaultValue,
      const std::optional<Value>& defaultAsFlag,
      const std::function<std::optional<Value>(const std::string&)>& transform) const {
    return [locate = locate, field, key = definition.key, isOptional = definition.help.isOptional,
            defaultValue, defaultAsFlag, transform](void* root, const ParsedElement* given) {
      Field& target = locate(root)->*field;
      if (given == nullptr || given->values.empty()) {
        if (!isOptional) detail::raiseNoValue(key);
        if (defaultValue) target = *defaultValue;
        return;
      }
      // A number in place of a text is the option without its value.
      const auto convert = [&](const ParsedValue& value) {
        return defaultAsFlag && std::holds_alternative<int>(value.value)
                   ? *defaultAsFlag
                   : detail::converted<Value>(key, value, transform);
      };
      if constexpr (FieldShape<Field>::isRepeating) {
        target.clear();
        for (const ParsedValue& value : given->values) target.push_back(convert(value));
      } else {
        target = convert(given->values.back());
      }
    };
  }

  template <class Field, class Spec>
  ArgumentDefinition::Decode flagDecoder(const InputKey& key, Field Record::*field, const Spec& spec) const {
    return [locate = locate, field, key, spec](void* root, const ParsedElement* given) {
      Field& target = locate(root)->*field;
      const auto valueOf = [&](const ParsedValue& value) {
        return spec.cases[static_cast<std::size_t>(value.flagCase())].value;
      };
      if (given != nullptr && !given->values.empty()) {
        if constexpr (FieldShape<Field>::isRepeating) {
          for (const ParsedValue& value : given->values) target.push_back(valueOf(value));
        } else {
          target = valueOf(given->values.back());
        }
      } else if constexpr (!FieldShape<Field>::isRepeating) {
        if (spec.defaultValue) {
          target = *spec.defaultValue;
        } else if (!FieldShape<Field>::isOptional) {
          detail::raiseNoValue(key);
        }
      }
    };
  }

  ArgumentSet& set;
  Locate locate;
  std::vector<std::string> keyPath;
  GroupSpec groupSpec;
};

}  // namespace ArgumentParser
