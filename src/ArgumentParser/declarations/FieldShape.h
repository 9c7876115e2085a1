// What a field's type says of an argument: whether it may be left out or repeat, which strategies it can
// have, and which defaults.
#pragma once

#include <concepts>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "ArgumentParser/declarations/ArgumentDefinition.h"
#include "ArgumentParser/declarations/ArgumentValue.h"

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

}  // namespace ArgumentParser
