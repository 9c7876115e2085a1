#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <random>

#include <gtest/gtest.h>

#include "install/JSONCEditor.h"
#include "install/JSONCProperties.h"
#include "json/JSONText.h"
#include "support/Surroundings.h"

namespace zelto::JSONCEditor {
namespace {

/// The text that `operation` gives, or that of its error.
std::string outcome(const auto& operation) {
  try {
    return operation();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

std::string setIn(const std::string& text) {
  return outcome([&] { return set(text, "s", "me", "{\n  \"a\": 1\n}").applied(); });
}

std::string removedFrom(const std::string& text) {
  const auto splice = remove(text, "s", "me");
  return splice ? splice->applied() : "nothing";
}

/// Each row of the tables: a text, and what must come of it.
TEST(JSONCEditor, EditsAsTheTablesSay) {
  const std::map<std::string, std::function<std::string(const std::string&)>> operations = {
      {"blankComments", blankComments},
      {"set", setIn},
      {"remove", removedFrom},
  };
  const auto file = SOURCES "/edits.json";
  const auto tables = json::parse(support::contentsOf(file));
  for (const auto& [table, operation] : operations) {
    for (const auto& [title, edit] : *tables->object()->find(table)->object()) {
      EXPECT_EQ(operation(*edit.array()->at(0).string()), *edit.array()->at(1).string())
          << table << ": " << title;
    }
  }
}

TEST(JSONCEditor, ReadsObjects) {
  const support::TemporaryDirectory directory;
  const std::string path = directory / "file", noObject = path + " is not a JSON object.";
  const std::pair<std::string, std::string> cases[] = {
      {"\uFEFF \n", ""},  {"\uFEFF{\"a\": [1,],\r\n /* b */ \"b\": 2,\r\n}", "ab"},
      {"[]", noObject},   {"{", noObject},
      {"// c", noObject}, {"{\"a\": \"\xED\xA0\x80\"}", path + ": not UTF-8 text"},
  };
  EXPECT_FALSE(readObject(path));
  for (const auto& [content, expected] : cases) {
    support::writeFile(path, content);
    const auto keys = [&] {
      std::string all;
      const auto object = readObject(path);
      for (const auto& member : object.value()) all += member.key;
      return all;
    };
    EXPECT_EQ(outcome(keys), expected);
  }
}

TEST(JSONCEditor, CopesWithSizeAndDepth) {
  std::string source = "{\"deep\": " + std::string(100'000, '[') + std::string(100'000, '}');
  while (source.size() < 10'000'000)
    source += ",\n  /* c */ \"k\": {\"x\": [1, 2, 3], }, // d\n \"t\": \"text\"";
  const auto start = std::chrono::steady_clock::now();
  const std::string changed = setIn(source + ", \"s\": {}}");
  EXPECT_EQ(changed, source + ", \"s\": {\n   \"me\": {\n     \"a\": 1\n   }\n }}");
  EXPECT_EQ(removedFrom(changed), source + "}");
  // Quadratic work would take minutes.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

/// A configuration file as people may have written it: "F", in which each capital letter of the grammar turns
/// into one of its texts until none is left.
std::string generated(std::mt19937 random) {
  static const std::map<char, std::vector<std::string>> grammar = {
      {'F', {"G{G}G", "G{GLGTG}G", "G{GLGTG}G"}},
      {'L', {"Z", "MG,GZ", "ZG,GM", "MG,GZG,GM", "M"}},
      {'Z', {R"("mcpServers"G:GV)", R"("mcpServers"G:G{GOGTG})", R"("mcpServers"G:G{GOGTG})"}},
      {'O', {"E", "E", "MG,GE", "EG,GM", "MG,GEG,GM", "M"}},
      {'E', {R"("zelto"G:GV)"}},
      {'M', {R"("x"G:GV)", R"("a/*"G:GV)", R"("it's"G:GV)", R"("y//"G:GV)", R"("é"G:GV)"}},
      {'V', {"-2.5e3", R"("s//t")", R"("a\"/*,")", R"("\\")", R"("日,}")", "{}", "[GVGTG]", "{GOGTG}"}},
      {'G', {"", "", "", "G ", "G\n", "G\r\n", "G\t", "GC", "GC"}},
      {'C', {"// a \"q, }\n", "//\r\n", "/* {,\" */", "/* a\r\n  b // */"}},
      {'T', {"", ","}},
  };
  const auto pick = [&](const auto& from) { return random() % from.size(); };
  std::string text = "F";
  for (std::size_t at = 0; at < text.size();) {
    if (const auto rule = grammar.find(text[at]); rule != grammar.end())
      text.replace(at, 1, rule->second[pick(rule->second)]);
    else
      ++at;
  }
  // One byte in place of another breaks some of them.
  constexpr std::string_view breaking = " {}],\"/*\\\n\v";
  if (random() % 4 == 0) text[pick(text)] = breaking[pick(breaking)];
  return text;
}

TEST(JSONCEditor, KeepsItsPropertiesOnGeneratedFiles) {
  int sound = 0;
  for (unsigned seed = 0; seed < 10'000; ++seed) {
    const std::string text = generated(std::mt19937(seed));
    ASSERT_EQ(properties::broken(text), "") << "seed " << seed << ":\n" << text;
    sound += properties::reading(text).has_value();
  }
  EXPECT_GT(sound, 5'000);
}

}  // namespace
}  // namespace zelto::JSONCEditor
