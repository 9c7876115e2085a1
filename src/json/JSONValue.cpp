#include "json/JSONValue.h"

#include <algorithm>

namespace json {

JSONObject::JSONObject(Members sorted) : members(std::move(sorted)) {}

JSONObject::JSONObject(std::initializer_list<JSONMember> list) {
  members.reserve(list.size());
  for (const JSONMember& member : list) set(member.key, member.value);
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

namespace {

JSONValue::Data dataOf(JSONView value) {
  switch (value.kind()) {
    case Kind::null:
      return nullptr;
    case Kind::boolean:
      return *value.boolean();
    case Kind::number:
      return *value.number();
    case Kind::string:
      return std::string(*value.string());
    case Kind::array: {
      JSONArray array;
      array.reserve(value.elements().size());
      for (const JSONView element : value.elements()) array.emplace_back(element);
      return array;
    }
    case Kind::object: {
      JSONObject::Members members;
      for (const auto& [key, member] : value.members())
        members.push_back({std::string(key), JSONValue(member)});
      return JSONObject(std::move(members));
    }
  }
  return nullptr;
}

}  // namespace

JSONValue::JSONValue(JSONView value) : data(dataOf(value)) {}

Kind JSONValue::kind() const {
  if (boolean() != nullptr) return Kind::boolean;
  if (number() != nullptr) return Kind::number;
  if (string() != nullptr) return Kind::string;
  if (array() != nullptr) return Kind::array;
  return object() != nullptr ? Kind::object : Kind::null;
}

}  // namespace json
