// The help of every command against the texts of tests/snapshots, which script/renew-snapshots renews.
#include <algorithm>
#include <filesystem>

#include "e2e/Zelto.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

namespace fs = std::filesystem;

/// The snapshots that the subcommands listed in `help` must have.
std::vector<std::string> listed(const std::string& help, const std::string& stem) {
  std::vector<std::string> stems;
  const std::size_t list = help.find("\nSUBCOMMANDS:\n");
  if (list == std::string::npos) return stems;
  for (const std::string_view line : text::split(std::string_view(help).substr(list), '\n')) {
    if (line.size() < 3 || !line.starts_with("  ") || line[2] == ' ' || line.starts_with("  See")) continue;
    stems.push_back((stem == "zelto" ? "" : stem + "_") + std::string(line.substr(2, line.find(' ', 2) - 2)));
  }
  return stems;
}

TEST(Help, IsAsReviewed) {
  const Zelto zelto;
  int count = 0;
  for (const auto& entry : fs::recursive_directory_iterator(SNAPSHOTS)) {
    if (entry.path().extension() != ".txt") continue;
    const std::string stem = entry.path().stem().string(),
                      width = entry.path().parent_path().filename().string();
    std::string words = stem == "zelto" ? "" : stem;
    std::replace(words.begin(), words.end(), '_', ' ');
    const auto outcome = zelto.shell("COLUMNS=" + width + " zelto " + words + " --help");
    EXPECT_EQ(outcome.output, support::contentsOf(entry.path().string())) << entry.path();
    EXPECT_EQ(outcome.error, "");
    for (const std::string& child : listed(outcome.output, stem)) {
      EXPECT_TRUE(width != "80" || fs::exists(entry.path().parent_path() / (child + ".txt"))) << child;
    }
    ++count;
  }
  EXPECT_GT(count, 40);
  // Where no variable tells the width it is the terminal's, and without a terminal 80.
  const std::string help80 = support::contentsOf(SNAPSHOTS "/80/zelto.txt"),
                    help40 = support::contentsOf(SNAPSHOTS "/40/zelto.txt");
  EXPECT_EQ(zelto.shell("zelto --help").output, help80);
  EXPECT_EQ(zelto.shell("COLUMNS=x zelto --help").output, help80);
  EXPECT_EQ(zelto.shell("stty columns 40; zelto --help", "", true).output, help40);
  EXPECT_EQ(zelto.shell("stty columns 0; zelto --help", "", true).output, help80);
}

}  // namespace
}  // namespace zelto
