// Any bytes as JSON. What is read is what the library's own tree holds, and every form in which it is written
// is UTF-8 and reads as the same value. The same bytes, repaired, as a string: quoted, they read as
// themselves.
#include "json/JSONText.h"

#include <algorithm>
#include <cmath>

#include <boost/json.hpp>

#include "support/Fuzz.h"
#include "text/Unicode.h"

namespace {

using json::JSONValue;

std::optional<boost::json::value> independentlyRead(std::string_view text) {
  boost::json::parse_options options;
  options.max_depth = json::maxDepth;
  boost::json::error_code error;
  auto value = boost::json::parse(text, error, {}, options);
  return error ? std::nullopt : std::optional(std::move(value));
}

/// The library's own conversion is a little off here and there, and far off where numbers end; of "-0" it
/// makes an integer.
bool isNear(double ours, double theirs) {
  constexpr double least = 1e-290, most = 1e290;
  if (std::isnan(theirs) || std::abs(ours) < least || std::abs(ours) > most) return std::isfinite(ours);
  return std::abs(ours - theirs) <= 1e-14 * std::abs(ours);
}

bool isSame(const JSONValue& ours, const boost::json::value& theirs) {
  if (const auto* object = ours.object()) {
    const auto* other = theirs.if_object();
    if (other == nullptr || object->size() != other->size()) return false;
    for (const auto& [key, value] : *object) {
      const auto* member = other->if_contains(key);
      if (member == nullptr || !isSame(value, *member)) return false;
    }
    return true;
  }
  if (const auto* array = ours.array()) {
    const auto* other = theirs.if_array();
    if (other == nullptr || array->size() != other->size()) return false;
    for (std::size_t i = 0; i < array->size(); ++i) {
      if (!isSame((*array)[i], (*other)[i])) return false;
    }
    return true;
  }
  if (const auto* string = ours.string())
    return theirs.is_string() && *string == std::string_view(theirs.get_string());
  if (const auto* boolean = ours.boolean()) return theirs.is_bool() && *boolean == theirs.get_bool();
  if (ours.isNull()) return theirs.is_null();
  const json::JSONNumber number = *ours.number();
  if (theirs.is_double() || number.floatingPoint())
    return theirs.is_number() && isNear(number.real(), theirs.to_number<double>());
  if (theirs.is_uint64()) return number == json::JSONNumber(theirs.get_uint64());
  return theirs.is_int64() && number == json::JSONNumber(theirs.get_int64());
}

/// Whether a number in it may be beyond what a number can be.
bool holdsHuge(const boost::json::value& value) {
  if (const auto* number = value.if_double()) return !(std::abs(*number) < 1e290);
  if (const auto* array = value.if_array()) return std::any_of(array->begin(), array->end(), holdsHuge);
  const auto inMember = [](const auto& member) { return holdsHuge(member.value()); };
  const auto* object = value.if_object();
  return object != nullptr && std::any_of(object->begin(), object->end(), inMember);
}

/// Both forms of a number are its value, and plain digits where other tools print them.
void checkNumber(const json::JSONNumber& number) {
  const double value = number.real(), size = std::abs(value);
  for (const std::string& digits : {number.text(), *json::text(number, json::compact)}) {
    const auto read = json::parse(digits);
    fuzz::expect(read && read->number() && read->number()->real() == value,
                 "a number's digits read as the number", digits);
    const bool isPlain = digits.find('e') == digits.npos;
    fuzz::expect(isPlain || size < 1e-6 || size > 0x1p53, "a number of common size has plain digits", digits);
  }
}

void checkNumbers(const JSONValue& value) {
  if (const auto* number = value.number()) checkNumber(*number);
  if (const auto* array = value.array()) {
    for (const JSONValue& element : *array) checkNumbers(element);
  }
  if (const auto* object = value.object()) {
    for (const auto& member : *object) checkNumbers(member.value);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto document = json::JSONDocument::parse(text);
  const auto value = document ? std::optional(JSONValue(document->root())) : std::nullopt;
  const auto expected = independentlyRead(text);
  fuzz::expect(!value || (expected && isSame(*value, *expected)), "the value is what stands there", text);
  fuzz::expect(value || !expected || holdsHuge(*expected), "what is JSON parses", text);
  if (value) {
    checkNumbers(*value);
    json::Style shown = json::pretty;
    shown.escapesControls = true;
    fuzz::expect(fuzz::isShown(*json::text(*value, shown)), "what a terminal would obey is escaped", text);
    for (const json::Style& style : {json::compact, json::pretty, shown, json::Style{true, " : ", true}}) {
      const auto written = json::text(*value, style);
      const auto again = written ? json::parse(*written) : std::nullopt;
      fuzz::expect(again && isSame(*again, *expected), "what is written reads the same", text);
      fuzz::expect(json::text(*again, style) == written, "what is read is written the same", text);
      fuzz::expect(json::text(*document, style) == written, "what is read and a copy are written the same",
                   text);
      fuzz::expectUTF8(*written, "what is written");
    }
    const std::string line = *json::text(*value, json::compact);
    fuzz::expect(line.find('\n') == line.npos, "the compact form is one line", line);
  }
  const std::string string = text::repairedUTF8(text);
  for (const bool escapesSlash : {false, true}) {
    std::string quoted;
    json::appendQuoted(quoted, string, escapesSlash);
    fuzz::expect(json::parse(quoted) == JSONValue(string), "a quoted text reads as itself", quoted);
  }
  return 0;
}
