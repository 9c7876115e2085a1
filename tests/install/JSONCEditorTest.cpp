#include <chrono>
#include <filesystem>
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "install/JSONCEditor.h"
#include "install/JSONCProperties.h"
#include "json/JSONText.h"
#include "support/Surroundings.h"

namespace zelto::JSONCEditor {
namespace {

std::string setIn(const std::string& text) {
  try {
    return set(text, "s", "me", "{\n  \"a\": 1\n}");
  } catch (const EditError& error) {
    return error.what();
  }
}

/// Runs `operation` on the texts that the table of that name holds, each beside what must come of it.
void expectTable(const std::string& table,
                 const std::function<json::JSONValue(const std::string&)>& operation) {
  const auto path = std::filesystem::path(__FILE__).replace_filename("edits.json");
  const auto tables = json::parse(support::contentsOf(path));
  for (const auto& [title, edit] : *tables->object()->find(table)->object()) {
    EXPECT_EQ(operation(*edit.array()->at(0).string()), edit.array()->at(1)) << table << ": " << title;
  }
}

TEST(JSONCEditor, EditsAsTheTablesSay) {
  expectTable("blankComments", [](const std::string& text) { return blankComments(text); });
  expectTable("set", setIn);
  expectTable("remove", [](const std::string& text) {
    const auto result = remove(text, "s", "me");
    return result ? json::JSONValue(*result) : json::JSONValue();
  });
}

TEST(JSONCEditor, ReadsObjects) {
  const support::TemporaryDirectory directory;
  const std::string path = directory / "file", depth(100'000, '[');
  const std::string noObject = path + " is not a JSON object.", noText = path + ": not UTF-8 text";
  const std::pair<std::string, std::string> cases[] = {
      {"\uFEFF \n", ""},
      {"\uFEFF{\"a\": [1,],\r\n /* b */ \"b\": 2,\r\n}", "ab"},
      {"[]", noObject},
      {"{", noObject},
      {"// c", noObject},
      {"{\"a\": " + depth + std::string(depth.size(), ']') + "}", noObject},
      {"{\"a\": \"\xED\xA0\x80\"}", noText},
      {"{\"\xC0\xAF\": 1}", noText},
  };
  EXPECT_FALSE(readObject(path));
  for (const auto& [content, expected] : cases) {
    support::writeFile(path, content);
    std::string outcome;
    try {
      const auto object = readObject(path);
      for (const auto& member : *object) outcome += member.key;
    } catch (const std::runtime_error& error) {
      outcome = error.what();
    }
    EXPECT_EQ(outcome, expected);
  }
}

TEST(JSONCEditor, CopesWithSizeAndDepth) {
  std::string source = "{\"deep\": " + std::string(100'000, '[') + std::string(100'000, '}');
  while (source.size() < 10'000'000)
    source += ",\n  /* c */ \"k\": {\"x\": [1, 2, 3], }, // d\n \"t\": \"text\"";
  const auto start = std::chrono::steady_clock::now();
  const std::string changed = setIn(source + ", \"s\": {}}");
  EXPECT_EQ(changed, source + ", \"s\": {\n   \"me\": {\n     \"a\": 1\n   }\n }}");
  EXPECT_EQ(remove(changed, "s", "me"), source + "}");
  // Quadratic work would take minutes.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

/// Makes configuration files as people may have written them.
struct Generator {
  std::size_t below(std::size_t limit) { return random() % limit; }
  std::string pick(const std::vector<std::string>& from) { return from[below(from.size())]; }
  std::string gap() {
    std::string result;
    while (below(5) > 1) {
      result +=
          pick({" ", "\n", "\r\n", "\t", "  ", "// a \"q, }\n", "//\r\n", "/* {,\" */", "/* a\r\n  b // */"});
    }
    return result;
  }
  std::string value(int depth) {
    if (depth < 3 && below(3) == 0) return object({"x", "y", "zelto", "\u00e9"}, depth);
    if (depth < 3 && below(5) == 0)
      return "[" + gap() + value(depth + 1) + gap() + pick({"", ","}) + gap() + "]";
    return pick({"1", "-2.5e3", "true", R"("s//t")", R"("a\"/*,")", R"("\\")", "\"\u65e5,}\"", "{}", "[]"});
  }
  std::string object(std::vector<std::string> keys, int depth) {
    std::shuffle(keys.begin(), keys.end(), random);
    keys.resize(below(keys.size() + 1));
    std::string result = "{" + gap();
    for (const std::string& key : keys) {
      const bool servers = key == "mcpServers" && below(8) > 0;
      result += '"' + key + '"' + gap() + ":" + gap();
      result += servers ? object({"x", "zelto", "y//"}, depth + 1) : value(depth + 1);
      result += gap() + (&key != &keys.back() ? "," : pick({"", ","})) + gap();
    }
    return result + "}";
  }
  std::string file() {
    std::string text = gap() + object({"mcpServers", "theme", "a/*", "it's"}, 0) + gap();
    const std::vector<std::string> damage = {"", "{", "}", "]", ",", "\"", "/", "*", "\\", "\n", "\v"};
    if (below(4) == 0) text.replace(below(text.size()), below(2), pick(damage));
    return text;
  }

  std::mt19937 random;
};

TEST(JSONCEditor, KeepsItsPropertiesOnGeneratedFiles) {
  int sound = 0;
  for (unsigned seed = 0; seed < 10'000; ++seed) {
    const std::string text = Generator{std::mt19937(seed)}.file();
    ASSERT_EQ(properties::broken(text), "") << "seed " << seed << ":\n" << text;
    sound += properties::reading(text).has_value();
  }
  EXPECT_GT(sound, 5'000);
}

}  // namespace
}  // namespace zelto::JSONCEditor
