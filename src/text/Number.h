// Numbers as people type them and as JSON writes them.
#pragma once

#include <charconv>
#include <concepts>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace text {

/// The integer that `digits` is, in base 10 with an optional sign; nothing if it holds anything else or does
/// not fit the type.
template <class Integer>
std::optional<Integer> decimal(std::string_view digits) {
  // from_chars does not accept a plus sign.
  if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
  Integer value{};
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
  return value;
}

/// The number that all of `digits` is: decimal with an optional minus, fraction and exponent, or "inf",
/// "infinity" or "nan" in any case; nothing if it is anything else. One beyond the type's range becomes an
/// infinity, one too small for it 0 or subnormal; all others are the nearest that the type holds. What
/// `std::from_chars` reads, which libc++ has for floating point from version 20 on.
template <std::floating_point Number>
std::optional<Number> floatingPoint(std::string_view digits) {
  // The function reads blanks, a plus and hexadecimal as well. Its decimal point is that of the locale, which
  // stays "C", as no program has called setlocale.
  const std::string_view size = digits.substr(digits.starts_with('-') ? 1 : 0);
  const bool isHexadecimal = size.starts_with("0x") || size.starts_with("0X");
  if (isHexadecimal || size.find_first_of("0123456789.iInN") != 0) return std::nullopt;
  const std::string terminated(digits);
  char* end = nullptr;
  Number value{};
  if constexpr (std::same_as<Number, float>) {
    value = std::strtof(terminated.c_str(), &end);
  } else if constexpr (std::same_as<Number, double>) {
    value = std::strtod(terminated.c_str(), &end);
  } else {
    value = std::strtold(terminated.c_str(), &end);
  }
  if (end != terminated.c_str() + terminated.size()) return std::nullopt;
  return value;
}

}  // namespace text
