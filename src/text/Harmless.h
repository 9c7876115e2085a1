// Text from elsewhere on its way to a terminal, which would obey part of it: move the cursor, change the
// window's title, or show the text in another order than it is stored.
#pragma once

#include <string>
#include <string_view>

namespace text {

/// Whether a terminal acts on the code point instead of showing it: the control characters (C0, DEL and C1)
/// but line feed and tab, and the bidirectional embeddings, overrides and isolates (Unicode Standard Annex
/// #9).
bool isObeyedByTerminals(char32_t codePoint);

/// Whether `bytes` are well-formed UTF-8 without such code points.
bool isHarmless(std::string_view bytes);

/// `bytes` with each such code point as one visible character: a control picture (U+2400 and the following)
/// for C0 and DEL, U+FFFD for the others and for each ill-formed byte.
std::string harmless(std::string_view bytes);

/// The same for a text that has to stay on its line: a line feed shows as U+240A.
std::string harmlessLine(std::string_view bytes);

}  // namespace text
