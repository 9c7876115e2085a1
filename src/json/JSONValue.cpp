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

std::string numberText(const JSONValue& number) {
  char buffer[400];
  std::to_chars_result end{buffer, {}};
  if (const auto* value = number.floatingPoint()) {
    // One too large for an integer has no fraction left.
    const bool whole = number.exactInteger() || (std::isfinite(*value) && std::abs(*value) >= 0x1p63);
    // Adding 0 takes the sign off a negative zero, which has no digits of its own.
    end = whole ? std::to_chars(buffer, std::end(buffer), *value + 0.0, std::chars_format::fixed)
                : std::to_chars(buffer, std::end(buffer), *value);
  } else if (const auto* large = std::get_if<std::uint64_t>(&number.data)) {
    end = std::to_chars(buffer, std::end(buffer), *large);
  } else if (number.isNumber()) {
    end = std::to_chars(buffer, std::end(buffer), number.integer());
  }
  return {buffer, end.ptr};
}

}  // namespace json
