// Wrapping and indenting of help texts. All widths count user-perceived characters, one column each.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ArgumentParser {

/// `text` in lines of at most `width` characters, the `indent` blanks before each non-empty one included.
/// Cuts at the last blank that fits; a longer word stays whole. Empty if `width` leaves no room after the
/// indent.
std::string wrapped(std::string_view text, std::int64_t width, int indent);

/// `text` after `label`, its further non-empty lines indented by as many blanks as the label has bytes
/// (ASCII).
std::string hangingIndented(std::string_view label, std::string_view text);

/// The size of the screen in characters: the variables COLUMNS and LINES, else the terminal of standard
/// output, else 80 and 25.
struct ScreenSize {
  std::int64_t columns;
  std::int64_t rows;
};
ScreenSize screenSize();

}  // namespace ArgumentParser
