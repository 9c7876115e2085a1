// JSON as text, from what has been read and from what has been built. A large text goes out in pieces, so
// that it is never held as a whole.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json/JSONDocument.h"
#include "json/JSONValue.h"

namespace json {

/// The value of a text that `JSONDocument::parse` reads, for small texts whose value outlives them.
std::optional<JSONValue> parse(std::string_view text);

/// How a value is written.
struct Style {
  bool pretty = false;  ///< one member a line, indented by two blanks a level
  std::string_view colon = ":";
  bool escapesSlash = false;     ///< "/" as "\/"
  bool escapesControls = false;  ///< what a terminal would obey (`text::isObeyedByTerminals`) as "\u..."
};
inline constexpr Style compact{};
inline constexpr Style pretty{.pretty = true, .colon = ": "};

/// Takes the next piece of a text; it is valid during the call.
using Sink = std::function<void(std::string_view piece)>;

/// Hands the text of a value to `sink`, keys sorted, in pieces of some 64 KB.
void write(JSONView value, const Style& style, const Sink& sink);
/// The same for a list of values, as an array.
void write(const std::vector<JSONView>& elements, const Style& style, const Sink& sink);
/// The same for a value that may hold numbers which are not finite. JSON has none: then false, and what went
/// out is of no use.
bool write(const JSONValue& value, const Style& style, const Sink& sink);

/// The text of a value.
std::string text(JSONView value, const Style& style);
/// The same, or nothing if it holds a number that is not finite.
std::optional<std::string> text(const JSONValue& value, const Style& style);

/// Appends `utf8` as a JSON string, quotes included.
void appendQuoted(std::string& out, std::string_view utf8, bool escapesSlash = false);

}  // namespace json
