#include "install/JSONCScanner.h"

#include <algorithm>

#include "text/Unicode.h"
#include "text/Words.h"

namespace zelto::JSONCEditor {
namespace {

/// The position of the quote that ends the string whose content begins at `position`; nothing if it does not
/// end.
std::optional<std::size_t> stringEnd(std::string_view text, std::size_t position) {
  const auto isPlain = [](text::Word word) {
    return !text::contains(word, '"') && !text::contains(word, '\\');
  };
  while (position < text.size()) {
    position = text::skipWords(text, position, isPlain);
    while (position < text.size() && text[position] != '"' && text[position] != '\\') ++position;
    if (position < text.size() && text[position] == '"') return position;
    position += 2;
  }
  return std::nullopt;
}

/// The position of the first line break from `position` on; the text's length if there is none.
std::size_t lineEnd(std::string_view text, std::size_t position) {
  position = text::skipWords(text, position, [](text::Word word) { return text::isPrintable(word); });
  while (position < text.size() && lineBreakLength(text, position) == 0) ++position;
  return position;
}

/// The position after the comment at `start`, line break excluded; `start` itself if there is no comment.
std::size_t commentEnd(std::string_view text, std::size_t start) {
  if (text.substr(start).starts_with("//")) return lineEnd(text, start);
  if (!text.substr(start).starts_with("/*")) return start;
  // The asterisk that opens the comment may close it as well.
  const std::size_t close = text.find("*/", start + 1);
  return close == std::string_view::npos ? text.size() : close + 2;
}

/// Whether nothing but blanks and comments stands between the comma at `position` and a closing bracket.
bool isTrailingComma(std::string_view text, std::size_t position) {
  for (std::size_t i = position + 1; i < text.size();) {
    const char next = text[i];
    if (next == '}' || next == ']') return true;
    const bool isBlank = next == ' ' || next == '\t' || next == '\n' || next == '\r';
    const std::size_t end = isBlank ? i + 1 : commentEnd(text, i);
    if (end == i) return false;
    i = end;
  }
  return false;
}

void blank(std::string& text, std::size_t position, std::size_t end) {
  while (position < end) {
    if (const std::size_t length = lineBreakLength(text, position); length > 0) {
      position += length;
    } else {
      text[position++] = ' ';
    }
  }
}

}  // namespace

std::size_t lineBreakLength(std::string_view text, std::size_t position) {
  const char first = text[position];
  if (first >= '\n' && first <= '\r') return 1;
  if (first == '\xC2') return text.substr(position, 2) == "\u0085" ? 2 : 0;
  if (first != '\xE2') return 0;
  const std::string_view character = text.substr(position, 3);
  return character == "\u2028" || character == "\u2029" ? 3 : 0;
}

std::string blankComments(std::string text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') {
      i = stringEnd(text, i + 1).value_or(text.size());
    } else if (text[i] == ',' && isTrailingComma(text, i)) {
      text[i] = ' ';
    } else if (const std::size_t end = commentEnd(text, i); end > i) {
      blank(text, i, end);
      i = end - 1;
    }
  }
  return text;
}

/// The position after the comment at `position`; `position` itself if there is none.
std::size_t Scanner::skipComment(std::size_t position) const {
  return blanked ? position : commentEnd(text, position);
}

/// The first position from `position` on that holds neither white space nor a comment.
std::size_t Scanner::skipComments(std::size_t position) const {
  while (position < text.size()) {
    const char first = text[position];
    std::size_t end = position;
    if (first == ' ' || (first >= '\t' && first <= '\r')) {
      ++end;
    } else if (first == '/') {
      end = skipComment(position);
    } else if (static_cast<unsigned char>(first) >= 0x80) {
      const auto character = text::firstCodePoint(text.substr(position));
      if (text::isWhitespace(character.value)) end += character.length;
    }
    if (end == position) break;
    position = end;
  }
  return position;
}

std::size_t Scanner::skipWhitespace(std::size_t position) const {
  position = skipComments(position);
  // After a trailing comma comes nothing but comments before its bracket.
  return holdsTrailingComma(position) ? skipComments(position + 1) : position;
}

/// Whether a comma that counts as white space stands at `position`.
bool Scanner::holdsTrailingComma(std::size_t position) const {
  return !blanked && holds(position, ',') && isTrailingComma(text, position);
}

std::optional<std::size_t> Scanner::firstBrace(std::size_t start) const {
  const std::size_t position = skipWhitespace(start);
  return holds(position, '{') ? std::optional(position) : std::nullopt;
}

std::optional<std::size_t> Scanner::valueEnd(std::size_t start) {
  if (holds(start, '{') || holds(start, '[')) return bracketEnd(start);
  if (!holds(start, '"')) return wordEnd(start);
  const auto quote = stringEnd(text, start + 1);
  return quote ? std::optional(*quote + 1) : std::nullopt;
}

/// The position after the number, the name or the broken syntax at `start`.
std::size_t Scanner::wordEnd(std::size_t start) {
  std::size_t end = start;
  while (end < text.size()) {
    // A quote within a word is broken syntax, of which this scan and blanking make different strings: what is
    // a comment after it, only the copy tells.
    if (text[end] == '"') readBlanked();
    const char next = text[end];
    if (next == '}' || next == ']' || (next == ',' && !holdsTrailingComma(end))) break;
    end = std::max(end + 1, skipComment(end));
  }
  if (blanked) return start + text::trimmed(text.substr(start, end - start)).size();
  // With the bracket that makes a comma a trailing one.
  const std::string word = blankComments(std::string(text.substr(start, end + 1 - start)));
  return start + text::trimmed(std::string_view(word).substr(0, end - start)).size();
}

/// Goes on with the blanked copy, in which every position is the same.
void Scanner::readBlanked() {
  if (!blanked) text = blanked.emplace(blankComments(std::string(text)));
}

std::optional<std::size_t> Scanner::bracketEnd(std::size_t start) const {
  std::size_t depth = 0;
  for (std::size_t i = start; i < text.size(); ++i) {
    switch (text[i]) {
      case '"': {
        const auto quote = stringEnd(text, i + 1);
        if (!quote) return std::nullopt;
        i = *quote;
        break;
      }
      case '/':
        i = std::max(i, skipComment(i) - 1);
        break;
      case '{':
      case '[':
        ++depth;
        break;
      case '}':
      case ']':
        if (--depth == 0) return i + 1;
        break;
      default:
        break;
    }
  }
  return std::nullopt;
}

std::optional<Member> Scanner::memberAt(std::size_t position) {
  const std::size_t start = skipWhitespace(position);
  if (!holds(start, '"')) return std::nullopt;
  const auto quote = stringEnd(text, start + 1);
  if (!quote) return std::nullopt;
  const std::size_t colon = skipWhitespace(*quote + 1);
  if (!holds(colon, ':')) return std::nullopt;
  const std::size_t value = skipWhitespace(colon + 1);
  const auto end = valueEnd(value);
  if (!end) return std::nullopt;
  return Member{start, value, *end};
}

std::optional<Member> Scanner::memberAfter(const Member& member) {
  // A trailing comma counts like any other here: the bracket after it ends the walk all the same.
  const std::size_t next = skipComments(member.end);
  return memberAt(holds(next, ',') ? next + 1 : next);
}

std::optional<Member> Scanner::findMember(std::size_t open, std::string_view key) {
  const std::string quoted = '"' + std::string(key) + '"';
  auto member = memberAt(open + 1);
  while (member && !text.substr(member->start).starts_with(quoted)) member = memberAfter(*member);
  return member;
}

std::size_t Scanner::memberCount(std::size_t open) {
  std::size_t count = 0;
  for (auto member = memberAt(open + 1); member; member = memberAfter(*member)) ++count;
  return count;
}

}  // namespace zelto::JSONCEditor
