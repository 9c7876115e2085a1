#include "text/Harmless.h"

#include "text/Unicode.h"

namespace text {
namespace {

/// U+2400 to U+2421, the pictures of the ASCII control characters.
void appendPicture(std::string& out, char32_t control) {
  constexpr char32_t deleteCharacter = 0x7F, deletePicture = 0x21;
  const char32_t place = control == deleteCharacter ? deletePicture : control;
  out.append({'\xE2', '\x90', static_cast<char>(0x80 + place)});
}

std::string shown(std::string_view bytes, bool keepsLines) {
  std::string result;
  result.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size();) {
    const CodePoint current = firstCodePoint(bytes.substr(at));
    if (current.value < 0x80 &&
        (isObeyedByTerminals(current.value) || (current.value == '\n' && !keepsLines))) {
      appendPicture(result, current.value);
    } else if (!current.valid || isObeyedByTerminals(current.value)) {
      result += "\uFFFD";
    } else {
      result += bytes.substr(at, current.length);
    }
    at += current.length;
  }
  return result;
}

}  // namespace

bool isObeyedByTerminals(char32_t codePoint) {
  if (codePoint < 0x20) return codePoint != '\n' && codePoint != '\t';
  return (codePoint >= 0x7F && codePoint <= 0x9F) || (codePoint >= 0x202A && codePoint <= 0x202E) ||
         (codePoint >= 0x2066 && codePoint <= 0x2069);
}

bool isHarmless(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const CodePoint current = firstCodePoint(bytes.substr(at));
    if (!current.valid || isObeyedByTerminals(current.value)) return false;
    at += current.length;
  }
  return true;
}

std::string harmless(std::string_view bytes) {
  return shown(bytes, true);
}

std::string harmlessLine(std::string_view bytes) {
  return shown(bytes, false);
}

}  // namespace text
