#include <gmock/gmock.h>

#include "text/Number.h"
#include "text/Unicode.h"

namespace text {
namespace {

TEST(Unicode, CountsCharactersAsPeopleSeeThem) {
  const std::pair<std::string_view, std::size_t> cases[] = {
      {"", 0},
      {"zelto", 5},
      {"⚙︎toggle", 7},
      {"e\u0301t\u00E9", 3},
      {"\r\n", 1},
      {"\r\r", 2},
      {"a\r\nb\rc\n\n", 7},
      {"👩‍👩‍👧‍👦👍🏽", 2},
      {"🇩🇪🇫🇷", 2},
      {"漢字", 2},
      {"नि", 1},
      {"\u1100\u1161", 1},
      {"\x1b[32mon\x1b[0m", 11},
      {"a\xff\xfe", 3},
  };
  for (const auto& [text, count] : cases) {
    EXPECT_EQ(clusterCount(text), count) << text;
    const auto pieces = clusters(text);
    EXPECT_EQ(pieces.size(), count) << text;
    EXPECT_EQ(joined({pieces.begin(), pieces.end()}, ""), text);
    EXPECT_EQ(clusterCount(padded(text, 12)), 12u) << text;
    EXPECT_EQ(clusterCount(clusterPrefix(text, 2)), std::min<std::size_t>(count, 2)) << text;
    EXPECT_TRUE(text.starts_with(clusterPrefix(text, 2)));
  }
}

TEST(Unicode, RepairsWhatIsNotUTF8) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", ""},
      {"a⚙︎\U0010FFFF", "a⚙︎\U0010FFFF"},
      {"a\xff"
       "b",
       "a\uFFFDb"},
      {"\xc0\xaf", "\uFFFD\uFFFD"},                      // overlong
      {"\xed\xa0\x80", "\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xf4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond Unicode
      {"\xe2\x9a", "\uFFFD\uFFFD"},                      // cut off
      {"\xe2\x9a⚙", "\uFFFD\uFFFD⚙"},
  };
  for (const auto& [bytes, repaired] : cases) {
    EXPECT_EQ(repairedUTF8(bytes), repaired);
    EXPECT_EQ(isUTF8(bytes), bytes == repaired) << repaired;
  }
}

TEST(Unicode, ComparesWithoutCaseAndAcrossCompositions) {
  const char* const equal[][2] = {{"WORK", "work"},
                                  {"STRASSE", "straße"},
                                  {"É", "e\u0301"},
                                  {"İ", "i\u0307"},
                                  {"ΣΑΣ", "σας"},
                                  {"\u212A", "k"},
                                  {"a\u0323\u0307", "A\u0307\u0323"},
                                  {"ﬀ", "FF"},
                                  {"\u1E9E", "ss"}};
  for (const auto& [a, b] : equal) EXPECT_TRUE(equalIgnoringCase(a, b)) << a << " " << b;
  const char* const different[][2] = {{"a", "b"}, {"İ", "i"}, {"é", "e"}, {"work", "works"}, {"", "\u200B"}};
  for (const auto& [a, b] : different) EXPECT_FALSE(equalIgnoringCase(a, b)) << a << " " << b;
  EXPECT_EQ(lowercased("YES Ä ẞ"), "yes ä ß");
}

TEST(Unicode, TrimsUnicodeWhiteSpace) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"\u3000 a \t b\u00A0\u2028\r\n\v", "a \t b"},
      {" \n\u0085\u2003", ""},
      {"\u200Ba\uFEFF", "\u200Ba\uFEFF"},
      {"", ""},
      {"ü\n", "ü"},
      {" \xff ", "\xff"}};
  for (const auto& [text, trim] : cases) EXPECT_EQ(trimmed(text), trim) << text;
}

TEST(Number, IsDigitsWithAnOptionalSign) {
  const std::pair<std::string_view, std::optional<int>> cases[] = {
      {"0", 0},           {"007", 7}, {"+1", 1},   {"-1", -1},  {"2147483647", 2147483647},
      {"2147483648", {}}, {"", {}},   {"+", {}},   {"+-1", {}}, {"-+1", {}},
      {" 1", {}},         {"1 ", {}}, {"0x1", {}}, {"1.0", {}}};
  for (const auto& [digits, value] : cases) EXPECT_EQ(decimal<int>(digits), value) << digits;
}

}  // namespace
}  // namespace text
