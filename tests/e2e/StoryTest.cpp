// A day with the program beside the stand-in: every command in a pipe, on a terminal and as JSON.
#include <algorithm>

#include "e2e/Zelto.h"
#include "json/JSONText.h"

namespace zelto {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string filled(std::string text, char word) {
  std::replace(text.begin(), text.end(), '%', word);
  return text;
}

TEST(Story, GoesTheSameInAPipeOnATerminalAndAsJSON) {
  const Zelto zelto;
  for (const char form : {'P', 'T', 'J'}) {
    EXPECT_EQ(zelto.shell("zelto api start").output, "Running 1.4.2\n");
    const auto control =
        json::parse(support::contentsOf(zelto.home / "Library/Application Support/Zelto/control.json"));
    ASSERT_TRUE(control && control->object());
    const std::string token = *control->object()->find("token")->string();
    for (const support::Case& step : casesIn("story.txt")) {
      const auto place = step.place();
      const std::string json = step.all("{"),
                        command = filled(step.input, form) + (form == 'J' ? " --json" : ""),
                        error = step.all("!");
      const auto outcome = zelto.shell(command, "", form == 'T');
      SCOPED_TRACE(command);
      EXPECT_EQ(outcome.error, error);
      EXPECT_EQ(outcome.status, step.status());
      EXPECT_THAT(outcome.output, Not(HasSubstr(token)));
      EXPECT_TRUE(form == 'T' || outcome.output.find('\x1b') == std::string::npos);
      if (form == 'J' && !json.empty()) {
        EXPECT_TRUE(json::parse(outcome.output)) << outcome.output;
        EXPECT_THAT(outcome.output, HasSubstr(json.substr(0, json.size() - 1)));
      } else if (error.empty()) {
        std::string text = filled(step.all("~"), form);
        text.pop_back();
        EXPECT_THAT(marked(outcome.output), HasSubstr(form == 'T' ? text : unmarked(text)));
      }
    }
  }
}

TEST(Story, AsksBeforeItDeletes) {
  Zelto zelto;
  const std::string list =
      support::response(R"([{"id":"aaaa","name":"First"},{"id":"bbbb","name":"\u001b[2K\nSecond"}])");
  const std::tuple<std::string, std::string, bool> cases[] = {
      {"aaaa", "y\n", true},    {"aaaa", "YES\r\n", true}, {"aaaa bbbb", "yes\n", true},
      {"aaaa", "n\n", false},   {"aaaa", " y\n", false},   {"aaaa", "y \n", false},
      {"aaaa", "yep\n", false}, {"aaaa", "\n", false},     {"aaaa bbbb", "\x04", false}};
  for (const auto& [rules, answer, deleted] : cases) {
    for (const char* way : {"", " | cat"}) {
      const support::RawServer server({list});
      zelto.lookAt(server);
      const auto outcome =
          zelto.shell("{ zelto rules rm " + rules + "; echo status $?; }" + way, answer, true);
      SCOPED_TRACE(rules + way + answer);
      const std::string second = *way == '\0' ? "␛[2K␊Second" : "\x1b[2K\nSecond";
      EXPECT_THAT(outcome.output,
                  testing::StartsWith(rules == "aaaa" ? "Delete First? [y/N] "
                                                      : "Delete 2 rules: First, " + second + "? [y/N] "));
      EXPECT_THAT(outcome.output, testing::EndsWith(deleted ? "status 0\n" : "status 1\n"));
      EXPECT_EQ(outcome.error, deleted ? "" : "Error: cancelled\n");
      EXPECT_EQ(summary(server.requests()).find("DELETE") != std::string::npos, deleted);
    }
  }
}

}  // namespace
}  // namespace zelto
