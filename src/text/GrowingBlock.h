// A block of plain elements that grows as a whole. Where the system can, a large one grows by taking more
// pages, not by copying, so that no more memory is touched than it holds.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

namespace text {

template <class Element>
requires std::is_trivially_copyable_v<Element>
class GrowingBlock {
 public:
  GrowingBlock() = default;
  explicit GrowingBlock(std::string_view bytes) requires std::is_same_v<Element, char> { append(bytes); }
  GrowingBlock(GrowingBlock&& other) noexcept
      : elements(std::move(other.elements)),
        count(std::exchange(other.count, 0)),
        capacity(std::exchange(other.capacity, 0)) {}
  GrowingBlock& operator=(GrowingBlock&& other) noexcept {
    elements = std::move(other.elements);
    count = std::exchange(other.count, 0);
    capacity = std::exchange(other.capacity, 0);
    return *this;
  }

  Element* data() { return elements.get(); }
  const Element* data() const { return elements.get(); }
  std::size_t size() const { return count; }
  const Element* begin() const { return data(); }
  const Element* end() const { return data() + count; }
  Element& operator[](std::size_t place) { return elements[place]; }

  /// Where the next elements go: room for `more` of them, not yet part of the block. Pointers into the block
  /// end here. Raises `std::bad_alloc`.
  Element* room(std::size_t more) {
    if (capacity - count < more) grow(more);
    return elements.get() + count;
  }
  /// Makes the first `more` elements of the room part of the block.
  void take(std::size_t more) { count += more; }
  /// Raises `std::bad_alloc`.
  void append(const Element& element) {
    *room(1) = element;
    ++count;
  }
  /// Raises `std::bad_alloc`.
  void append(std::string_view bytes) requires std::is_same_v<Element, char> {
    bytes.copy(room(bytes.size()), bytes.size());
    count += bytes.size();
  }
  /// Takes the elements away. The memory stays for the next ones, unless it is large.
  void clear() {
    count = 0;
    if (capacity * sizeof(Element) > keptBytes) *this = GrowingBlock();
  }

 private:
  static constexpr std::size_t keptBytes = 1 << 20;

  struct Free {
    void operator()(Element* block) const { std::free(block); }
  };

  void grow(std::size_t more) {
    constexpr std::size_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(Element);
    if (more > most - count) throw std::bad_alloc();
    const std::size_t wanted = std::max(count + more, std::min(2 * capacity, most));
    auto* const moved = static_cast<Element*>(std::realloc(elements.get(), wanted * sizeof(Element)));
    if (moved == nullptr) throw std::bad_alloc();
    static_cast<void>(elements.release());
    elements.reset(moved);
    capacity = wanted;
  }

  std::unique_ptr<Element[], Free> elements;
  std::size_t count = 0;
  std::size_t capacity = 0;
};

/// Bytes that are received, read or gathered.
using Bytes = GrowingBlock<char>;

}  // namespace text
