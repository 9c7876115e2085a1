// The documents' examples: every command in a block of "console" does what stands below it.
#include <csignal>
#include <filesystem>
#include <sstream>

#include "e2e/Zelto.h"

namespace zelto {
namespace {

struct Example {
  std::string command, output;
};

// A line of the shell stands after "$", its continuation lines after a backslash, and its output below.
std::vector<Example> examplesIn(const std::string& document) {
  std::vector<Example> examples;
  std::istringstream lines(support::contentsOf(document));
  bool isExample = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("```")) {
      isExample = line == "```console";
    } else if (isExample && line.starts_with("$ ")) {
      examples.push_back({line.substr(2) + "\n", ""});
    } else if (isExample) {
      Example& last = examples.back();
      (last.output.empty() && last.command.ends_with("\\\n") ? last.command : last.output) += line + "\n";
    }
  }
  return examples;
}

// Whether the text is this one, in which "…" stands for anything.
bool isLike(std::string_view text, std::string_view pattern) {
  constexpr std::string_view gap = "…";
  std::size_t end = pattern.find(gap);
  if (end == pattern.npos) return text == pattern;
  if (!text.starts_with(pattern.substr(0, end))) return false;
  text.remove_prefix(end);
  for (pattern.remove_prefix(end); (end = pattern.find(gap, gap.size())) != pattern.npos;) {
    const std::string_view piece = pattern.substr(gap.size(), end - gap.size());
    const std::size_t found = text.find(piece);
    if (found == text.npos) return false;
    text.remove_prefix(found + piece.size());
    pattern.remove_prefix(end);
  }
  return pattern == "…\n" || text.ends_with(pattern.substr(gap.size()));
}

void run(const std::string& document) {
  // Within an application, as it is installed: only then can agents be told where the server is.
  const support::TemporaryDirectory applications;
  const std::string installed = applications / "Zelto.app/Contents/SharedSupport/ZeltoCLI";
  std::filesystem::create_directories(std::filesystem::path(installed).parent_path());
  std::filesystem::copy_file(ZELTO, installed);
  const Zelto zelto(installed);
  support::writeFile(zelto.home / ".config/zed/settings.json", "{}");

  const auto examples = examplesIn(SOURCES "/../../" + document);
  EXPECT_GT(examples.size(), 5u);
  for (const auto& [command, output] : examples) {
    SCOPED_TRACE(document + ": " + command);
    if (command.find(" --follow") != command.npos || command.starts_with("zelto watch")) {
      support::Running following(zelto, command);
      EXPECT_TRUE(following.shows(output.empty() ? "Morning" : output));
      EXPECT_EQ(following.end(SIGINT).status, 128 + SIGINT);
    } else {
      const auto outcome = zelto.shell(command);
      EXPECT_EQ(outcome.status, 0) << outcome.error;
      EXPECT_TRUE(output.empty() || isLike(outcome.output, output)) << outcome.output;
    }
  }
}

TEST(Documents, SayWhatTheProgramDoes) {
  for (const char* document : {"README.md", "docs/json.md"}) run(document);
}

}  // namespace
}  // namespace zelto
