#include "client/Wire.h"

namespace zelto {

std::string stringIn(JSONView object, std::string_view key) {
  return std::string(object[key].string().value_or(std::string_view()));
}

std::int64_t integerIn(JSONView object, std::string_view key) {
  const auto number = object[key].number();
  return number ? number->exactInteger().value_or(0) : 0;
}

double numberIn(JSONView object, std::string_view key) {
  const auto number = object[key].number();
  return number ? number->real() : 0;
}

bool flagIn(JSONView object, std::string_view key) {
  return object[key].boolean().value_or(numberIn(object, key) != 0);
}

bool isListOfObjects(JSONView value) {
  for (const JSONView element : value.elements()) {
    if (!element.isObject()) return false;
  }
  return value.isArray();
}

json::JSONElements objectsIn(JSONView object, std::string_view key) {
  const JSONView value = object[key];
  return isListOfObjects(value) ? value.elements() : json::JSONElements();
}

std::vector<std::string> stringsIn(JSONView object, std::string_view key) {
  std::vector<std::string> strings;
  for (const JSONView element : object[key].elements()) {
    if (!element.string()) return {};
    strings.emplace_back(*element.string());
  }
  return strings;
}

}  // namespace zelto
