// A number of JSON and its texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace json {

/// Integers and floating-point numbers are kinds of their own, as what they print depends on it; an integer
/// is unsigned only if it does not fit a signed 64-bit one.
class JSONNumber {
 public:
  JSONNumber(std::int64_t value) : data(value) {}
  JSONNumber(std::uint64_t value) : data(value) {
    if (std::in_range<std::int64_t>(value)) data = static_cast<std::int64_t>(value);
  }
  JSONNumber(double value) : data(value) {}

  /// The number as a double.
  double real() const;

  /// The number if it is of the floating-point kind.
  std::optional<double> floatingPoint() const;

  /// The number cut to its integer part and clamped to 64 bits.
  std::int64_t integer() const;

  /// The number if it is a 64-bit integer exactly, of whichever kind.
  std::optional<std::int64_t> exactInteger() const;

  /// Whether the number is neither infinite nor NaN, which JSON has no text for.
  bool isFinite() const;

  /// Room for the text of any number.
  static constexpr std::size_t longestText = 310;

  /// Writes a finite number as JSON, at most `longestText` bytes, and returns their end: the shortest digits
  /// that read back the same, with an exponent below 1e-6 and from 1e21 on (as JavaScript has it: ECMA-262,
  /// Number::toString), but exact where they are an integer's.
  char* write(char* out) const;

  /// The same as a person reads it: a number without a fractional part in plain digits whatever its size, and
  /// no negative zero.
  std::string text() const;

  friend bool operator==(const JSONNumber& a, const JSONNumber& b) = default;

 private:
  char* write(char* out, double plainBelow) const;

  std::variant<std::int64_t, std::uint64_t, double> data;
};

}  // namespace json
