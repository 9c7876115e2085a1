#include "support/Cases.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <stdexcept>

#include "support/Surroundings.h"

namespace support {

std::string Case::all(std::string_view marks) const {
  std::string texts;
  for (const Line& line : lines) {
    const bool isStatusAlone = line.status && line.text.empty();
    if (marks.find(line.mark) != marks.npos && !isStatusAlone) texts += line.text + "\n";
  }
  return texts;
}

int Case::status() const {
  for (const Line& line : lines) {
    if (line.mark == '!' && line.status) return *line.status;
  }
  return 0;
}

testing::ScopedTrace Case::place() const {
  return {file.c_str(), number, input};
}

std::vector<Case> casesIn(const std::string& file, std::string_view marks) {
  static const std::regex name("@([a-zA-Z]+) (.*)"), marked("([^a-zA-Z0-9 ])([0-9]*)(?: (.*))?"),
      row("(?:(.*?) +)?([=!:])([0-9]*)> *(.*)");
  std::vector<Case> cases;
  std::map<std::string, std::string> named;
  std::ifstream stream(file);
  std::string line;
  for (int number = 1; std::getline(stream, line); ++number) {
    const auto demand = [&](bool holds, const char* fault) {
      if (!holds) throw std::runtime_error(file + ":" + std::to_string(number) + ": " + fault);
    };
    const auto add = [&](char mark, const std::string& status, std::string text) {
      demand(marks.find(mark) != marks.npos, "a mark without a meaning here");
      demand(status.empty() || mark == '<' || mark == '!', "a number without a meaning here");
      demand(!cases.empty(), "no case above");
      if (std::regex_match(text, std::regex("@[a-zA-Z]+"))) {
        demand(named.contains(text.substr(1)), "no text of this name");
        text = named[text.substr(1)];
      }
      cases.back().lines.push_back(
          {mark, status.empty() ? std::nullopt : std::optional(std::stoi(status)), std::move(text)});
    };
    if (line.empty() || line.starts_with('#')) continue;
    if (line.ends_with("·")) line.resize(line.size() - std::string_view("·").size());
    std::smatch parts;
    if (std::regex_match(line, parts, name)) {
      std::string& text = named[parts[1]];
      text += (text.empty() ? "" : "\n") + parts[2].str();
    } else if (line.starts_with("$ ")) {
      cases.push_back({file, line.substr(2), number});
    } else if (std::regex_match(line, parts, marked)) {
      add(*parts[1].first, parts[2], parts[3]);
    } else {
      demand(std::regex_match(line, parts, row), "neither a mark nor a row");
      cases.push_back({file, parts[1], number, true});
      add(*parts[2].first, parts[3], parts[4]);
    }
  }
  if (cases.empty()) throw std::runtime_error(file + ": no cases");
  return cases;
}

void expectSnapshot(const std::string& name, const std::string& text) {
  if (const char* directory = std::getenv("ZELTO_RENEWED_SNAPSHOTS"))
    writeFile(directory + ("/" + name), text);
  else
    EXPECT_EQ(text, contentsOf(SNAPSHOTS "/" + name)) << name;
}

}  // namespace support
