// The files of cases, which tell what goes into a run and what must come of it (tests/README.md lists their
// marks), and snapshots.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace support {

/// What goes into one run, and the marked lines that tell what comes of it.
struct Case {
  struct Line {
    char mark;
    std::optional<int> status;  ///< the number after the mark
    std::string text;
  };

  /// The texts of the lines with one of these marks, each with its line end.
  std::string all(std::string_view marks) const;
  /// The exit status that a "!" line has after its mark; 0 without one.
  int status() const;
  /// As long as it lives, failures tell the file and line of the case.
  [[nodiscard]] testing::ScopedTrace place() const;

  std::string file, input;
  int number = 0;      ///< of the line in the file, from 1
  bool isRow = false;  ///< it stands on one line, and tells of the first line of what is printed alone
  std::vector<Line> lines{};
};

/// The cases of a file in which these marks have a meaning. Throws std::runtime_error, with file and line,
/// for what else is in it.
std::vector<Case> casesIn(const std::string& file, std::string_view marks);

/// Holds the text against the file of that name in tests/snapshots. If $ZELTO_RENEWED_SNAPSHOTS names a
/// directory, writes the text there instead.
void expectSnapshot(const std::string& name, const std::string& text);

}  // namespace support
