#include "install/JSONCScanner.h"

#include "text/Unicode.h"

namespace zelto::JSONCEditor {
namespace {

/// The position of the quote that ends the string whose content begins at `position`; nothing if it does not
/// end.
std::optional<std::size_t> stringEnd(std::string_view text, std::size_t position) {
  for (; position < text.size(); ++position) {
    if (text[position] == '"') return position;
    if (text[position] == '\\') ++position;
  }
  return std::nullopt;
}

/// The position after the comment at `start`, line break excluded; `start` itself if there is no comment.
std::size_t commentEnd(std::string_view text, std::size_t start) {
  if (text.substr(start).starts_with("//")) {
    std::size_t end = start;
    while (end < text.size() && lineBreakLength(text, end) == 0) ++end;
    return end;
  }
  if (!text.substr(start).starts_with("/*")) return start;
  // The asterisk that opens the comment may close it as well.
  const std::size_t close = text.find("*/", start + 1);
  return close == std::string_view::npos ? text.size() : close + 2;
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
  std::optional<std::size_t> pendingComma;
  for (std::size_t i = 0; i < text.size(); ++i) {
    switch (text[i]) {
      case ' ':
      case '\t':
      case '\n':
      case '\r':
        continue;
      case ',':
        pendingComma = i;
        continue;
      case '}':
      case ']':
        if (pendingComma) text[*pendingComma] = ' ';
        break;
      case '"':
        i = stringEnd(text, i + 1).value_or(text.size());
        break;
      case '/':
        if (const std::size_t end = commentEnd(text, i); end > i) {
          blank(text, i, end);
          i = end - 1;
          continue;
        }
        break;
      default:
        break;
    }
    pendingComma.reset();
  }
  return text;
}

std::size_t Scanner::skipWhitespace(std::size_t position) const {
  while (position < text.size()) {
    if (text[position] > ' ' && text[position] < '\x7F') break;
    const auto [value, length, valid] = text::firstCodePoint(text.substr(position));
    if (!text::isWhitespace(value)) break;
    position += length;
  }
  return position;
}

std::size_t Scanner::trimmedEnd(std::size_t position) const {
  const std::string_view before = text::trimmed(text.substr(0, position));
  return before.empty() ? 0 : static_cast<std::size_t>(before.data() + before.size() - text.data());
}

std::optional<std::size_t> Scanner::firstBrace(std::size_t start) const {
  const std::size_t position = skipWhitespace(start);
  return holds(position, '{') ? std::optional(position) : std::nullopt;
}

std::optional<std::size_t> Scanner::valueEnd(std::size_t start) const {
  if (holds(start, '{') || holds(start, '[')) return bracketEnd(start);
  if (holds(start, '"')) {
    const auto quote = stringEnd(text, start + 1);
    return quote ? std::optional(*quote + 1) : std::nullopt;
  }
  const std::size_t end = text.find_first_of(",}]", start);
  return start + text::trimmed(text.substr(start, end == std::string_view::npos ? end : end - start)).size();
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

std::optional<Member> Scanner::memberAt(std::size_t position) const {
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

std::optional<Member> Scanner::memberAfter(const Member& member) const {
  const std::size_t next = skipWhitespace(member.end);
  return memberAt(holds(next, ',') ? next + 1 : next);
}

std::optional<Member> Scanner::findMember(std::size_t open, std::string_view key) const {
  const std::string quoted = '"' + std::string(key) + '"';
  auto member = memberAt(open + 1);
  while (member && !text.substr(member->start).starts_with(quoted)) member = memberAfter(*member);
  return member;
}

std::size_t Scanner::memberCount(std::size_t open) const {
  std::size_t count = 0;
  for (auto member = memberAt(open + 1); member; member = memberAfter(*member)) ++count;
  return count;
}

}  // namespace zelto::JSONCEditor
