#include "json/JSONText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <utility>

#include <boost/json/basic_parser_impl.hpp>

#include "text/Harmless.h"
#include "text/Number.h"
#include "text/Unicode.h"

namespace json {
namespace {

/// Builds the tree on a stack of finished values: an array or object takes its elements from the top of it.
struct Builder {
  static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);

  using Error = boost::json::error_code;
  using Text = boost::json::string_view;

  std::vector<JSONValue> values;
  std::vector<std::string> keys;
  std::vector<std::size_t> order;
  std::string part;

  /// Room for a message, so that none of the stacks grows step by step for it.
  Builder() {
    values.reserve(16);
    keys.reserve(16);
    order.reserve(16);
  }

  template <class Value>
  bool push(Value&& value) {
    values.emplace_back(std::forward<Value>(value));
    return true;
  }
  bool append(Text text) {
    part.append(text.data(), text.size());
    return true;
  }
  /// The whole of a string or key whose last piece is `text`.
  std::string finish(Text text) {
    if (part.empty()) return {text.data(), text.size()};
    append(text);
    return std::exchange(part, {});
  }

  bool on_document_begin(Error&) { return true; }
  bool on_document_end(Error&) { return true; }
  bool on_array_begin(Error&) { return true; }
  bool on_array_end(std::size_t count, Error&) {
    const auto first = values.end() - static_cast<std::ptrdiff_t>(count);
    JSONArray array(std::make_move_iterator(first), std::make_move_iterator(values.end()));
    values.erase(first, values.end());
    return push(std::move(array));
  }
  bool on_object_begin(Error&) { return true; }
  bool on_object_end(std::size_t count, Error&) {
    const std::size_t firstValue = values.size() - count, firstKey = keys.size() - count;
    // Sorting places is cheaper than sorting members, which are large. Of equal keys the last comes first and
    // stays.
    order.resize(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      const int comparison = keys[firstKey + a].compare(keys[firstKey + b]);
      return comparison != 0 ? comparison < 0 : a > b;
    });
    JSONObject::Members members;
    members.reserve(count);
    for (const std::size_t place : order) {
      std::string& key = keys[firstKey + place];
      if (!members.empty() && members.back().key == key) continue;
      members.push_back({std::move(key), std::move(values[firstValue + place])});
    }
    values.resize(firstValue);
    keys.resize(firstKey);
    return push(JSONObject(std::move(members)));
  }
  bool on_key_part(Text text, std::size_t, Error&) { return append(text); }
  bool on_key(Text text, std::size_t, Error&) {
    keys.push_back(finish(text));
    return true;
  }
  bool on_string_part(Text text, std::size_t, Error&) { return append(text); }
  bool on_string(Text text, std::size_t, Error&) { return push(finish(text)); }
  bool on_number_part(Text text, Error&) { return append(text); }
  bool on_int64(std::int64_t value, Text text, Error& error) {
    // "-0" keeps its sign only as a floating-point number.
    if (value == 0 && (text.starts_with('-') || part.starts_with('-'))) return on_double(-0.0, text, error);
    part.clear();
    return push(value);
  }
  bool on_uint64(std::uint64_t value, Text, Error&) {
    part.clear();
    return std::in_range<std::int64_t>(value) ? push(static_cast<std::int64_t>(value)) : push(value);
  }
  /// The library's own conversion may be a unit in the last place off, so the digits are read again.
  bool on_double(double, Text digits, Error& error) {
    const auto value = text::floatingPoint<double>(finish(digits));
    if (!value || !std::isfinite(*value)) {
      error = boost::json::error::not_number;
      return false;
    }
    return push(*value);
  }
  bool on_bool(bool value, Error&) { return push(value); }
  bool on_null(Error&) { return push(nullptr); }
  bool on_comment_part(Text, Error&) { return true; }
  bool on_comment(Text, Error&) { return true; }
};

/// "\u" and the four digits of a code point of the basic plane.
void appendEscape(std::string& out, char32_t codePoint) {
  constexpr char digits[] = "0123456789abcdef";
  out += "\\u";
  for (const int shift : {12, 8, 4, 0}) out += digits[codePoint >> shift & 15];
}

class Writer {
 public:
  Writer(const Style& how, std::string& text, const Drain& sink) : style(how), out(text), drain(sink) {}

  bool write(const JSONValue& value, std::size_t depth = 0) {
    if (drain && out.size() >= drainAt) drain(out);
    if (const auto* object = value.object()) {
      return writeSequence('{', '}', *object, depth, [&](const JSONMember& member) {
        writeString(member.key);
        out += style.colon;
        return write(member.value, depth + 1);
      });
    }
    if (const auto* array = value.array()) {
      return writeSequence('[', ']', *array, depth,
                           [&](const JSONValue& element) { return write(element, depth + 1); });
    }
    if (const auto* string = value.string()) {
      writeString(*string);
    } else if (const auto* boolean = value.boolean()) {
      out += *boolean ? "true" : "false";
    } else if (value.isNull()) {
      out += "null";
    } else if (const auto* number = value.floatingPoint(); number != nullptr && !std::isfinite(*number)) {
      return false;
    } else {
      appendNumber(out, value);
    }
    return true;
  }

 private:
  static constexpr std::size_t drainAt = 1 << 16;

  template <class Sequence, class WriteElement>
  bool writeSequence(char open, char close, const Sequence& sequence, std::size_t depth,
                     WriteElement element) {
    out += open;
    bool first = true;
    for (const auto& each : sequence) {
      if (!first) out += ',';
      first = false;
      newline(depth + 1);
      if (!element(each)) return false;
    }
    if (!first) newline(depth);
    out += close;
    return true;
  }

  void newline(std::size_t depth) {
    if (style.pretty) out.append(1, '\n').append(2 * depth, ' ');
  }

  void writeString(const std::string& string) {
    const std::size_t start = out.size();
    appendQuoted(out, string, style.escapesSlash);
    if (style.escapesControls) escapeControls(start);
  }

  /// Escapes in what stands behind `start` what `appendQuoted` leaves.
  void escapeControls(std::size_t start) {
    const std::string written = out.substr(start);
    out.resize(start);
    for (std::size_t at = 0; at < written.size();) {
      const auto [value, length, valid] = text::firstCodePoint(std::string_view(written).substr(at));
      if (text::isObeyedByTerminals(value)) {
        appendEscape(out, value);
      } else {
        out.append(written, at, length);
      }
      at += length;
    }
  }

  const Style& style;
  std::string& out;
  const Drain& drain;
};

/// Whether a byte may need an escape within a string.
constexpr auto isSpecial = [] {
  std::array<bool, 256> table{};
  std::fill(table.begin(), table.begin() + 0x20, true);
  table['"'] = table['\\'] = table['/'] = true;
  return table;
}();

}  // namespace

std::optional<JSONValue> parse(std::string_view text) {
  boost::json::parse_options options;
  options.max_depth = maxDepth;
  boost::json::basic_parser<Builder> parser(options);
  boost::json::error_code error;
  const std::size_t used = parser.write_some(false, text.data(), text.size(), error);
  if (error || used != text.size()) return std::nullopt;
  return std::move(parser.handler().values.back());
}

std::optional<JSONValue> parseContainer(std::string_view text) {
  auto value = parse(text);
  if (value && !value->array() && !value->object()) value.reset();
  return value;
}

bool write(const JSONValue& value, const Style& style, std::string& out, const Drain& drain) {
  return Writer(style, out, drain).write(value);
}

std::optional<std::string> text(const JSONValue& value, const Style& style) {
  std::string out;
  if (!write(value, style, out)) return std::nullopt;
  return out;
}

void appendQuoted(std::string& out, std::string_view utf8, bool escapesSlash) {
  out += '"';
  std::size_t plainFrom = 0;
  const auto escape = [&](std::size_t at, std::string_view replacement) {
    out.append(utf8.substr(plainFrom, at - plainFrom)).append(replacement);
    plainFrom = at + 1;
  };
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (!isSpecial[byte]) continue;
    switch (byte) {
      case '"':
        escape(i, "\\\"");
        break;
      case '\\':
        escape(i, "\\\\");
        break;
      case '\n':
        escape(i, "\\n");
        break;
      case '\r':
        escape(i, "\\r");
        break;
      case '\t':
        escape(i, "\\t");
        break;
      case '\b':
        escape(i, "\\b");
        break;
      case '\f':
        escape(i, "\\f");
        break;
      case '/':
        if (escapesSlash) escape(i, "\\/");
        break;
      default:
        escape(i, "");
        appendEscape(out, byte);
    }
  }
  out.append(utf8.substr(plainFrom)).append(1, '"');
}

}  // namespace json
