#include <cmath>
#include <limits>
#include <random>

#include <gmock/gmock.h>

#include "json/JSONText.h"
#include "support/Surroundings.h"

namespace json {
namespace {

TEST(JSONText, KeepsTheKindsOfNumbersApart) {
  const auto kindOf = [](const JSONNumber& number) {
    if (number.floatingPoint()) return "floating";
    return number.exactInteger() ? "integer" : "large";
  };
  // The source, its kind, what a person is shown, and what is written.
  for (const auto& row : support::rowsIn(SOURCES "/numbers.json")) {
    const JSONDocument value = JSONDocument::parse(row[0]).value();
    const JSONNumber number = value.root().number().value();
    const std::vector<std::string> found{row[0], kindOf(number), number.text(), text(value, compact)};
    EXPECT_EQ(found, row);
  }
}

TEST(JSONText, ReadsBackEveryFloat) {
  std::mt19937_64 bits(1);
  for (int i = 0; i < 20000; ++i) {
    const double number = std::bit_cast<double>(bits());
    if (!std::isfinite(number)) continue;
    const std::string written = text(number, compact).value();
    EXPECT_EQ(parse(written).value().number()->real(), number) << written;
    EXPECT_EQ(parse(JSONNumber(number).text()).value().number()->real(), number) << written;
  }
  EXPECT_FALSE(text(JSONArray{std::numeric_limits<double>::infinity()}, compact));
}

TEST(JSONText, RefusesWhatIsNotStrictJSON) {
  const std::string_view bad[] = {
      "",       " ",        "1e400",   "[-1e400]",    "01",          "+1",
      ".5",     "5.",       "NaN",     "[1,]",        "{\"a\":1,}",  "'a'",
      "//\n1",  "1 2",      "tru",     "\"\\ud800\"", "\"\\udc00\"", "\"\\ud800\\u0041\"",
      "\"\n\"", "\"\xff\"", "\"\\x\"", "{\"a\" 1}",   "{1:1}",       "[",
      "\"a"};
  for (const auto text : bad) EXPECT_FALSE(parse(text)) << text;
  const auto nested = [](std::size_t depth, std::string_view open, char close) {
    std::string text;
    while (text.size() < depth * open.size()) text += open;
    return text + "1" + std::string(depth, close);
  };
  for (const auto& [open, close] : {std::pair("[", ']'), std::pair("{\"a\":", '}')}) {
    const std::string deepest = nested(512, open, close);
    EXPECT_EQ(text(parse(deepest).value(), compact), deepest);
    for (const std::size_t depth : {513u, 1u << 20}) EXPECT_FALSE(parse(nested(depth, open, close)));
  }
}

TEST(JSONText, WritesKeysSortedAndTextsEscaped) {
  const auto value = parse(
      "{\"b\":[1,[],{}],\"a\":\"/"
      "\\u0001\\\"\\\\\\n\\ud83d\\ude00\\u00e9\\u007f\",\"c\":{\"y\":null,\"x\":true},\"b\":[]}");
  EXPECT_EQ(value->object()->size(), 3u);
  EXPECT_EQ(text(*value, compact),
            "{\"a\":\"/\\u0001\\\"\\\\\\n😀é\x7f\",\"b\":[],\"c\":{\"x\":true,\"y\":null}}");
  EXPECT_EQ(text(*parse(R"({"b":[1,[]],"Z":{},"a":{"x":"a/b"}})"), pretty),
            "{\n  \"Z\": {},\n  \"a\": {\n    \"x\": \"a/b\"\n  },\n  \"b\": [\n    1,\n    []\n  ]\n}");
  EXPECT_EQ(text("a/b", {.escapesSlash = true}), "\"a\\/b\"");
}

TEST(JSONText, WritesALargeValueInPieces) {
  JSONArray list(20000, JSONObject{{"key", "some text"}, {"number", 1.5}});
  list.emplace_back(std::string(300'000, '\n') + std::string(300'000, 'x'));
  const JSONValue value = list;
  const std::string whole = text(value, pretty).value();
  const JSONDocument document = JSONDocument::parse(whole).value();
  const auto elements = document.root().elements();
  const std::function<void(const Sink&)> forms[] = {
      [&](const Sink& sink) { ASSERT_TRUE(write(value, pretty, sink)); },
      [&](const Sink& sink) { write(document.root(), pretty, sink); },
      [&](const Sink& sink) {
        write(std::vector<JSONView>(elements.begin(), elements.end()), pretty, sink);
      }};
  for (const auto& form : forms) {
    std::string written;
    form([&](std::string_view piece) {
      EXPECT_LT(piece.size(), 200'000u);
      written += piece;
    });
    EXPECT_EQ(written, whole);
  }
}

/// What stands in the bytes as it came, what has been unescaped in place, and strings between them.
TEST(JSONDocument, UnescapesInPlace) {
  const std::string large(5000, 'x'),
      source = R"(["plain","\u0041b\n","","after","\"","\\)" + large + R"(\t","end"])";
  const std::vector<std::string> expected{"plain", "Ab\n", "", "after", "\"", "\\" + large + "\t", "end"};
  const JSONDocument document = JSONDocument::parse(text::Bytes("head" + source), 4).value();
  std::vector<std::string> found;
  for (const JSONView element : document.root().elements()) found.emplace_back(element.string().value());
  EXPECT_EQ(found, expected);
  EXPECT_EQ(text(document, compact), text(JSONArray(expected.begin(), expected.end()), compact));
}

/// A string of 16 MB or more takes another form on the tape.
TEST(JSONDocument, ReadsStringsTooLongForAWord) {
  const std::string longest(1 << 24, 'x'),
      source = "{\"" + longest + "\":[\"" + longest + "\",\"\\n" + longest + "\",\"after\"],\"key\":1}";
  const std::string escaped = "\n" + longest;
  const JSONDocument document = JSONDocument::parse(source).value();
  const auto elements = document.root()[longest].elements();
  std::vector<std::string_view> found;
  for (const JSONView element : elements) found.push_back(element.string().value());
  EXPECT_TRUE(found == (std::vector<std::string_view>{longest, escaped, "after"}));
  EXPECT_TRUE(document.root()["key"].number() == JSONNumber(std::int64_t{1}));
  EXPECT_TRUE(text(JSONValue(document.root()), compact) == text(document, compact));
}

TEST(JSONDocument, OfEqualKeysTheLastCounts) {
  const auto document =
      JSONDocument::parse(R"({"longer key 2":1,"b":2,"longer key 1":3,"a":4,"b":5,"":6,"\u0062":7})");
  EXPECT_EQ(document->root()["b"].number(), JSONNumber(std::int64_t{7}));
  EXPECT_FALSE(document->root().contains("c") || document->root()["c"].contains("d"));
  EXPECT_EQ(text(*document, compact), R"({"":6,"a":4,"b":7,"longer key 1":3,"longer key 2":1})");
  EXPECT_EQ(text(JSONValue(document->root()), compact), text(*document, compact));
}

TEST(JSONNumber, ReadsAsAnInteger) {
  using Limits = std::numeric_limits<std::int64_t>;
  const std::pair<JSONNumber, std::int64_t> cases[] = {{std::nan(""), 0},
                                                       {2.9, 2},
                                                       {-2.9, -2},
                                                       {1e300, Limits::max()},
                                                       {-1e300, Limits::min()},
                                                       {~std::uint64_t{0}, Limits::max()}};
  for (const auto& [number, integer] : cases) EXPECT_EQ(number.integer(), integer);
}

}  // namespace
}  // namespace json
