#include <cmath>
#include <limits>
#include <random>

#include <gmock/gmock.h>

#include "json/JSONText.h"

namespace json {
namespace {

enum Kind { integer = 2, large = 3, floating = 4 };

TEST(JSONText, KeepsTheKindsOfNumbersApart) {
  // The source, its kind, what a person is shown, and what is written.
  const std::tuple<const char*, std::size_t, const char*, const char*> cases[] = {
      {"0", integer, "0", "0"},
      {"-0", floating, "0", "-0"},
      {"-0.0", floating, "0", "-0"},
      {"42", integer, "42", "42"},
      {"42.0", floating, "42", "42"},
      {"1e3", floating, "1000", "1000"},
      {"-12.5", floating, "-12.5", "-12.5"},
      {"-9223372036854775808", integer, "-9223372036854775808", "-9223372036854775808"},
      {"9223372036854775807", integer, "9223372036854775807", "9223372036854775807"},
      {"9223372036854775808", large, "9223372036854775808", "9223372036854775808"},
      {"18446744073709551615", large, "18446744073709551615", "18446744073709551615"},
      {"18446744073709551616", floating, "18446744073709551616", "18446744073709551616"},
      {"9007199254740993.0", floating, "9007199254740992", "9007199254740992"},
      {"1e20", floating, "100000000000000000000", "100000000000000000000"},
      {"1e21", floating, "1000000000000000000000", "1e+21"},
      {"100e-6", floating, "0.0001", "0.0001"},
      {"-0.000025", floating, "-0.000025", "-0.000025"},
      {"1e-6", floating, "0.000001", "0.000001"},
      {"0.0000009", floating, "9e-7", "9e-7"},
      {"1.5e-9", floating, "1.5e-9", "1.5e-9"},
      {"1e-10", floating, "1e-10", "1e-10"},
      {"5e-324", floating, "5e-324", "5e-324"},
      {"5e-309", floating, "5e-309", "5e-309"},
      {"1e-400", floating, "0", "0"},
  };
  for (const auto& [source, kind, shown, written] : cases) {
    SCOPED_TRACE(source);
    const JSONValue value = parse(source).value();
    EXPECT_EQ(value.data.index(), kind);
    EXPECT_EQ(numberText(value), shown);
    EXPECT_EQ(text(value, compact), written);
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
    for (const std::size_t depth : {513, 1 << 20}) EXPECT_FALSE(parse(nested(depth, open, close)));
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
