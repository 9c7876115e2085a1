// Numbers as people type them.
#pragma once

#include <charconv>
#include <optional>
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

}  // namespace text
