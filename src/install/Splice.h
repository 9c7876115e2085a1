// The one change that an edit makes: what it leaves alone, it cannot reach.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace zelto {

/// A text in which one stretch gives way to something else. The text must outlive it, and is not copied: the
/// file may be large, and the change is small.
class Splice {
 public:
  /// Puts `text` in place of the `length` bytes from `position` on of `source`.
  Splice(std::string_view source, std::size_t position, std::size_t length, std::string text)
      : before(source.substr(0, position)),
        replaced(source.substr(position, length)),
        replacement(std::move(text)),
        after(source.substr(position + length)) {}

  /// Whether the result is the text as it was.
  bool changesNothing() const { return replaced == replacement; }

  /// The result, in pieces to be put one after the other; views of this object and the text.
  std::array<std::string_view, 3> pieces() const { return {before, replacement, after}; }

  /// The result as a whole.
  std::string applied() const {
    std::string result;
    result.reserve(before.size() + replacement.size() + after.size());
    for (const std::string_view piece : pieces()) result += piece;
    return result;
  }

 private:
  std::string_view before;
  std::string_view replaced;
  std::string replacement;
  std::string_view after;
};

}  // namespace zelto
