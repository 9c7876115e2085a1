// JSON that is built by hand: the bodies of requests, the replies to agents, what commands print of their
// own. What has been read is a document (JSONDocument.h).
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "json/JSONDocument.h"

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

/// One JSON value.
class JSONValue {
 public:
  using Data = std::variant<std::nullptr_t, bool, JSONNumber, std::string, JSONArray, JSONObject>;

  JSONValue() : data(nullptr) {}
  JSONValue(std::nullptr_t) : data(nullptr) {}
  JSONValue(bool value) : data(value) {}
  JSONValue(JSONNumber value) : data(value) {}
  JSONValue(int value) : data(JSONNumber(std::int64_t{value})) {}
  JSONValue(std::int64_t value) : data(JSONNumber(value)) {}
  JSONValue(std::uint64_t value) : data(JSONNumber(value)) {}
  JSONValue(double value) : data(JSONNumber(value)) {}
  JSONValue(std::string value) : data(std::move(value)) {}
  JSONValue(std::string_view value) : data(std::string(value)) {}
  JSONValue(const char* value) : data(std::string(value)) {}
  JSONValue(JSONArray value) : data(std::move(value)) {}
  JSONValue(JSONObject value) : data(std::move(value)) {}
  /// A copy of what has been read.
  explicit JSONValue(JSONView value);

  Kind kind() const;
  bool isNull() const { return std::holds_alternative<std::nullptr_t>(data); }
  /// The payload if the value is of that kind, else null.
  const bool* boolean() const { return std::get_if<bool>(&data); }
  const JSONNumber* number() const { return std::get_if<JSONNumber>(&data); }
  const std::string* string() const { return std::get_if<std::string>(&data); }
  const JSONArray* array() const { return std::get_if<JSONArray>(&data); }
  const JSONObject* object() const { return std::get_if<JSONObject>(&data); }
  JSONArray* array() { return std::get_if<JSONArray>(&data); }
  JSONObject* object() { return std::get_if<JSONObject>(&data); }

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

}  // namespace json
