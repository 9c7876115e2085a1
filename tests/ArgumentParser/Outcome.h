// What a command line comes to under a declaration, for tables of cases.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "ArgumentParser/ArgumentParser.h"
#include "ArgumentParser/messages/MessageInfo.h"
#include "ArgumentParser/parsing/CommandParser.h"
#include "support/Cases.h"
#include "support/Surroundings.h"
#include "text/Unicode.h"

namespace ArgumentParser {

/// The blank-separated words of a line; '' is an empty one.
inline std::vector<std::string> words(std::string_view line) {
  std::vector<std::string> result;
  if (line.empty()) return result;
  for (const std::string_view word : text::split(line, ' ')) result.emplace_back(word == "''" ? "" : word);
  return result;
}

/// The end of a process: what it prints and its status.
struct End {
  std::string text;
  int status = 0;
  std::string firstLine() const { return text.substr(0, text.find('\n')); }

  /// Holds it against a case of a file.
  void expect(const support::Case& expected) const {
    const std::string& told = expected.isRow ? firstLine() : text;
    EXPECT_EQ(told.empty() ? "" : told + "\n", expected.all(status == 0 ? "=" : "!"));
    EXPECT_EQ(status, expected.status());
  }
};

inline End endOf(const Outcome& outcome, const CommandTree& tree) {
  const MessageInfo info = messageInfo(outcome, tree);
  // Words of a success go to standard output, all others to standard error.
  EXPECT_EQ(info.goesToStandardOutput(), info.status() == 0 && !info.fullText().empty());
  return {info.fullText(), info.status()};
}

/// The end of a process with that command line.
inline End outcome(CommandType root, const std::vector<std::string>& arguments) {
  const CommandTree tree(root);
  return endOf(afterRun(CommandParser(tree).parse(arguments), tree), tree);
}

}  // namespace ArgumentParser
