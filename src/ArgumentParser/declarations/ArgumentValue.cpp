#include "ArgumentParser/declarations/ArgumentValue.h"

#include <charconv>
#include <string_view>

#include "text/Number.h"

namespace ArgumentParser::detail {

std::optional<std::int64_t> signedInteger(const std::string& digits) {
  return text::decimal<std::int64_t>(digits);
}

std::optional<std::uint64_t> unsignedInteger(const std::string& digits) {
  return text::decimal<std::uint64_t>(digits);
}

template <std::floating_point Number>
std::optional<Number> floatingPoint(const std::string& digits) {
  std::string_view unsignedOrNegative = digits;
  if (digits.starts_with('+') && !digits.starts_with("+-")) unsignedOrNegative.remove_prefix(1);
  return text::floatingPoint<Number>(unsignedOrNegative);
}

template <std::floating_point Number>
std::string floatingPointText(Number value) {
  char buffer[64];
  std::string result(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
  if (result.find_first_not_of("-0123456789") == std::string::npos) result += ".0";
  return result;
}

template std::optional<float> floatingPoint(const std::string&);
template std::optional<double> floatingPoint(const std::string&);
template std::optional<long double> floatingPoint(const std::string&);
template std::string floatingPointText(float);
template std::string floatingPointText(double);
template std::string floatingPointText(long double);

}  // namespace ArgumentParser::detail
