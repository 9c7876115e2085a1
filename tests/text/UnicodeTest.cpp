#include <gmock/gmock.h>

#include "text/Harmless.h"
#include "text/Number.h"
#include "text/Unicode.h"
#include "text/Words.h"

namespace text {
namespace {

TEST(Unicode, CountsCharactersAsPeopleSeeThem) {
  const std::pair<std::size_t, std::vector<std::string_view>> cases[] = {
      {0, {""}},
      {1, {"\r\n", "नि", "\u1100\u1161"}},
      {2, {"\r\r", "👩‍👩‍👧‍👦👍🏽", "🇩🇪🇫🇷", "漢字"}},
      {3, {"e\u0301t\u00E9", "a\xff\xfe"}},
      {5, {"zelto"}},
      {7, {"⚙︎toggle", "a\r\nb\rc\n\n"}},
      {11, {"\x1b[32mon\x1b[0m"}},
  };
  for (const auto& [count, texts] : cases) {
    for (const std::string_view text : texts) {
      EXPECT_EQ(clusterCount(text), count) << text;
      const auto pieces = clusters(text);
      EXPECT_EQ(pieces.size(), count) << text;
      EXPECT_EQ(joined({pieces.begin(), pieces.end()}, ""), text);
      EXPECT_EQ(clusterCount(padded(text, 12)), 12u) << text;
      EXPECT_EQ(clusterCount(clusterPrefix(text, 2)), std::min<std::size_t>(count, 2)) << text;
      EXPECT_TRUE(text.starts_with(clusterPrefix(text, 2)));
    }
  }
}

TEST(Unicode, RepairsWhatIsNotUTF8) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", ""},
      {"a⚙︎\U0010FFFF", "a⚙︎\U0010FFFF"},
      {"a\xff-", "a\uFFFD-"},
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

TEST(Harmless, LeavesATerminalNothingToObey) {
  const std::tuple<std::string_view, std::string_view, std::string_view> cases[] = {
      {"a\tb é漢\u00A0\u00AD\u2028\u2029\u202F\u2065\u206A\u200E", {}, {}},
      {"a\n\nb\n", {}, "a␊␊b␊"},
      {{"\0\x01\b\v\f\r\x1b\x1f\x7f", 9}, "␀␁␈␋␌␍␛␟␡", {}},
      {"\u0080\u0085\u009B\u009F", "\uFFFD\uFFFD\uFFFD\uFFFD", {}},
      {"\u202A\u202Ex\u2066\u2069", "\uFFFD\uFFFDx\uFFFD\uFFFD", {}},
      {"\x9b\x31m\xff\xe2\x80\n\xc2", "\uFFFD1m\uFFFD\uFFFD\uFFFD\n\uFFFD",
       "\uFFFD1m\uFFFD\uFFFD\uFFFD␊\uFFFD"},
  };
  for (const auto& [bytes, expected, line] : cases) {
    const auto shown = expected.empty() ? bytes : expected;
    EXPECT_EQ(harmless(bytes), shown);
    EXPECT_EQ(harmlessLine(bytes), line.empty() ? shown : line);
    EXPECT_EQ(isHarmless(bytes), bytes == shown) << shown;
  }
}

TEST(Unicode, ComparesWithoutCaseAndAcrossCompositions) {
  const auto areEqual = [](std::string_view pair) {
    const auto texts = split(pair, ' ');
    return equalIgnoringCase(texts[0], texts[1]);
  };
  for (const char* equal : {"WORK work", "STRASSE straße", "É e\u0301", "İ i\u0307", "ΣΑΣ σας", "\u212A k",
                            "a\u0323\u0307 A\u0307\u0323", "ﬀ FF", "\u1E9E ss"})
    EXPECT_TRUE(areEqual(equal)) << equal;
  for (const char* different : {"a b", "İ i", "é e", "work works", " \u200B"})
    EXPECT_FALSE(areEqual(different)) << different;
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

/// Each byte, wherever it stands among others.
TEST(Words, LookAtEachOfEightBytes) {
  for (unsigned place = 0; place < sizeof(Word); ++place) {
    for (unsigned byte = 0; byte < 256; ++byte) {
      for (const unsigned char other : {'!', 'z'}) {
        const Word mask = Word{0xFF} << 8 * place, word = (wordOf(other) & ~mask) | (Word{byte} << 8 * place);
        EXPECT_EQ(isASCII(word), byte < 0x80) << byte;
        EXPECT_EQ(isPrintable(word), byte >= 0x20 && byte < 0x80) << byte;
        EXPECT_EQ(hasControl(word), byte < 0x20) << byte;
        for (const unsigned char wanted : {'"', '\\', '\0', '\xFF'})
          EXPECT_EQ(contains(word, wanted), byte == wanted) << byte;
      }
    }
  }
  EXPECT_EQ(skipWords("12345678 2345678\n2345678", 0, isPrintable), 16u);
  EXPECT_EQ(skipWords("12345678", 1, isPrintable), 1u);
}

}  // namespace
}  // namespace text
