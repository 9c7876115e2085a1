// Lenient readings of what the API answers: an absent member or one of another kind is empty, 0 or false.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "client/APICall.h"

namespace zelto {

/// The string under `key`.
std::string stringIn(JSONView object, std::string_view key);

/// The integer under `key`; 0 for anything else, a number with a fraction included.
std::int64_t integerIn(JSONView object, std::string_view key);

/// The number under `key`.
double numberIn(JSONView object, std::string_view key);

/// Whether `key` holds true or a number other than 0.
bool flagIn(JSONView object, std::string_view key);

/// Whether `value` is a list that holds nothing but objects.
bool isListOfObjects(JSONView value);

/// The list of objects under `key`; a list that holds anything else counts as empty.
json::JSONElements objectsIn(JSONView object, std::string_view key);

/// The list of strings under `key`; a list that holds anything else counts as empty.
std::vector<std::string> stringsIn(JSONView object, std::string_view key);

}  // namespace zelto
