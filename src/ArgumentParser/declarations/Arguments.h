// The builder with which a command names its arguments, in order, by pointer to member.
#pragma once

#include <algorithm>
#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "ArgumentParser/declarations/ArgumentSpecs.h"
#include "ArgumentParser/declarations/Decoding.h"
#include "ArgumentParser/declarations/Exits.h"

namespace ArgumentParser {

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

template <class Record>
void* makeRecord() {
  return new Record();
}
template <class Record>
void destroyRecord(void* fields) {
  delete static_cast<Record*>(fields);
}

/// A new record, in which the fields have their initial values; made only when a default is looked up.
class InitialRecord {
 public:
  InitialRecord(void* (*makeRecord)(), void (*destroyRecord)(void*))
      : make(makeRecord), destroy(destroyRecord) {}
  InitialRecord(const InitialRecord&) = delete;
  InitialRecord& operator=(const InitialRecord&) = delete;
  ~InitialRecord();
  void* fields();

 private:
  void* (*make)();
  void (*destroy)(void*);
  void* record = nullptr;
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

/// What a builder does whatever the type of its record. It stands apart, and is compiled once, so that a file
/// with declarations compiles quickly and stays small.
class ArgumentsBase {
 public:
  ArgumentsBase(const ArgumentsBase&) = delete;

 protected:
  ArgumentsBase(ArgumentSet& target, InitialRecord& initial, std::vector<std::string> path, GroupSpec spec);
  ~ArgumentsBase();

  /// A definition of the field `key` with that help and these names, if it has any.
  ArgumentDefinition make(std::string_view key, const ArgumentHelp& help) const;
  ArgumentDefinition make(std::string_view key, const ArgumentHelp& help,
                          const NameSpecification& names) const;
  void add(ArgumentDefinition&& definition);
  /// Adds the two sides of an inverted flag. `shown` is the side that is the default, if one is.
  void addInverted(ArgumentDefinition setting, std::string_view key, const FlagSpec& spec,
                   std::optional<bool> shown);

  /// Raise `DeclarationError` for a flag, or for any argument, whose declaration contradicts itself.
  static void checkFlag(std::string_view key, const FlagSpec& spec);
  static void checkNames(std::string_view key, const NameSpecification& names);
  static void checkDefaults(std::string_view key, bool hasValue, bool isDefaulted);

  ArgumentSet& set;
  InitialRecord& fresh;
  std::vector<std::string> keyPath;
  GroupSpec groupSpec;
};

}  // namespace detail

/// Names the fields of `Record`, each call one argument (or group of them), in the order that usage and help
/// show. `key` is the field's name. A field may belong to a base of the record. What a declaration gets wrong
/// raises `DeclarationError`.
template <class Record>
class Arguments : detail::ArgumentsBase {
 public:
  Arguments(ArgumentSet& target, detail::InitialRecord& initial)
      : Arguments(target, initial, [](void* root) { return static_cast<Record*>(root); }, {}, {}) {}

  /// A positional.
  template <class Field, class Owner>
  Arguments& argument(Field Owner::*field, std::string_view key,
                      const ArgumentSpec<std::type_identity_t<Field>>& spec = {}) {
    using Shape = FieldShape<Field>;
    checkDefaults(key, spec.defaultValue.has_value(), spec.defaulted);
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
    add(std::move(definition));
    return *this;
  }

  /// An option, which takes a value.
  template <class Field, class Owner>
  Arguments& option(Field Owner::*field, std::string_view key,
                    const OptionSpec<std::type_identity_t<Field>>& spec = {}) {
    using Shape = FieldShape<Field>;
    checkNames(key, spec.name);
    checkDefaults(key, spec.defaultValue.has_value(), spec.defaulted);
    if (set.onlyChecks) return *this;
    const std::optional<Field> initial = defaultOf(field, spec);
    ArgumentDefinition definition = make(key, spec.help, spec.name);
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
    add(std::move(definition));
    return *this;
  }

  /// A Boolean flag: a `bool` or a `std::optional<bool>`.
  template <class Field, class Owner>
  Arguments& flag(Field Owner::*field, std::string_view key, const FlagSpec& spec = {}) {
    static_assert(
        std::same_as<Field, bool> || std::same_as<Field, std::optional<bool>>,
        "A flag's field is a bool or a std::optional<bool>: declare a text or number with option, a count "
        "with countedFlag, and a choice with enumeratedFlag.");
    checkFlag(key, spec);
    if (set.onlyChecks) return *this;
    const std::optional<Field> initial = defaultOf(field, spec);
    ArgumentDefinition definition = spec.inversion ? make(key, spec.help) : make(key, spec.help, spec.name);
    definition.help.isOptional = !spec.inversion || initial || FieldShape<Field>::isOptional;
    const detail::Conversion<bool> isSet = [](const ParsedValue& value) { return value.flagCase() != 0; };
    definition.decode = detail::decoder<Field>(locator(field), definition, flagDefault<Field>(spec), isSet);
    if (spec.inversion) {
      addInverted(std::move(definition), key, spec, initial ? std::optional<bool>(*initial) : std::nullopt);
    } else {
      add(std::move(definition));
    }
    return *this;
  }

  /// A flag that counts how often it is given.
  template <class Field, class Owner>
  Arguments& countedFlag(Field Owner::*field, std::string_view key, const FlagSpec& spec = {}) {
    static_assert(std::same_as<Field, int>, "The field of a flag that counts is an int.");
    checkNames(key, spec.name);
    if (set.onlyChecks) return *this;
    ArgumentDefinition definition = make(key, spec.help, spec.name);
    definition.help.isOptional = true;
    definition.help.isRepeating = true;
    definition.decode = [locate = locator(field)](void* root, const ParsedElement* given) {
      *locate(root) = given != nullptr ? static_cast<int>(given->values.size()) : 0;
    };
    add(std::move(definition));
    return *this;
  }

  /// A set of flags, one for each case, that fill one value: a `V`, a `std::optional<V>`, or a
  /// `std::vector<V>`, which keeps every one given.
  template <class Field, class Owner>
  Arguments& enumeratedFlag(Field Owner::*field, std::string_view key,
                            const EnumeratedFlagSpec<std::type_identity_t<Field>>& spec) {
    using Shape = FieldShape<Field>;
    using Value = typename Shape::Value;
    checkDefaults(key, spec.defaultValue.has_value(), spec.defaulted);
    for (const auto& flagCase : spec.cases) checkNames(flagCase.caseName, flagCase.name);
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
      : ArgumentsBase(target, initial, std::move(path), std::move(spec)), locate(std::move(find)) {}

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

  Locate locate;
};

}  // namespace ArgumentParser
