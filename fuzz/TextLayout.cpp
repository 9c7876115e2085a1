// Any texts, wrapped at any width and in tables. Wrapping breaks lines at blanks alone and loses nothing;
// only a word of its own is wider than the width. In a table every cell stands whole in its column, and every
// column begins in the same place of each line. A help text holds what was declared, whatever the width.
#include "ArgumentParser/messages/TextLayout.h"

#include <algorithm>
#include <limits>

#include "ArgumentParser/ArgumentParser.h"
#include "ArgumentParser/messages/HelpGenerator.h"
#include "cli/Out.h"
#include "support/Fuzz.h"
#include "text/Unicode.h"

namespace {

using fuzz::expect;

std::vector<std::string> texts;

std::string textAt(std::size_t place) {
  return place < texts.size() ? texts[place] : std::string();
}

struct Declared {
  std::string value;
  bool flag = false;
  static ArgumentParser::Declaration declaration() {
    return ArgumentParser::command<Declared>({.abstract = textAt(0), .discussion = textAt(1)}, [](auto& it) {
      it.option(&Declared::value, "value", {.help = {textAt(2), textAt(3)}, .defaultValue = textAt(4)});
      it.flag(&Declared::flag, "flag", {.help = textAt(5)});
    });
  }
  void run() {}
};

/// A number of any size, small ones more often.
std::int64_t width(fuzz::Input& input) {
  const unsigned char byte = input.byte();
  if (byte < 200) return byte;
  constexpr std::int64_t extremes[] = {std::numeric_limits<std::int64_t>::min(), -1, 1000,
                                       std::numeric_limits<std::int64_t>::max()};
  return extremes[byte % 4];
}

void checkWrapping(std::string_view text, std::int64_t width, int indent) {
  const std::string wrapped = ArgumentParser::wrapped(text, width, indent);
  if (width <= indent) return expect(wrapped.empty(), "without room there is nothing", wrapped);
  const std::string blanks(static_cast<std::size_t>(indent), ' ');
  std::string_view rest = wrapped;
  bool atStart = true, hasBlank = false;
  std::int64_t used = 0;
  for (const std::string_view character : text::clusters(text)) {
    if (atStart && !rest.empty() && !rest.starts_with('\n')) {
      expect(rest.starts_with(blanks), "a line is indented", wrapped);
      rest.remove_prefix(blanks.size());
      atStart = hasBlank = false;
      used = indent;
    }
    // A word that fills the width or more goes on to the next blank, over line breaks.
    const bool isWide = !atStart && used >= width && !hasBlank;
    if (rest.starts_with('\n') && (character == " " || (character == "\n" && !isWide))) {
      rest.remove_prefix(1);
      atStart = true;
      continue;
    }
    expect(rest.starts_with(character), "nothing is lost, and lines end at blanks", wrapped);
    rest.remove_prefix(character.size());
    hasBlank = hasBlank || character == " ";
    expect(++used <= width || !hasBlank, "only a word of its own is wider", wrapped);
  }
  expect(rest.empty(), "nothing is added", wrapped);
}

std::string withoutBlanks(std::string text) {
  std::erase_if(text, [](char each) { return each == ' ' || each == '\n'; });
  return text;
}

void checkHelp(std::int64_t width) {
  const ArgumentParser::CommandTree tree(ArgumentParser::type<Declared>());
  const ArgumentParser::HelpGenerator help({&tree.root()}, ArgumentParser::Visibility::default_);
  const std::string rendered = help.rendered(width);
  fuzz::expectUTF8(rendered, "a help text");
  // The column in which descriptions begin leaves no room for them on less.
  if (width <= 26) return;
  const std::string held = withoutBlanks(rendered);
  for (std::size_t i = 0; i < 6; ++i)
    expect(held.find(withoutBlanks(textAt(i))) != held.npos, "help holds what was declared", rendered);
}

/// The texts in columns, the title of each first. Most go into the first one, so that the others are shorter.
std::vector<std::vector<std::string>> cellsIn(std::size_t count) {
  std::vector<std::vector<std::string>> columns(count, {textAt(0)});
  for (std::size_t i = 1; i < texts.size(); ++i) columns[i % 2 == 0 ? i % count : 0].push_back(texts[i]);
  return columns;
}

void checkTable(const std::vector<std::vector<std::string>>& columns) {
  std::vector<zelto::Out::Column> table;
  std::size_t lineCount = 0;
  for (const auto& cells : columns) {
    table.push_back({cells[0], {}, {cells.begin() + 1, cells.end()}});
    lineCount = std::max(lineCount, cells.size());
  }
  const std::string output = fuzz::printedBy([&] { zelto::Out::table(table); }).output;
  std::string_view rest = output;
  for (std::size_t line = 0; lineCount > 1 && line < lineCount; ++line) {
    for (const auto& cells : columns) {
      const std::string cell = line < cells.size() ? cells[line] : std::string();
      expect(rest.starts_with(cell), "a cell stands whole in its column", output);
      rest.remove_prefix(cell.size());
      if (&cells == &columns.back()) break;
      std::size_t widest = 0;
      for (const std::string& each : cells) widest = std::max(widest, text::clusterCount(each));
      const std::string gap(widest - text::clusterCount(cell) + 2, ' ');
      expect(rest.starts_with(gap), "the next column begins after the widest cell", output);
      rest.remove_prefix(gap.size());
    }
    expect(rest.starts_with('\n'), "a row is a line", output);
    rest.remove_prefix(1);
  }
  expect(rest.empty(), "nothing follows the last row", output);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::int64_t columns = width(input);
  const int indent = input.byte() % 40;
  const std::size_t columnCount = input.choice(4) + 1;
  texts = input.pieces();
  for (std::string& each : texts) each = text::repairedUTF8(each);
  for (const std::string& each : texts) checkWrapping(each, columns, indent);
  checkHelp(columns);
  checkTable(cellsIn(columnCount));
  return 0;
}
