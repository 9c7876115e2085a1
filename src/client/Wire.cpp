#include "client/Wire.h"

#include <algorithm>

namespace zelto {

const JSONValue& memberOf(const JSONObject& object, std::string_view key) {
  static const JSONValue absent;
  const JSONValue* value = object.find(key);
  return value != nullptr ? *value : absent;
}

std::string stringIn(const JSONObject& object, std::string_view key) {
  const auto* string = memberOf(object, key).string();
  return string != nullptr ? *string : std::string();
}

std::int64_t integerIn(const JSONObject& object, std::string_view key) {
  return memberOf(object, key).exactInteger().value_or(0);
}

bool flagIn(const JSONObject& object, std::string_view key) {
  const JSONValue& value = memberOf(object, key);
  if (const auto* boolean = value.boolean()) return *boolean;
  return value.number() != 0;
}

bool isListOfObjects(const JSONValue& value) {
  const auto* list = value.array();
  const auto isObject = [](const JSONValue& element) { return element.object() != nullptr; };
  return list != nullptr && std::all_of(list->begin(), list->end(), isObject);
}

JSONArray objectsIn(const JSONObject& object, std::string_view key) {
  const JSONValue& value = memberOf(object, key);
  return isListOfObjects(value) ? *value.array() : JSONArray();
}

std::vector<std::string> stringsIn(const JSONObject& object, std::string_view key) {
  std::vector<std::string> strings;
  const auto* list = memberOf(object, key).array();
  if (list == nullptr) return strings;
  for (const JSONValue& element : *list) {
    if (element.string() == nullptr) return {};
    strings.push_back(*element.string());
  }
  return strings;
}

}  // namespace zelto
