#include "json/JSONNumber.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace json {
namespace {

/// The shortest digits that read back the same, plain from 1e-6 to below `plainBelow`.
char* writeFloat(char* out, double number, double plainBelow) {
  char* const limit = out + JSONNumber::longestText;
  const double size = std::abs(number);
  if (size == 0 || (size >= 1e-6 && size < plainBelow))
    return std::to_chars(out, limit, number, std::chars_format::fixed).ptr;
  char* end = std::to_chars(out, limit, number, std::chars_format::scientific).ptr;
  // An exponent has two digits at least here, and one elsewhere: 1e-07.
  if (end[-3] == '-' && end[-2] == '0') {
    end[-2] = end[-1];
    --end;
  }
  return end;
}

}  // namespace

double JSONNumber::real() const {
  return std::visit([](auto value) { return static_cast<double>(value); }, data);
}

std::optional<double> JSONNumber::floatingPoint() const {
  const auto* value = std::get_if<double>(&data);
  return value != nullptr ? std::optional(*value) : std::nullopt;
}

std::int64_t JSONNumber::integer() const {
  using Limits = std::numeric_limits<std::int64_t>;
  if (const auto* value = std::get_if<std::int64_t>(&data)) return *value;
  const double value = real();
  if (value >= 0x1p63) return Limits::max();
  if (value < -0x1p63) return Limits::min();
  return std::isnan(value) ? 0 : static_cast<std::int64_t>(value);
}

std::optional<std::int64_t> JSONNumber::exactInteger() const {
  if (const auto* value = std::get_if<std::int64_t>(&data)) return *value;
  const auto* value = std::get_if<double>(&data);
  // 2^63 is what the largest integer rounds to.
  if (value == nullptr || *value >= 0x1p63 || static_cast<double>(integer()) != *value) return std::nullopt;
  return integer();
}

bool JSONNumber::isFinite() const {
  return std::isfinite(real());
}

char* JSONNumber::write(char* out, double plainBelow) const {
  if (const auto* value = std::get_if<double>(&data)) return writeFloat(out, *value, plainBelow);
  if (const auto* large = std::get_if<std::uint64_t>(&data))
    return std::to_chars(out, out + longestText, *large).ptr;
  return std::to_chars(out, out + longestText, integer()).ptr;
}

char* JSONNumber::write(char* out) const {
  return write(out, 1e21);
}

std::string JSONNumber::text() const {
  if (real() == 0) return "0";
  char digits[longestText];
  return {digits, write(digits, std::numeric_limits<double>::infinity())};
}

}  // namespace json
