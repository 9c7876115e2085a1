#include "text/Unicode.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <utf8proc.h>

#include "text/Words.h"

namespace text {
namespace {

constexpr bool isASCII(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}

bool isASCII(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return isASCII(byte); });
}

char asciiLower(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

void appendUTF8(std::string& out, char32_t codePoint) {
  utf8proc_uint8_t bytes[4];
  const auto length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(codePoint), bytes);
  out.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

/// `utf8` with every code point put through `map`; ASCII does not touch utf8proc's tables.
template <class MapASCII>
std::string mapped(std::string_view utf8, MapASCII mapASCII, utf8proc_int32_t (*map)(utf8proc_int32_t)) {
  std::string result;
  for (std::size_t at = 0; at < utf8.size();) {
    const CodePoint current = firstCodePoint(utf8.substr(at));
    if (current.value < 0x80) {
      result += mapASCII(utf8[at]);
    } else {
      appendUTF8(result, static_cast<char32_t>(map(static_cast<utf8proc_int32_t>(current.value))));
    }
    at += current.length;
  }
  return result;
}

/// Calls `visit` with the byte offset of each cluster's start, in order, until it returns false.
template <class Visit>
void forEachClusterStart(std::string_view utf8, Visit visit) {
  utf8proc_int32_t state = 0;
  char32_t previous = 0;
  for (std::size_t at = 0; at < utf8.size();) {
    const CodePoint current = firstCodePoint(utf8.substr(at));
    bool breaks = at == 0;
    if (!breaks && previous < 0x80 && current.value < 0x80) {
      // Decided without utf8proc's large tables, whose pages a start would otherwise have to load.
      breaks = previous != '\r' || current.value != '\n';
      state = 0;
    } else if (!breaks) {
      breaks = utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(previous),
                                                static_cast<utf8proc_int32_t>(current.value), &state);
    }
    if (breaks && !visit(at)) return;
    previous = current.value;
    at += current.length;
  }
}

}  // namespace

CodePoint firstCodePoint(std::string_view bytes) {
  if (isASCII(bytes.front())) return {static_cast<char32_t>(bytes.front()), 1, true};
  utf8proc_int32_t value = 0;
  const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()),
                                       static_cast<utf8proc_ssize_t>(bytes.size()), &value);
  if (length < 1) return {U'\uFFFD', 1, false};
  return {static_cast<char32_t>(value), static_cast<std::size_t>(length), true};
}

bool isUTF8(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const CodePoint current = firstCodePoint(bytes.substr(at));
    if (!current.valid) return false;
    at = skipWords(bytes, at + current.length, [](Word word) { return isASCII(word); });
  }
  return true;
}

std::string repairedUTF8(std::string_view bytes) {
  if (isUTF8(bytes)) return std::string(bytes);
  std::string result;
  for (std::size_t at = 0; at < bytes.size();) {
    const CodePoint current = firstCodePoint(bytes.substr(at));
    appendUTF8(result, current.value);
    at += current.length;
  }
  return result;
}

std::vector<std::string_view> clusters(std::string_view utf8) {
  std::vector<std::string_view> result;
  std::size_t start = 0;
  forEachClusterStart(utf8, [&](std::size_t at) {
    if (at > start) result.push_back(utf8.substr(start, at - start));
    start = at;
    return true;
  });
  if (!utf8.empty()) result.push_back(utf8.substr(start));
  return result;
}

std::size_t clusterCount(std::string_view utf8) {
  // CR LF is the only cluster of several ASCII characters.
  if (isASCII(utf8) && utf8.find('\r') == std::string_view::npos) return utf8.size();
  std::size_t count = 0;
  forEachClusterStart(utf8, [&](std::size_t) { return ++count, true; });
  return count;
}

std::string_view clusterPrefix(std::string_view utf8, std::size_t count) {
  std::size_t seen = 0;
  std::size_t end = utf8.size();
  forEachClusterStart(utf8, [&](std::size_t at) {
    if (seen++ < count) return true;
    end = at;
    return false;
  });
  return utf8.substr(0, end);
}

std::string padded(std::string_view utf8, std::size_t width) {
  std::string result(utf8);
  if (const std::size_t count = clusterCount(utf8); count < width) result.append(width - count, ' ');
  return result;
}

std::string folded(std::string_view utf8) {
  if (isASCII(utf8)) return lowercased(utf8);
  // Folding can undo a decomposition and the other way round, so the text is decomposed before and after.
  std::string current = repairedUTF8(utf8);
  for (const int options : {0, static_cast<int>(UTF8PROC_CASEFOLD), 0}) {
    utf8proc_uint8_t* mapped = nullptr;
    const auto length =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(current.data()),
                     static_cast<utf8proc_ssize_t>(current.size()), &mapped,
                     static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_DECOMPOSE | options));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owned(mapped, &std::free);
    if (length < 0) return current;
    current.assign(reinterpret_cast<const char*>(mapped), static_cast<std::size_t>(length));
  }
  return current;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return folded(a) == folded(b);
}

std::string lowercased(std::string_view utf8) {
  return mapped(utf8, asciiLower, utf8proc_tolower);
}

std::string uppercased(std::string_view utf8) {
  const auto asciiUpper = [](char byte) {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
  };
  return mapped(utf8, asciiUpper, utf8proc_toupper);
}

bool isWhitespace(char32_t codePoint) {
  return (codePoint >= 0x09 && codePoint <= 0x0D) || codePoint == 0x20 || codePoint == 0x85 ||
         codePoint == 0xA0 || codePoint == 0x1680 || (codePoint >= 0x2000 && codePoint <= 0x200A) ||
         codePoint == 0x2028 || codePoint == 0x2029 || codePoint == 0x202F || codePoint == 0x205F ||
         codePoint == 0x3000;
}

std::string_view trimmed(std::string_view utf8) {
  while (!utf8.empty()) {
    const CodePoint first = firstCodePoint(utf8);
    if (!isWhitespace(first.value)) break;
    utf8.remove_prefix(first.length);
  }
  while (!utf8.empty()) {
    std::size_t start = utf8.size() - 1;
    while (start > 0 && utf8.size() - start < 4 && (utf8[start] & 0xC0) == 0x80) --start;
    if (!isWhitespace(firstCodePoint(utf8.substr(start)).value)) break;
    utf8.remove_suffix(utf8.size() - start);
  }
  return utf8;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const std::size_t at = text.find(separator);
    pieces.push_back(text.substr(0, at));
    if (at == std::string_view::npos) return pieces;
    text.remove_prefix(at + 1);
  }
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
  std::string result;
  for (const std::string& piece : pieces) {
    if (&piece != &pieces.front()) result += separator;
    result += piece;
  }
  return result;
}

}  // namespace text
