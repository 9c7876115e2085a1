// JSON that has been read: a document keeps the bytes as they came and beside them a tape (JSONTape.h) of one
// or two words for each value and key. No value is allocated, copied or destroyed by itself. Strings are
// views into the bytes, where their escapes have been replaced in place. Reading is strict (RFC 8259) and
// takes time linear in the bytes.
#pragma once

#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

#include "json/JSONNumber.h"
#include "json/JSONTape.h"
#include "text/GrowingBlock.h"

namespace json {

/// How deep arrays and objects may nest; a deeper text counts as not parsing.
inline constexpr std::size_t maxDepth = 512;

/// What a value is.
enum class Kind { null, boolean, number, string, array, object };

/// "object", "array", "string", "number", "boolean" or "null".
std::string_view nameOf(Kind kind);

class JSONElements;
struct JSONMemberView;

/// One value of a document, for as long as that lives. A value of another kind than is asked for has no
/// elements and no members.
class JSONView {
 public:
  /// JSON null.
  JSONView() : node(&nothing) {}

  Kind kind() const;
  bool isNull() const { return type() == tape::Type::null; }
  bool isArray() const { return type() == tape::Type::array; }
  bool isObject() const { return type() == tape::Type::object; }

  /// The value if it is of that kind.
  std::optional<bool> boolean() const;
  std::optional<JSONNumber> number() const;
  std::optional<std::string_view> string() const;

  /// Whether the value is a string that stands in JSON as it is, between quotes.
  bool isVerbatim() const { return type() == tape::Type::verbatim || type() == tape::Type::longVerbatim; }

  /// The elements of an array, in order.
  JSONElements elements() const;

  /// The members of an object, ascending by key (UTF-8 bytes, which is code point order), each key once: of
  /// equal ones the last.
  std::vector<JSONMemberView> members() const;

  /// The value of an object's member, of equal keys the last one's.
  std::optional<JSONView> find(std::string_view key) const;
  bool contains(std::string_view key) const { return find(key).has_value(); }
  /// The same, or null if there is none.
  JSONView operator[](std::string_view key) const { return find(key).value_or(JSONView()); }

 private:
  friend class JSONDocument;
  friend class JSONElements;
  friend class MemberOrder;
  static const tape::Word nothing;

  JSONView(const tape::Word* first, const char* text) : node(first), bytes(text) {}
  tape::Type type() const { return tape::typeOf(*node); }
  JSONView next() const { return {tape::after(node), bytes}; }
  std::string_view text() const;

  const tape::Word* node;
  const char* bytes = nullptr;
};

struct JSONMemberView {
  std::string_view key;
  JSONView value;
};

/// The elements of an array.
class JSONElements {
 public:
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = JSONView;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = JSONView;

    explicit Iterator(JSONView at) : element(at) {}
    JSONView operator*() const { return element; }
    Iterator& operator++() {
      element = element.next();
      return *this;
    }
    bool operator==(const Iterator& other) const { return element.node == other.element.node; }

   private:
    JSONView element;
  };

  JSONElements() = default;
  explicit JSONElements(JSONView array);
  Iterator begin() const { return Iterator(first); }
  Iterator end() const { return Iterator(last); }
  std::size_t size() const { return count; }
  bool empty() const { return count == 0; }

 private:
  JSONView first, last;
  std::size_t count = 0;
};

/// The members of one object within another, each object's in the order of their keys. A stack, so that
/// whoever walks through objects finds memory for the next.
class MemberOrder {
 public:
  struct Member {
    std::uint64_t prefix;  ///< the first bytes of the key, as a number of the same order
    JSONView key;
    JSONView value() const { return key.next(); }
  };

  /// Adds the members of `object` as `JSONView::members` has them, and returns how many.
  std::size_t push(JSONView object);
  /// Takes away the last `count` members.
  void pop(std::size_t count) { members.resize(members.size() - count); }
  /// The member `place` from the end, from 1 on. Valid until the next `push`.
  const Member& fromEnd(std::size_t place) const { return members[members.size() - place]; }

 private:
  std::vector<Member> members;
};

/// A JSON text that has been read. A default one is JSON null.
class JSONDocument {
 public:
  JSONDocument() = default;

  /// The document that stands in `received` from `from` on, or nothing if that is no strict JSON text
  /// (UTF-8). Integers that fit 64 bits stay integers, other numbers become floating point; a number too
  /// large for that does not parse. Raises `std::bad_alloc`.
  static std::optional<JSONDocument> parse(text::Bytes received, std::size_t from = 0);
  /// The same for a copy of `text`.
  static std::optional<JSONDocument> parse(std::string_view text) { return parse(text::Bytes(text)); }

  /// Becomes the document that a copy of `text` holds, in the memory of the last one, and says whether it is
  /// strict JSON; otherwise it becomes null. Raises `std::bad_alloc`. Views end here.
  bool read(std::string_view text);
  /// Becomes null. Memory of usual size stays for the next `read`.
  void clear();

  JSONView root() const& { return words.size() == 0 ? JSONView() : JSONView(words.data(), bytes.data()); }
  operator JSONView() const& { return root(); }
  // A view does not outlive its document.
  JSONView root() const&& = delete;
  operator JSONView() const&& = delete;

 private:
  bool readBytes(std::size_t from);

  text::Bytes bytes;
  text::GrowingBlock<tape::Word> words;
};

inline std::string_view JSONView::text() const {
  const tape::Word rest = tape::restOf(*node);
  if (type() <= tape::Type::escaped) return {bytes + (rest >> tape::lengthBits), rest & tape::lengthMask};
  return {bytes + node[1], rest};
}

inline std::optional<std::string_view> JSONView::string() const {
  using tape::Type;
  const bool isString = type() == Type::verbatim || type() == Type::escaped || type() == Type::longVerbatim ||
                        type() == Type::longEscaped;
  return isString ? std::optional(text()) : std::nullopt;
}

}  // namespace json
