// Text as people see it: UTF-8 checks and repair, grapheme clusters, caseless comparison, white space.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace text {

/// One decoded code point: its value and the number of bytes it takes. Bytes that are not UTF-8 decode one at
/// a time as U+FFFD with `valid` false.
struct CodePoint {
  char32_t value;
  std::size_t length;
  bool valid;
};

/// The code point at the start of `bytes`, which must not be empty. Surrogates and overlong forms are
/// invalid.
CodePoint firstCodePoint(std::string_view bytes);

/// Whether all of `bytes` is well-formed UTF-8.
bool isUTF8(std::string_view bytes);

/// `bytes` with each ill-formed byte replaced by U+FFFD.
std::string repairedUTF8(std::string_view bytes);

/// The user-perceived characters of `utf8`, in order, as views into it (extended grapheme clusters, Unicode
/// Standard Annex #29). CR LF is one.
std::vector<std::string_view> clusters(std::string_view utf8);

/// How many user-perceived characters `utf8` holds.
std::size_t clusterCount(std::string_view utf8);

/// The first `count` user-perceived characters of `utf8`, all of it if it has fewer.
std::string_view clusterPrefix(std::string_view utf8, std::size_t count);

/// `utf8`, padded with blanks to `width` user-perceived characters.
std::string padded(std::string_view utf8, std::size_t width);

/// The form in which texts that differ only by case or by canonical equivalence are equal (full case folding
/// between two canonical decompositions).
std::string folded(std::string_view utf8);

/// Whether the two texts are equal, ignoring case.
bool equalIgnoringCase(std::string_view a, std::string_view b);

/// `utf8` with every code point in lower case (simple mapping).
std::string lowercased(std::string_view utf8);
/// The same in upper case.
std::string uppercased(std::string_view utf8);

/// Whether the code point is Unicode white space (property White_Space), line breaks included.
bool isWhitespace(char32_t codePoint);

/// `utf8` without the white space at both ends.
std::string_view trimmed(std::string_view utf8);

/// The pieces of `text` between the separators, empty ones kept; an empty text is one empty piece.
std::vector<std::string_view> split(std::string_view text, char separator);

/// The pieces with `separator` between them.
std::string joined(const std::vector<std::string>& pieces, std::string_view separator);

}  // namespace text
