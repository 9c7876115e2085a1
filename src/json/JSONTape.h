// How a document keeps its values: as words of 8 bytes one after the other, in the order of the text. The
// first word of a value or key tells its type in its lowest bits; what the others hold depends on the type.
// Elements follow their array; keys follow their object, each before its value.
#pragma once

#include <cstdint>

namespace json::tape {

using Word = std::uint64_t;

/// In the order of how many words they take.
enum class Type : std::uint8_t {
  // One word.
  null,
  no,
  yes,
  integer,   ///< a signed integer
  verbatim,  ///< a string that needs no escape: its length, and above that its place in the bytes
  escaped,   ///< a string that may need escapes, likewise
  // Two words.
  wideInteger,   ///< a signed integer, in the second word
  largeInteger,  ///< an unsigned one
  floatingPoint,
  longVerbatim,  ///< a string's length; its place is in the second word
  longEscaped,
  // As many words as the second says, with all that is within.
  array,   ///< how many elements
  object,  ///< how many members
};

constexpr int typeBits = 4;
constexpr int lengthBits = 24, placeBits = 64 - typeBits - lengthBits;
constexpr Word lengthMask = (Word{1} << lengthBits) - 1;

constexpr Word head(Type type, Word rest = 0) {
  return rest << typeBits | static_cast<Word>(type);
}
constexpr Type typeOf(Word head) {
  return static_cast<Type>(head & ((1 << typeBits) - 1));
}
constexpr Word restOf(Word head) {
  return head >> typeBits;
}
/// The node after the value at `node` and all that is within it.
inline const Word* after(const Word* node) {
  const Type type = typeOf(*node);
  if (type <= Type::escaped) return node + 1;
  return type <= Type::longEscaped ? node + 2 : node + node[1];
}

}  // namespace json::tape
