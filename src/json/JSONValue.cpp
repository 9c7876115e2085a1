#include "json/JSONValue.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace json {

JSONObject::JSONObject(Members sorted) : members(std::move(sorted)) {}

JSONObject::JSONObject(std::initializer_list<JSONMember> list) : members(list) {
  const auto byKey = [](const JSONMember& a, const JSONMember& b) { return a.key < b.key; };
  std::stable_sort(members.begin(), members.end(), byKey);
  // Of equal keys the last one stays.
  const auto sameKey = [](const JSONMember& a, const JSONMember& b) { return a.key == b.key; };
  const auto kept = std::unique(members.rbegin(), members.rend(), sameKey).base();
  members.erase(members.begin(), kept);
}

const JSONValue* JSONObject::find(std::string_view key) const {
  const auto at =
      std::lower_bound(members.begin(), members.end(), key,
                       [](const JSONMember& member, std::string_view k) { return member.key < k; });
  return at != members.end() && at->key == key ? &at->value : nullptr;
}

void JSONObject::set(std::string_view key, JSONValue value) {
  const auto at =
      std::lower_bound(members.begin(), members.end(), key,
                       [](const JSONMember& member, std::string_view k) { return member.key < k; });
  if (at != members.end() && at->key == key) {
    at->value = std::move(value);
  } else {
    members.insert(at, {std::string(key), std::move(value)});
  }
}

JSONObject::Members::const_iterator JSONObject::begin() const {
  return members.begin();
}
JSONObject::Members::const_iterator JSONObject::end() const {
  return members.end();
}
std::size_t JSONObject::size() const {
  return members.size();
}
bool JSONObject::empty() const {
  return members.empty();
}
bool operator==(const JSONObject& a, const JSONObject& b) {
  return a.members == b.members;
}
bool operator==(const JSONValue& a, const JSONValue& b) {
  return a.data == b.data;
}

std::string_view JSONValue::kindName() const {
  constexpr std::string_view names[] = {"null",   "boolean", "number", "number",
                                        "number", "string",  "array",  "object"};
  return names[data.index()];
}

double JSONValue::number() const {
  if (const auto* value = std::get_if<std::int64_t>(&data)) return static_cast<double>(*value);
  if (const auto* value = std::get_if<std::uint64_t>(&data)) return static_cast<double>(*value);
  if (const auto* value = floatingPoint()) return *value;
  return 0;
}

std::int64_t JSONValue::integer() const {
  using Limits = std::numeric_limits<std::int64_t>;
  if (const auto* value = std::get_if<std::int64_t>(&data)) return *value;
  if (std::holds_alternative<std::uint64_t>(data)) return Limits::max();
  const double value = number();
  if (value >= 0x1p63) return Limits::max();
  if (value < -0x1p63) return Limits::min();
  return std::isnan(value) ? 0 : static_cast<std::int64_t>(value);
}

std::optional<std::int64_t> JSONValue::exactInteger() const {
  if (const auto* value = std::get_if<std::int64_t>(&data)) return *value;
  const auto* value = floatingPoint();
  // 2^63 is what the largest integer rounds to.
  if (value == nullptr || *value >= 0x1p63 || static_cast<double>(integer()) != *value) return std::nullopt;
  return integer();
}

namespace {

/// Room for a sign and the digits of the largest floating-point number.
constexpr std::size_t longestNumber = 310;

/// The shortest digits that read back the same, plain from 1e-6 to below `plainBelow`.
char* writeFloat(char* out, double number, double plainBelow) {
  char* const limit = out + longestNumber;
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

char* writeNumber(char* out, const JSONValue& number, double plainBelow) {
  if (const auto* value = number.floatingPoint()) return writeFloat(out, *value, plainBelow);
  if (const auto* large = std::get_if<std::uint64_t>(&number.data))
    return std::to_chars(out, out + longestNumber, *large).ptr;
  return std::to_chars(out, out + longestNumber, number.integer()).ptr;
}

}  // namespace

void appendNumber(std::string& out, const JSONValue& number) {
  char digits[longestNumber];
  out.append(digits, writeNumber(digits, number, 1e21));
}

std::string numberText(const JSONValue& number) {
  if (number == JSONValue(0.0)) return "0";
  char digits[longestNumber];
  return {digits, writeNumber(digits, number, std::numeric_limits<double>::infinity())};
}

}  // namespace json
