#include "json/JSONText.h"

#include "text/Harmless.h"
#include "text/Unicode.h"
#include "text/Words.h"

namespace json {
namespace {

constexpr std::size_t pieceSize = 1 << 16;

/// "\u" and the four digits of a code point of the basic plane.
void appendEscape(std::string& out, char32_t codePoint) {
  constexpr char digits[] = "0123456789abcdef";
  out += "\\u";
  for (const int shift : {12, 8, 4, 0}) out += digits[codePoint >> shift & 15];
}

bool needsEscape(char byte, bool escapesSlash) {
  return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\' ||
         (byte == '/' && escapesSlash);
}

/// Where the first byte from `at` on stands that needs an escape, or the end.
std::size_t plainEnd(std::string_view utf8, std::size_t at, bool escapesSlash) {
  at = text::skipWords(utf8, at, [escapesSlash](text::Word word) {
    return !text::hasControl(word) && !text::contains(word, '"') && !text::contains(word, '\\') &&
           !(escapesSlash && text::contains(word, '/'));
  });
  while (at < utf8.size() && !needsEscape(utf8[at], escapesSlash)) ++at;
  return at;
}

void appendEscaped(std::string& out, std::string_view utf8, bool escapesSlash) {
  constexpr std::string_view named = "\"\\/\b\f\n\r\t", names = "\"\\/bfnrt";
  for (std::size_t from = 0;;) {
    const std::size_t at = plainEnd(utf8, from, escapesSlash);
    out.append(utf8, from, at - from);
    if (at == utf8.size()) return;
    if (const std::size_t place = named.find(utf8[at]); place != std::string_view::npos) {
      const char escape[] = {'\\', names[place]};
      out.append(escape, sizeof escape);
    } else {
      appendEscape(out, static_cast<unsigned char>(utf8[at]));
    }
    from = at + 1;
  }
}

/// Writes to a text, which it hands over in pieces if there is somebody who takes them.
class Writer {
 public:
  Writer(const Style& how, std::string& text, const Sink* taker = nullptr)
      : style(how), out(text), sink(taker) {}

  void write(JSONView value, std::size_t depth = 0) {
    if (value.isObject()) return writeMembers(value, depth);
    if (value.isArray()) return writeElements(value.elements(), depth);
    if (const auto string = value.string()) return writeString(*string, value.isVerbatim());
    writeScalar(value);
  }

  bool write(const JSONValue& value, std::size_t depth = 0) {
    bool isFinite = true;
    if (const auto* object = value.object()) {
      writeSequence("{}", *object, depth, [&](const JSONMember& member) {
        writeKey(member.key, false);
        isFinite = write(member.value, depth + 1) && isFinite;
      });
    } else if (const auto* array = value.array()) {
      writeSequence("[]", *array, depth,
                    [&](const JSONValue& element) { isFinite = write(element, depth + 1) && isFinite; });
    } else if (const auto* string = value.string()) {
      writeString(*string, false);
    } else if (const auto* number = value.number(); number != nullptr && !number->isFinite()) {
      isFinite = false;
    } else {
      writeScalar(value);
    }
    return isFinite;
  }

  /// For anything that yields the elements as views.
  template <class Elements>
  void writeElements(const Elements& elements, std::size_t depth) {
    writeSequence("[]", elements, depth, [&](JSONView element) { write(element, depth + 1); });
  }

  void handOver() {
    if (sink != nullptr && !out.empty()) (*sink)(out);
    if (sink != nullptr) out.clear();
  }

 private:
  /// A number, a Boolean or null.
  template <class Value>
  void writeScalar(const Value& value) {
    if (const auto number = value.number()) {
      char digits[JSONNumber::longestText];
      out.append(digits, number->write(digits));
    } else if (const auto boolean = value.boolean()) {
      out += *boolean ? "true" : "false";
    } else {
      out += "null";
    }
  }

  void writeMembers(JSONView object, std::size_t depth) {
    const std::size_t count = order.push(object);
    bool isFirst = true;
    out += '{';
    for (std::size_t left = count; left > 0; --left) {
      const MemberOrder::Member member = order.fromEnd(left);
      begin(isFirst, depth);
      writeKey(*member.key.string(), member.key.isVerbatim());
      write(member.value(), depth + 1);
    }
    order.pop(count);
    end(isFirst, depth, '}');
  }

  template <class Sequence, class WriteElement>
  void writeSequence(const char* brackets, const Sequence& sequence, std::size_t depth,
                     WriteElement element) {
    bool isFirst = true;
    out += brackets[0];
    for (const auto& each : sequence) {
      begin(isFirst, depth);
      element(each);
    }
    end(isFirst, depth, brackets[1]);
  }

  /// What precedes an element, and what ends them all.
  void begin(bool& isFirst, std::size_t depth) {
    if (out.size() >= pieceSize) handOver();
    if (!isFirst) out += ',';
    isFirst = false;
    newline(depth + 1);
  }
  void end(bool isEmpty, std::size_t depth, char bracket) {
    if (!isEmpty) newline(depth);
    out += bracket;
  }

  void newline(std::size_t depth) {
    if (!style.pretty) return;
    const std::size_t length = 1 + 2 * depth;
    if (lineStart.size() < length) lineStart.resize(length, ' ');
    out.append(lineStart, 0, length);
  }

  void writeKey(std::string_view key, bool isVerbatim) {
    writeString(key, isVerbatim);
    out += style.colon;
  }

  void writeString(std::string_view string, bool isVerbatim) {
    out += '"';
    if (style.escapesControls) {
      writeHarmless(string);
    } else {
      for (; sink != nullptr && string.size() > pieceSize; string.remove_prefix(pieceSize)) {
        writePiece(string.substr(0, pieceSize), isVerbatim);
        handOver();
      }
      writePiece(string, isVerbatim);
    }
    out += '"';
  }

  void writePiece(std::string_view piece, bool isVerbatim) {
    if (isVerbatim && !style.escapesSlash) {
      out += piece;
    } else {
      appendEscaped(out, piece, style.escapesSlash);
    }
  }

  void writeHarmless(std::string_view string) {
    while (!string.empty()) {
      const auto [value, length, valid] = text::firstCodePoint(string);
      if (text::isObeyedByTerminals(value) && value >= 0x20) {
        appendEscape(out, value);
      } else {
        appendEscaped(out, string.substr(0, length), style.escapesSlash);
      }
      string.remove_prefix(length);
    }
  }

  const Style& style;
  std::string& out;
  const Sink* sink;
  MemberOrder order;
  std::string lineStart = "\n";
};

}  // namespace

std::optional<JSONValue> parse(std::string_view text) {
  const auto document = JSONDocument::parse(text);
  return document ? std::optional(JSONValue(document->root())) : std::nullopt;
}

void write(JSONView value, const Style& style, const Sink& sink) {
  std::string out;
  Writer writer(style, out, &sink);
  writer.write(value);
  writer.handOver();
}

void write(const std::vector<JSONView>& elements, const Style& style, const Sink& sink) {
  std::string out;
  Writer writer(style, out, &sink);
  writer.writeElements(elements, 0);
  writer.handOver();
}

bool write(const JSONValue& value, const Style& style, const Sink& sink) {
  std::string out;
  Writer writer(style, out, &sink);
  const bool isFinite = writer.write(value);
  writer.handOver();
  return isFinite;
}

std::string text(JSONView value, const Style& style) {
  std::string out;
  Writer(style, out).write(value);
  return out;
}

std::optional<std::string> text(const JSONValue& value, const Style& style) {
  std::string out;
  if (!Writer(style, out).write(value)) return std::nullopt;
  return out;
}

void appendQuoted(std::string& out, std::string_view utf8, bool escapesSlash) {
  out += '"';
  appendEscaped(out, utf8, escapesSlash);
  out += '"';
}

}  // namespace json
