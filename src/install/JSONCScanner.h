// Finds the members of an object in JSONC text by scanning, without building a tree, so that broken text
// elsewhere in the file does no harm. Positions and lengths are in bytes of UTF-8.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zelto::JSONCEditor {

/// `text` in which each byte of a comment, its line breaks apart, and each trailing comma is a space. The
/// length stays, so a position found in the result is a position in `text`.
std::string blankComments(std::string text);

/// The length of the line break (U+000A to U+000D, U+0085, U+2028, U+2029) at `position`, 0 if there is none.
/// CR and LF are a line break each.
std::size_t lineBreakLength(std::string_view text, std::size_t position);

/// One member of an object: where its key's opening quote, its value, and the text after its value begin.
struct Member {
  std::size_t start;
  std::size_t value;
  std::size_t end;
};

/// Reads JSONC text, which must outlive it, as `blankComments` would leave it, mostly without making that
/// copy: it passes over comments and trailing commas as over white space. Nothing here recurses, so deep
/// nesting cannot exhaust the stack.
class Scanner {
 public:
  explicit Scanner(std::string_view source) : text(source) {}
  Scanner(const Scanner&) = delete;

  /// The first position from `position` on that holds no white space, no comment and no trailing comma; the
  /// text's length if there is none.
  std::size_t skipWhitespace(std::size_t position) const;
  /// The first non-white character from `start` on, if it is a "{".
  std::optional<std::size_t> firstBrace(std::size_t start) const;
  /// The position after the value that begins at `start`; nothing if it does not end.
  std::optional<std::size_t> valueEnd(std::size_t start);
  /// The first member with that raw key, escapes not resolved, of the object that opens at `open`. Broken
  /// syntax ends the search, without an error.
  std::optional<Member> findMember(std::size_t open, std::string_view key);
  /// How many members the object that opens at `open` has, up to broken syntax.
  std::size_t memberCount(std::size_t open);

  /// Whether `character` stands at `position`, which is in no comment.
  bool holds(std::size_t position, char character) const {
    return position < text.size() && text[position] == character;
  }

 private:
  std::size_t skipComment(std::size_t position) const;
  std::size_t skipComments(std::size_t position) const;
  bool holdsTrailingComma(std::size_t position) const;
  std::size_t wordEnd(std::size_t start);
  std::optional<std::size_t> bracketEnd(std::size_t start) const;
  std::optional<Member> memberAt(std::size_t position);
  std::optional<Member> memberAfter(const Member& member);
  void readBlanked();

  std::string_view text;               ///< the source, or the copy
  std::optional<std::string> blanked;  ///< the copy, once it is needed
};

}  // namespace zelto::JSONCEditor
