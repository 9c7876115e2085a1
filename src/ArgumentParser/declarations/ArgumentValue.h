// How texts of the command line become values of a field's type, and back for help texts.
#pragma once

#include <charconv>
#include <concepts>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "text/Number.h"

namespace ArgumentParser {

/// One value of an enumeration: how it is typed, and what help says of it.
template <class Enumeration>
struct EnumeratedValue {
  Enumeration value;
  std::string name;
  std::string description = {};
};

/// Specialise with `static std::vector<EnumeratedValue<E>> values()` to make the enumeration E an argument
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

template <>
struct ArgumentValue<std::string> {
  static std::optional<std::string> parse(const std::string& text) { return text; }
  static std::string text(const std::string& value) { return value; }
};

template <class Integer>
requires std::integral<Integer> &&(!std::same_as<Integer, bool>)struct ArgumentValue<Integer> {
  static std::optional<Integer> parse(const std::string& digits) { return text::decimal<Integer>(digits); }
  static std::string text(Integer value) { return std::to_string(value); }
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
    std::string_view rest = digits;
    if (rest.starts_with('+') && !rest.starts_with("+-")) rest.remove_prefix(1);
    Number value{};
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (end != rest.data() + rest.size() || rest.empty()) return std::nullopt;
    // Too large or too small for the type, but a number: the nearest value stands for it, an infinity
    // included.
    if (error == std::errc::result_out_of_range)
      return static_cast<Number>(std::strtod(digits.c_str(), nullptr));
    return error == std::errc{} ? std::optional(value) : std::nullopt;
  }
  /// Always with a fraction, so that it reads as a number that may have one: "15.0".
  static std::string text(Number value) {
    char buffer[64];
    std::string result(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
    if (result.find_first_not_of("-0123456789") == std::string::npos) result += ".0";
    return result;
  }
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
