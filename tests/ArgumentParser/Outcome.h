// What a command line comes to under a declaration, for tables of cases.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "ArgumentParser/ArgumentParser.h"
#include "ArgumentParser/MessageInfo.h"
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

/// The whole of a file of expectations beside this one.
inline std::string expectedText(const std::string& name) {
  const std::string here = __FILE__;
  return support::contentsOf(here.substr(0, here.rfind('/')) + "/expected/" + name);
}

struct Outcome {
  std::string text;
  int status = 0;
};

inline Outcome outcome(const std::exception_ptr& error, const CommandTree& tree) {
  const MessageInfo info(error, tree);
  // Words of a success go to standard output, all others to standard error.
  EXPECT_EQ(info.goesToStandardOutput(), info.status() == 0 && !info.fullText().empty());
  return {info.fullText(), info.status()};
}

/// The end of a process with that command line.
inline Outcome outcome(CommandType root, const std::vector<std::string>& arguments) {
  const CommandTree tree(root);
  try {
    parseAsRoot(tree, arguments)->run();
    return {};
  } catch (...) {
    return outcome(std::current_exception(), tree);
  }
}

/// The fields that the line fills, by the command's own `shown`, or the first line of the error.
template <class Command>
std::string filled(std::string_view line) {
  const CommandTree tree(type<Command>());
  try {
    return static_cast<const Command*>(parseAsRoot(tree, words(line))->fields())->shown();
  } catch (...) {
    const std::string text = outcome(std::current_exception(), tree).text;
    return text.substr(0, text.find('\n'));
  }
}

}  // namespace ArgumentParser
