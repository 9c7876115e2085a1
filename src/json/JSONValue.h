// The value tree of every API body, MCP message and control file.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace json {

class JSONValue;
struct JSONMember;
using JSONArray = std::vector<JSONValue>;

/// An object: its members sorted ascending by key (UTF-8 bytes, which is code point order), each key once.
class JSONObject {
 public:
  using Members = std::vector<JSONMember>;

  // Defined behind the members' type, which is not complete here.
  JSONObject() noexcept;
  JSONObject(const JSONObject&);
  JSONObject(JSONObject&&) noexcept;
  JSONObject& operator=(const JSONObject&);
  JSONObject& operator=(JSONObject&&) noexcept;
  ~JSONObject();
  /// A later member replaces an earlier one of the same key.
  JSONObject(std::initializer_list<JSONMember> list);
  /// From members that are in order already: ascending by key, each key once.
  explicit JSONObject(Members sorted);

  /// The value under `key`, or null if there is none. Valid until the object changes.
  const JSONValue* find(std::string_view key) const;
  bool contains(std::string_view key) const { return find(key) != nullptr; }
  /// Stores `value` under `key`, in place of an earlier one.
  void set(std::string_view key, JSONValue value);

  Members::const_iterator begin() const;
  Members::const_iterator end() const;
  std::size_t size() const;
  bool empty() const;
  friend bool operator==(const JSONObject& a, const JSONObject& b);

 private:
  Members members;
};

/// One JSON value. Booleans, integers and floating-point numbers are kinds of their own, as what they print
/// depends on it; an integer is unsigned only if it does not fit a signed 64-bit one.
class JSONValue {
 public:
  using Data = std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string, JSONArray,
                            JSONObject>;

  JSONValue() : data(nullptr) {}
  JSONValue(std::nullptr_t) : data(nullptr) {}
  JSONValue(bool value) : data(value) {}
  JSONValue(int value) : data(std::int64_t{value}) {}
  JSONValue(std::int64_t value) : data(value) {}
  JSONValue(std::uint64_t value) : data(value) {}
  JSONValue(double value) : data(value) {}
  JSONValue(std::string value) : data(std::move(value)) {}
  JSONValue(std::string_view value) : data(std::string(value)) {}
  JSONValue(const char* value) : data(std::string(value)) {}
  JSONValue(JSONArray value) : data(std::move(value)) {}
  JSONValue(JSONObject value) : data(std::move(value)) {}

  bool isNull() const { return std::holds_alternative<std::nullptr_t>(data); }
  bool isNumber() const { return data.index() >= 2 && data.index() <= 4; }
  /// The payload if the value is of that kind, else null.
  const bool* boolean() const { return std::get_if<bool>(&data); }
  const double* floatingPoint() const { return std::get_if<double>(&data); }
  const std::string* string() const { return std::get_if<std::string>(&data); }
  const JSONArray* array() const { return std::get_if<JSONArray>(&data); }
  const JSONObject* object() const { return std::get_if<JSONObject>(&data); }
  JSONArray* array() { return std::get_if<JSONArray>(&data); }
  JSONObject* object() { return std::get_if<JSONObject>(&data); }

  /// "object", "array", "string", "number", "boolean" or "null".
  std::string_view kindName() const;

  /// The number as a double; 0 for any other kind.
  double number() const;

  /// The number cut to its integer part and clamped to 64 bits; 0 for any other kind, a Boolean included.
  std::int64_t integer() const;

  /// The number if it is a 64-bit integer exactly, of whichever kind; nothing for any other value.
  std::optional<std::int64_t> exactInteger() const;

  Data data;

  friend bool operator==(const JSONValue& a, const JSONValue& b);
};

struct JSONMember {
  std::string key;
  JSONValue value;
  friend bool operator==(const JSONMember& a, const JSONMember& b) = default;
};

inline JSONObject::JSONObject() noexcept = default;
inline JSONObject::JSONObject(const JSONObject&) = default;
inline JSONObject::JSONObject(JSONObject&&) noexcept = default;
inline JSONObject& JSONObject::operator=(const JSONObject&) = default;
inline JSONObject& JSONObject::operator=(JSONObject&&) noexcept = default;
inline JSONObject::~JSONObject() = default;

/// Appends a finite number as JSON: the shortest digits that read back the same, with an exponent below 1e-6
/// and from 1e21 on (as JavaScript has it: ECMA-262, Number::toString), but exact where they are an
/// integer's.
void appendNumber(std::string& out, const JSONValue& number);

/// The same as a person reads it: a number without a fractional part in plain digits whatever its size, and
/// no negative zero.
std::string numberText(const JSONValue& number);

}  // namespace json
