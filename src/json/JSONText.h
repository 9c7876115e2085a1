// JSON text to value and back.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "json/JSONValue.h"

namespace json {

/// How deep arrays and objects may nest; a deeper text counts as not parsing.
inline constexpr std::size_t maxDepth = 512;

/// The value of a strict JSON text (UTF-8), or nothing if it does not parse. Integers that fit 64 bits stay
/// integers, other numbers become floating point; a number too large for that does not parse. Of equal keys
/// the last one counts.
std::optional<JSONValue> parse(std::string_view text);

/// The same, for a top level that must be an array or an object.
std::optional<JSONValue> parseContainer(std::string_view text);

/// How a value is written.
struct Style {
  bool pretty = false;  ///< one member a line, indented by two blanks a level
  std::string_view colon = ":";
  bool escapesSlash = false;     ///< "/" as "\/"
  bool escapesControls = false;  ///< what a terminal would obey (`text::isObeyedByTerminals`) as "\u..."
};
inline constexpr Style compact{};
inline constexpr Style pretty{.pretty = true, .colon = ": "};

/// Takes what has been written so far and empties it.
using Drain = std::function<void(std::string& written)>;

/// Appends the text of `value` to `out`, keys sorted. With a `drain`, hands `out` over whenever it has grown
/// large, so that a large value is never held as text. False if the value holds a number that is not finite;
/// what was appended is then of no use.
bool write(const JSONValue& value, const Style& style, std::string& out, const Drain& drain = {});

/// The text of `value`, or nothing if it holds a number that is not finite.
std::optional<std::string> text(const JSONValue& value, const Style& style);

/// Appends `utf8` as a JSON string, quotes included.
void appendQuoted(std::string& out, std::string_view utf8, bool escapesSlash = false);

}  // namespace json
