#include "ArgumentParser/declarations/ArgumentValue.h"

#include <charconv>
#include <cstdlib>
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
  std::string_view rest = digits;
  if (rest.starts_with('+') && !rest.starts_with("+-")) rest.remove_prefix(1);
  Number value{};
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  if (end != rest.data() + rest.size() || rest.empty()) return std::nullopt;
  if (error == std::errc::result_out_of_range)
    return static_cast<Number>(std::strtod(digits.c_str(), nullptr));
  return error == std::errc{} ? std::optional(value) : std::nullopt;
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
