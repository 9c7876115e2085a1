#include <cmath>
#include <limits>
#include <random>

#include <gmock/gmock.h>

#include "json/JSONText.h"
#include "support/Surroundings.h"

namespace json {
namespace {

TEST(JSONText, KeepsTheKindsOfNumbersApart) {
  const std::vector<std::string> kinds{"", "", "integer", "large", "floating"};
  // The source, its kind, what a person is shown, and what is written.
  for (const auto& row : support::rowsIn(SOURCES "/numbers.json")) {
    const JSONValue value = parse(row[0]).value();
    const std::vector<std::string> found{row[0], kinds.at(value.data.index()), numberText(value),
                                         text(value, compact).value()};
    EXPECT_EQ(found, row);
  }
}

TEST(JSONText, ReadsBackEveryFloat) {
  std::mt19937_64 bits(1);
  for (int i = 0; i < 20000; ++i) {
    const double number = std::bit_cast<double>(bits());
    if (!std::isfinite(number)) continue;
    const std::string written = text(number, compact).value();
    EXPECT_EQ(parse(written).value().number(), number) << written;
    EXPECT_EQ(parse(numberText(number)).value().number(), number) << written;
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
  EXPECT_FALSE(parseContainer("true") || parseContainer("\"{}\""));
  EXPECT_TRUE(parseContainer(" [] \n"));
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

TEST(JSONText, DrainsALargeValueInPieces) {
  const JSONValue value = JSONArray(20000, JSONObject{{"key", "some text"}, {"number", 1.5}});
  std::string whole, rest;
  std::size_t largest = 0;
  ASSERT_TRUE(write(value, pretty, rest, [&](std::string& written) {
    largest = std::max(largest, written.size());
    whole += written;
    written.clear();
  }));
  EXPECT_EQ(whole + rest, text(value, pretty));
  EXPECT_LT(std::max(largest, rest.size()), 100'000u);
}

TEST(JSONValue, ReadsAsAnInteger) {
  using Limits = std::numeric_limits<std::int64_t>;
  const JSONValue none[] = {true, nullptr, "5", JSONArray{1}, std::nan("")};
  for (const JSONValue& value : none) EXPECT_EQ(value.integer(), 0);
  const std::pair<JSONValue, std::int64_t> cases[] = {{2.9, 2},
                                                      {-2.9, -2},
                                                      {1e300, Limits::max()},
                                                      {-1e300, Limits::min()},
                                                      {~std::uint64_t{0}, Limits::max()}};
  for (const auto& [value, integer] : cases) EXPECT_EQ(value.integer(), integer);
}

}  // namespace
}  // namespace json
