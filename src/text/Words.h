// Passes over stretches of plain bytes eight at a time. It may stop up to seven bytes early, never late, so
// whoever uses it goes on byte by byte and sees each byte that matters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace text {

/// Eight bytes, in either order.
using Word = std::uint64_t;

/// A word of eight times that byte.
constexpr Word wordOf(unsigned char byte) {
  return 0x0101010101010101 * Word{byte};
}

/// Whether all eight bytes are ASCII.
constexpr bool isASCII(Word word) {
  return (word & wordOf(0x80)) == 0;
}

/// Whether all eight bytes are ASCII and none is a control character but U+007F.
constexpr bool isPrintable(Word word) {
  return ((word | (word - wordOf(' '))) & wordOf(0x80)) == 0;
}

/// Whether one of the eight bytes is a control character below U+0020.
constexpr bool hasControl(Word word) {
  // Where a byte is below ' ', the subtraction borrows into its high bit.
  return ((word - wordOf(' ')) & ~word & wordOf(0x80)) != 0;
}

/// Whether one of the eight bytes is `byte`.
constexpr bool contains(Word word, unsigned char byte) {
  const Word zeroWhereEqual = word ^ wordOf(byte);
  return ((zeroWhereEqual - wordOf(1)) & ~zeroWhereEqual & wordOf(0x80)) != 0;
}

/// The first position from `position` on, in steps of a word, at which `isPlain` does not hold of the word,
/// or at which less than a word is left.
template <class IsPlain>
std::size_t skipWords(std::string_view text, std::size_t position, IsPlain isPlain) {
  Word word = 0;
  for (; text.size() - position >= sizeof word; position += sizeof word) {
    std::memcpy(&word, text.data() + position, sizeof word);
    if (!isPlain(word)) break;
  }
  return position;
}

}  // namespace text
