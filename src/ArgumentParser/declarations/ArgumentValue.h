// How texts of the command line become values of a field's type, and back for help texts.
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ArgumentParser {

/// One value of an enumeration: how it is typed, and what help says of it.
template <class Enumeration>
struct EnumeratedValue {
  Enumeration value;
  std::string name;
  std::string description = {};
};

/// Specialise it with `static std::vector<EnumeratedValue<E>> values()` to make the enumeration E an argument
/// type.
template <class Enumeration>
struct EnumeratedValues;

template <class Type>
concept EnumeratedArgument = requires {
  EnumeratedValues<Type>::values();
};

/// The conversion of a type. `parse` gives nothing for a text that is no such value; `text` is how help shows
/// a default. Specialise it for types of your own.
template <class Type>
struct ArgumentValue;

/// A type that has a conversion of its own.
template <class Type>
concept ConvertibleArgument = requires(const std::string& text) {
  { ArgumentValue<Type>::parse(text) } -> std::convertible_to<std::optional<Type>>;
};

namespace detail {

/// The integer that the digits are, in base 10 with an optional sign; nothing if it does not fit.
std::optional<std::int64_t> signedInteger(const std::string& digits);
std::optional<std::uint64_t> unsignedInteger(const std::string& digits);

/// The number that the digits are. A number that the type cannot hold becomes the nearest one it can, which
/// may be an infinity.
template <std::floating_point Number>
std::optional<Number> floatingPoint(const std::string& digits);
/// Always with a fraction ("15.0"), which shows that the value may have one.
template <std::floating_point Number>
std::string floatingPointText(Number value);

}  // namespace detail

template <>
struct ArgumentValue<std::string> {
  static std::optional<std::string> parse(const std::string& text) { return text; }
  static std::string text(const std::string& value) { return value; }
};

template <class Integer>
requires std::integral<Integer> &&(!std::same_as<Integer, bool>)struct ArgumentValue<Integer> {
  static std::optional<Integer> parse(const std::string& digits) {
    if constexpr (std::signed_integral<Integer>) {
      return narrowed(detail::signedInteger(digits));
    } else {
      return narrowed(detail::unsignedInteger(digits));
    }
  }
  static std::string text(Integer value) { return std::to_string(value); }

 private:
  template <class Wide>
  static std::optional<Integer> narrowed(std::optional<Wide> wide) {
    const auto value = static_cast<Integer>(wide.value_or(0));
    return wide && static_cast<Wide>(value) == *wide ? std::optional(value) : std::nullopt;
  }
};

template <>
struct ArgumentValue<bool> {
  static std::optional<bool> parse(const std::string& text) {
    if (text != "true" && text != "false") return std::nullopt;
    return text == "true";
  }
  static std::string text(bool value) { return value ? "true" : "false"; }
};

template <std::floating_point Number>
struct ArgumentValue<Number> {
  static std::optional<Number> parse(const std::string& digits) {
    return detail::floatingPoint<Number>(digits);
  }
  static std::string text(Number value) { return detail::floatingPointText(value); }
};

template <EnumeratedArgument Type>
struct ArgumentValue<Type> {
  static std::optional<Type> parse(const std::string& text) {
    for (const auto& each : EnumeratedValues<Type>::values()) {
      if (each.name == text) return each.value;
    }
    return std::nullopt;
  }
  static std::string text(const Type& value) {
    for (const auto& each : EnumeratedValues<Type>::values()) {
      if (each.value == value) return each.name;
    }
    return {};
  }
};

}  // namespace ArgumentParser
