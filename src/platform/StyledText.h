// Text for standard output. On a terminal its only control characters are the escape sequences that `styled`
// adds: those of foreign text have been made visible.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class StyledText {
 public:
  StyledText() = default;
  /// Text from anywhere. Where standard output is a terminal, what a terminal would obey becomes visible
  /// (`text::harmless`); elsewhere all bytes stay unchanged.
  StyledText(std::string plain);
  StyledText(std::string_view plain) : StyledText(std::string(plain)) {}
  StyledText(const char* plain) : StyledText(std::string(plain)) {}
  /// The same for text that has to stay on one line: on a terminal a line feed becomes visible too.
  static StyledText oneLine(std::string_view plain);

  /// The text in a style: between the SGR sequence of that code and the one that ends all styles (ECMA-48).
  StyledText styled(int code) const;
  /// The text, padded with blanks to `width` user-perceived characters.
  StyledText padded(std::size_t width) const;
  /// How many user-perceived characters the text holds, counting those of escape sequences.
  std::size_t width() const;
  bool empty() const { return bytes.empty(); }
  std::size_t size() const { return bytes.size(); }
  /// The pieces between line feeds, empty ones kept.
  std::vector<StyledText> lines() const;

  StyledText& append(const StyledText& more) { return append(more, 0, more.size()); }
  /// Appends `length` bytes of `from`, which were one text when they were appended to it.
  StyledText& append(const StyledText& from, std::size_t place, std::size_t length);
  StyledText& appendBlanks(std::size_t count);
  void clear() { bytes.clear(); }
  friend StyledText operator+(StyledText left, const StyledText& right) {
    left.append(right);
    return left;
  }
  friend void print(const StyledText& text);

 private:
  std::string bytes;
};

}  // namespace platform
