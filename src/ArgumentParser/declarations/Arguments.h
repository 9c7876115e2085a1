// The builder with which a command names its arguments, in order, by pointer to member.
#pragma once

#include <algorithm>
#include <concepts>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
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
/// A positional of one value has no choice.
enum class SingleArgumentParsingStrategy { next = static_cast<int>(ParsingStrategy::default_) };

namespace detail {

template <class>
inline constexpr bool never = false;

}  // namespace detail

/// The forms that an option or positional of values can have, from its field's type: `T` (required unless it
/// has a default), `std::optional<T>`, `std::vector<T>` (repeating), `std::optional<std::vector<T>>` (nothing
/// if it is not given at all).
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

namespace detail {

/// A strategy of the one kind that suits the field.
template <class Strategy>
struct StrategyChoice {
  constexpr StrategyChoice() = default;
  constexpr StrategyChoice(Strategy choice) : value(static_cast<ParsingStrategy>(choice)) {}
  template <class Other>
  requires(!std::same_as<Other, Strategy> &&
           !std::same_as<Other, StrategyChoice>) constexpr StrategyChoice(Other) {
    static_assert(
        never<Other>,
        "This is no parsing strategy for such a field: a single option takes a "
        "SingleValueParsingStrategy, a repeated one an ArrayParsingStrategy, a repeated positional an "
        "ArgumentArrayParsingStrategy.");
  }

  ParsingStrategy value = ParsingStrategy::default_;
};

/// Whether a default of that type keeps its meaning in the field: a text does not become a Boolean, nor 2.5
/// an integer.
template <class Given, class Field>
concept FitsField = std::is_convertible_v<Given, std::optional<Field>> &&
    (!std::is_arithmetic_v<typename FieldShape<Field>::Value> ||
     !(std::is_arithmetic_v<std::decay_t<Given>> || std::is_pointer_v<std::decay_t<Given>>) ||
     (std::same_as<std::decay_t<Given>, bool> == std::same_as<typename FieldShape<Field>::Value, bool> &&
      !(std::is_floating_point_v<std::decay_t<Given>> &&
        !std::is_floating_point_v<typename FieldShape<Field>::Value>)));

/// A default for a field, or none.
template <class Field>
struct DefaultValue : std::optional<Field> {
  DefaultValue() = default;
  // The requirement keeps this from being taken for a copy or a move.
  template <class Given>
  requires(!std::same_as<std::decay_t<Given>, DefaultValue>)
      // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): the check does not read requirements
      DefaultValue(Given&& given)
      : std::optional<Field>(checked(std::forward<Given>(given))) {}

 private:
  template <class Given>
  static std::optional<Field> checked(Given&& given) {
    static_assert(FitsField<Given, Field>, "A default has the type of the field, or of its values.");
    if constexpr (FitsField<Given, Field>) {
      return std::forward<Given>(given);
    } else {
      return std::nullopt;
    }
  }
};

/// The default of several flags that fill a list: the list, or the one value in it.
template <class Value>
struct DefaultValues : std::optional<std::vector<Value>> {
  DefaultValues() = default;
  DefaultValues(Value value) : std::optional<std::vector<Value>>(std::vector<Value>{std::move(value)}) {}
  DefaultValues(std::vector<Value> values) : std::optional<std::vector<Value>>(std::move(values)) {}
};

template <class Field>
struct EnumeratedDefault {
  using Type = DefaultValue<Field>;
};
template <class Value>
struct EnumeratedDefault<std::vector<Value>> {
  using Type = DefaultValues<Value>;
};

template <class Value>
using Transform = std::function<std::optional<Value>(const std::string&)>;

/// What a declaration without a transform passes; the type must then have a conversion of its own.
template <class Value>
Transform<Value> ownConversion() {
  static_assert(ConvertibleArgument<Value>,
                "There is no conversion from text to the type of this argument: specialise ArgumentValue or "
                "EnumeratedValues for it, or give the argument a .transform.");
  return {};
}

}  // namespace detail

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
  detail::DefaultValue<Field> defaultValue = {};
  bool atLeastOne = false;  ///< a repeating one that must be given
  detail::StrategyChoice<typename FieldShape<Field>::ArgumentStrategy> parsing = {};
  CompletionKind completion = {};
  /// Converts a text in place of the type's own conversion: nothing for a text that is no such value; what it
  /// throws is shown after the error.
  detail::Transform<Value> transform = detail::ownConversion<Value>();
  bool defaulted = false;  ///< the field's value in a new record is the default
};

/// How an option is declared, besides its field.
template <class Field>
struct OptionSpec {
  using Value = typename FieldShape<Field>::Value;

  ArgumentHelp help = {};
  NameSpecification name = {};
  detail::DefaultValue<Field> defaultValue = {};
  /// Lets the value be left out: the option alone then means this.
  detail::DefaultValue<Value> defaultAsFlag = {};
  detail::StrategyChoice<typename FieldShape<Field>::OptionStrategy> parsing = {};
  CompletionKind completion = {};
  detail::Transform<Value> transform = detail::ownConversion<Value>();
  bool atLeastOne = false;  ///< a repeating one that must be given
  bool defaulted = false;   ///< the field's value in a new record is the default
};

enum class FlagInversion { prefixedNo, prefixedEnableDisable };

/// How a Boolean flag is declared. `inversion` and the two fields after it belong together.
struct FlagSpec {
  ArgumentHelp help = {};
  NameSpecification name = {};
  std::optional<FlagInversion> inversion = {};
  FlagExclusivity exclusivity = FlagExclusivity::exclusive;
  detail::DefaultValue<bool> defaultValue = {};
  bool defaulted = false;  ///< the field's value in a new record is the default
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

template <class Field>
struct EnumeratedFlagSpec {
  std::vector<FlagCase<typename FieldShape<Field>::Value>> cases;
  FlagExclusivity exclusivity = FlagExclusivity::exclusive;
  typename detail::EnumeratedDefault<Field>::Type defaultValue = {};
  ArgumentHelp help = {};
  bool defaulted = false;  ///< the field's value in a new record is the default
};

/// An option group: its title makes it a section of its own in help.
struct GroupSpec {
  std::string title = {};
  Visibility visibility = Visibility::default_;
};

/// The record of a command further up on the line, for a command that wants its fields:
/// `ParentCommand<Zoo> zoo;`, named with `it.parent(&Feed::zoo)`. Set when `validate` and `run` are called.
template <class Command>
class ParentCommand {
 public:
  ParentCommand() = default;
  explicit ParentCommand(std::shared_ptr<const Command> found) : record(std::move(found)) {}
  /// Raises `DeclarationError` for one that no parsing has set.
  const Command& operator*() const {
    if (!record) throw DeclarationError("Can't read a value from a parsable command that was not parsed.");
    return *record;
  }
  const Command* operator->() const { return &**this; }

 private:
  std::shared_ptr<const Command> record;
};

namespace detail {

/// A new record, in which the fields have their initial values; made only when a default is looked up.
class InitialRecord {
 public:
  virtual ~InitialRecord() = default;
  virtual void* fields() = 0;
};
template <class Record>
class InitialRecordOf final : public InitialRecord {
 public:
  void* fields() override { return record ? &*record : &record.emplace(); }

 private:
  std::optional<Record> record;
};

/// The unqualified name of a type, as the compiler writes it.
template <class Type>
constexpr std::string_view unqualifiedTypeName() {
  std::string_view name = __PRETTY_FUNCTION__;
  name = name.substr(name.find("Type = ") + 7);
  name = name.substr(0, name.find_first_of(";]"));
  return name.substr(name.rfind(':') + 1);
}
template <class Type>
inline constexpr std::string_view typeName = unqualifiedTypeName<Type>();

/// An address that is different for each type.
template <class Type>
inline constexpr char typeMark = 0;

/// The two name lists of an inverted flag: those that set and those that clear it.
std::pair<std::vector<Name>, std::vector<Name>> invertedNames(std::string_view key,
                                                              const NameSpecification& names,
                                                              FlagInversion inversion);

/// The parts of a definition that do not depend on the field's type.
ArgumentDefinition::Help makeHelp(const ArgumentHelp& help, const GroupSpec& group);

/// Raise `DeclarationError` for a flag, or for any argument, whose declaration contradicts itself.
void checkFlag(std::string_view key, const FlagSpec& spec);
void checkNames(std::string_view key, const NameSpecification& names);
void checkDefaults(std::string_view key, bool hasValue, bool isDefaulted);

[[noreturn]] void raiseUnableToParse(const InputKey& key, const ParsedValue& given,
                                     std::optional<std::string> reason = {});
[[noreturn]] void raiseNoValue(const InputKey& key);

template <class Value>
Value converted(const InputKey& key, const ParsedValue& given, const Transform<Value>& transform) {
  std::optional<Value> value;
  try {
    if (transform) {
      value = transform(given.text());
    } else if constexpr (ConvertibleArgument<Value>) {
      value = ArgumentValue<Value>::parse(given.text());
    }
  } catch (const std::bad_alloc&) {
    throw;
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
/// Whether a default holds the value, as the field itself or as one of several.
template <class Field, class Value>
bool holds(const Field& field, const Value& value) {
  if constexpr (std::same_as<Field, Value>) {
    return field == value;
  } else if constexpr (requires { field.has_value(); }) {
    return field && holds(*field, value);
  } else {
    return std::find(field.begin(), field.end(), value) != field.end();
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

template <class Value>
using Conversion = std::function<Value(const ParsedValue&)>;

/// Makes a value of what was typed; the option without its value stands for `defaultAsFlag`.
template <class Value>
Conversion<Value> conversion(const InputKey& key, const std::optional<Value>& defaultAsFlag,
                             const Transform<Value>& transform) {
  return [key, defaultAsFlag, transform](const ParsedValue& given) {
    // A flag's number in place of a text means the option without a value.
    return defaultAsFlag && std::holds_alternative<int>(given.value)
               ? *defaultAsFlag
               : converted<Value>(key, given, transform);
  };
}

/// Stores the values of a field, wherever its record has it. If none is given, the field gets the default, or
/// stays as it is.
template <class Field>
ArgumentDefinition::Decode decoder(std::function<Field*(void*)> locate, const ArgumentDefinition& definition,
                                   std::optional<Field> otherwise,
                                   Conversion<typename FieldShape<Field>::Value> convert) {
  return [locate = std::move(locate), key = definition.key, isOptional = definition.help.isOptional,
          otherwise = std::move(otherwise),
          convert = std::move(convert)](void* root, const ParsedElement* given) {
    Field& target = *locate(root);
    if (given == nullptr || given->values.empty()) {
      if (!isOptional) raiseNoValue(key);
      if (otherwise) target = *otherwise;
    } else if constexpr (FieldShape<Field>::isRepeating) {
      std::vector<typename FieldShape<Field>::Value> values;
      for (const ParsedValue& value : given->values) values.push_back(convert(value));
      target = std::move(values);
    } else {
      target = convert(given->values.back());
    }
  };
}

}  // namespace detail

/// Names the fields of `Record`, each call one argument (or group of them), in the order that usage and help
/// show. `key` is the field's name. A field may belong to a base of the record. What a declaration gets wrong
/// raises `DeclarationError`.
template <class Record>
class Arguments {
 public:
  Arguments(ArgumentSet& target, detail::InitialRecord& initial)
      : Arguments(target, initial, [](void* root) { return static_cast<Record*>(root); }, {}, {}) {}

  /// A positional.
  template <class Field, class Owner>
  Arguments& argument(Field Owner::*field, std::string_view key,
                      const ArgumentSpec<std::type_identity_t<Field>>& spec = {}) {
    using Shape = FieldShape<Field>;
    detail::checkDefaults(key, spec.defaultValue.has_value(), spec.defaulted);
    if (set.onlyChecks) return *this;
    const std::optional<Field> initial = defaultOf(field, spec);
    ArgumentDefinition definition = make(key, spec.help);
    definition.kind = ArgumentDefinition::Kind::positional;
    definition.update = ArgumentDefinition::Update::unary;
    definition.parsingStrategy = spec.parsing.value;
    definition.completion = spec.completion;
    definition.help.isRepeating = Shape::isRepeating;
    definition.help.isOptional = (Shape::isOptional && !spec.atLeastOne) || initial.has_value();
    describe<Field>(definition, initial);
    definition.decode =
        detail::decoder<Field>(locator(field), definition, spec.defaultValue,
                               detail::conversion<typename Shape::Value>(definition.key, {}, spec.transform));
    return add(std::move(definition));
  }

  /// An option, which takes a value.
  template <class Field, class Owner>
  Arguments& option(Field Owner::*field, std::string_view key,
                    const OptionSpec<std::type_identity_t<Field>>& spec = {}) {
    using Shape = FieldShape<Field>;
    detail::checkNames(key, spec.name);
    detail::checkDefaults(key, spec.defaultValue.has_value(), spec.defaulted);
    if (set.onlyChecks) return *this;
    const std::optional<Field> initial = defaultOf(field, spec);
    ArgumentDefinition definition = make(key, spec.help);
    definition.names = spec.name.makeNames(key);
    definition.update =
        spec.defaultAsFlag ? ArgumentDefinition::Update::optionalUnary : ArgumentDefinition::Update::unary;
    definition.parsingStrategy = spec.parsing.value;
    definition.completion = spec.completion;
    definition.help.isRepeating = Shape::isRepeating;
    definition.help.isOptional = (Shape::isOptional && !spec.atLeastOne) || initial.has_value();
    describe<Field>(definition, initial);
    showDefault(definition, spec.defaultAsFlag);
    definition.decode = detail::decoder<Field>(
        locator(field), definition, spec.defaultValue,
        detail::conversion<typename Shape::Value>(definition.key, spec.defaultAsFlag, spec.transform));
    return add(std::move(definition));
  }

  /// A Boolean flag: a `bool` or a `std::optional<bool>`.
  template <class Field, class Owner>
  Arguments& flag(Field Owner::*field, std::string_view key, const FlagSpec& spec = {}) {
    static_assert(
        std::same_as<Field, bool> || std::same_as<Field, std::optional<bool>>,
        "A flag's field is a bool or a std::optional<bool>: declare a text or number with option, a count "
        "with countedFlag, and a choice with enumeratedFlag.");
    detail::checkFlag(key, spec);
    if (set.onlyChecks) return *this;
    const std::optional<Field> initial = defaultOf(field, spec);
    ArgumentDefinition definition = make(key, spec.help);
    definition.help.isOptional = !spec.inversion || initial || FieldShape<Field>::isOptional;
    const detail::Conversion<bool> isSet = [](const ParsedValue& value) { return value.flagCase() != 0; };
    definition.decode = detail::decoder<Field>(locator(field), definition, flagDefault<Field>(spec), isSet);
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
    if (initial && std::optional<bool>(*initial)) {
      ArgumentDefinition& holder = *std::optional<bool>(*initial) ? definition : opposite;
      holder.help.defaultValue = preferredName(holder.names).synopsisString();
    }
    return add(std::move(definition)).add(std::move(opposite));
  }

  /// A flag that counts how often it is given.
  template <class Field, class Owner>
  Arguments& countedFlag(Field Owner::*field, std::string_view key, const FlagSpec& spec = {}) {
    static_assert(std::same_as<Field, int>, "The field of a flag that counts is an int.");
    detail::checkNames(key, spec.name);
    if (set.onlyChecks) return *this;
    ArgumentDefinition definition = make(key, spec.help);
    definition.names = spec.name.makeNames(key);
    definition.help.isOptional = true;
    definition.help.isRepeating = true;
    definition.decode = [locate = locator(field)](void* root, const ParsedElement* given) {
      *locate(root) = given != nullptr ? static_cast<int>(given->values.size()) : 0;
    };
    return add(std::move(definition));
  }

  /// A set of flags, one for each case, that fill one value: a `V`, a `std::optional<V>`, or a
  /// `std::vector<V>`, which keeps every one given.
  template <class Field, class Owner>
  Arguments& enumeratedFlag(Field Owner::*field, std::string_view key,
                            const EnumeratedFlagSpec<std::type_identity_t<Field>>& spec) {
    using Shape = FieldShape<Field>;
    using Value = typename Shape::Value;
    detail::checkDefaults(key, spec.defaultValue.has_value(), spec.defaulted);
    for (const auto& flagCase : spec.cases) detail::checkNames(flagCase.caseName, flagCase.name);
    if (set.onlyChecks) return *this;
    const std::optional<Field> initial = defaultOf(field, spec);
    int number = 0;
    for (const auto& flagCase : spec.cases) {
      ArgumentDefinition definition = make(key, flagCase.help.abstract.empty() ? spec.help : flagCase.help);
      definition.help.visibility =
          std::max({definition.help.visibility, spec.help.visibility, flagCase.help.visibility});
      definition.names = flagCase.name.makeNames(flagCase.caseName);
      definition.help.isComposite = true;
      definition.help.isOptional = Shape::isOptional || initial.has_value();
      definition.help.isRepeating = Shape::isRepeating;
      definition.exclusivity = Shape::isRepeating ? FlagExclusivity::chooseLast : spec.exclusivity;
      definition.flagCase = number;
      if (initial && detail::holds(*initial, flagCase.value)) {
        definition.help.defaultValue = preferredName(definition.names).synopsisString();
      }
      if (number == 0) {
        std::vector<Value> values;
        for (const auto& each : spec.cases) values.push_back(each.value);
        const detail::Conversion<Value> valueOf = [values](const ParsedValue& value) {
          return values[static_cast<std::size_t>(value.flagCase())];
        };
        definition.decode = detail::decoder<Field>(locator(field), definition, spec.defaultValue, valueOf);
      }
      ++number;
      add(std::move(definition));
    }
    return *this;
  }

  /// All arguments of an option group, a record with a `static void arguments(Arguments<Group>&)`.
  template <class Group, class Owner>
  Arguments& group(Group Owner::*field, std::string_view key, const GroupSpec& spec = {}) {
    if (set.onlyChecks) {
      if (!set.isChecked(&detail::typeMark<Group>)) {
        Arguments<Group> arguments(set, fresh);
        Group::arguments(arguments);
      }
      return *this;
    }
    auto path = keyPath;
    path.emplace_back(key);
    const GroupSpec inner{spec.title.empty() ? groupSpec.title : spec.title,
                          std::max(spec.visibility, groupSpec.visibility)};
    Arguments<Group> arguments(
        set, fresh, [outer = locate, own = member(field)](void* root) { return &(outer(root)->*own); },
        std::move(path), inner);
    Group::arguments(arguments);
    return *this;
  }

  /// The record of a command further up; a line without one ends with an error.
  template <class Command, class Owner>
  Arguments& parent(ParentCommand<Command> Owner::*field) {
    if (set.onlyChecks) return *this;
    set.parents.push_back(
        {reinterpret_cast<CommandIdentity>(&Command::declaration), std::string(detail::typeName<Command>),
         [locate = locate, own = member(field)](void* root, std::shared_ptr<const void> found) {
           locate(root)->*own =
               ParentCommand<Command>(std::static_pointer_cast<const Command>(std::move(found)));
         }});
    return *this;
  }

 private:
  template <class>
  friend class Arguments;
  using Locate = std::function<Record*(void*)>;

  Arguments(ArgumentSet& target, detail::InitialRecord& initial, Locate find, std::vector<std::string> path,
            GroupSpec spec)
      : set(target),
        fresh(initial),
        locate(std::move(find)),
        keyPath(std::move(path)),
        groupSpec(std::move(spec)) {}

  template <class Field, class Owner>
  static Field Record::*member(Field Owner::*field) {
    static_assert(std::is_base_of_v<Owner, Record>,
                  "The field is no member of the record whose arguments are declared, nor of a base of it.");
    return field;
  }

  /// The declared default, or the value that the field has from the start if it counts as one.
  template <class Field, class Owner, class Spec>
  std::optional<Field> defaultOf(Field Owner::*field, const Spec& spec) const {
    if (spec.defaulted) return locate(fresh.fields())->*member(field);
    if (spec.defaultValue) return Field(*spec.defaultValue);
    return std::nullopt;
  }

  template <class Field>
  static std::optional<Field> flagDefault(const FlagSpec& spec) {
    return spec.defaultValue ? std::optional<Field>(*spec.defaultValue) : std::nullopt;
  }

  ArgumentDefinition make(std::string_view key, const ArgumentHelp& help) const {
    ArgumentDefinition definition;
    definition.key = {std::string(key), keyPath};
    definition.help = detail::makeHelp(help, groupSpec);
    return definition;
  }

  Arguments& add(ArgumentDefinition definition) {
    set.content.push_back(std::move(definition));
    return *this;
  }

  /// An empty default is not shown in help.
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

  /// Finds the field in the record of the command.
  template <class Field, class Owner>
  std::function<Field*(void*)> locator(Field Owner::*field) const {
    return [locate = locate, own = member(field)](void* root) { return &(locate(root)->*own); };
  }

  ArgumentSet& set;
  detail::InitialRecord& fresh;
  Locate locate;
  std::vector<std::string> keyPath;
  GroupSpec groupSpec;
};

}  // namespace ArgumentParser
