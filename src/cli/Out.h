// What commands print: tables, label and value blocks, headings, JSON, and the texts of API values.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "client/APICall.h"
#include "platform/StyledText.h"
#include "text/GrowingBlock.h"

namespace zelto::Out {

using platform::StyledText;

/// The SGR code of a style.
enum class Style { dim = 2, bold = 1, red = 31, green, yellow, blue, magenta, cyan };

/// One column of a table; `rows` may be shorter than those of other columns.
struct Column {
  StyledText title;
  std::optional<Style> style = {};
  std::vector<StyledText> rows = {};
};

/// A table that is filled row by row. The text of all cells is one piece of memory, since a list may have
/// hundreds of thousands of them.
class Table {
 public:
  Table(std::initializer_list<Column> titles) { add(titles.begin(), titles.end()); }
  /// A table of columns that are whole already.
  explicit Table(const std::vector<Column>& whole);
  /// Adds a row: a cell for each column.
  void row(std::initializer_list<StyledText> row);
  /// Prints a header and one line for each row, columns aligned; nothing at all if there are no rows.
  void print() const;

 private:
  struct Heading {
    StyledText title;
    std::optional<Style> style;
    std::size_t width;  ///< of the widest cell, the title's included
  };
  struct Cell {
    std::size_t length, width;
  };

  void add(const Column* column, const Column* end);
  void add(Heading& column, const StyledText& cell);

  std::vector<Heading> headings;
  StyledText text;                 ///< of all cells, row by row
  text::GrowingBlock<Cell> cells;  ///< row by row
};

/// A label and its value.
using Pair = std::pair<StyledText, StyledText>;

/// `text` styled, if colour is on.
StyledText paint(const StyledText& text, Style style);

/// What a command has done. The word and the colour of each stand in one table.
enum class Deed { created, updated, deleted, fired, running, stopped, active, opened, installed, removed };

/// The word for a deed in its colour, for instance a green "Created".
StyledText paint(Deed deed);

/// "on" in green or "off", dim, filled up with blanks to `width`.
StyledText onOff(bool isOn, std::size_t width = 0);

/// A green "*" for what is there, installed or active, else a blank.
StyledText marker(bool isThere);

/// Prints one line.
void line(const StyledText& text);

/// Prints one line: the word for a deed, a blank, and what was done that to.
void done(Deed deed, const StyledText& what);

/// Prints one line, dim: what a person may do next.
void hint(const StyledText& text);

/// Prints a table of columns that are whole already.
void table(const std::vector<Column>& columns);

/// Prints one line for each pair whose value is not empty, values aligned; a value of several lines stands
/// below its label.
void fields(const std::vector<Pair>& pairs);

/// Prints an empty line and a heading.
void section(const StyledText& title);

/// Prints a value as JSON, pretty, keys sorted, never styled; what a terminal would obey is escaped there.
/// Its numbers are finite, as those of parsed JSON are.
void json(const JSONValue& value);
/// The same for what the API has answered.
void json(JSONView value);
/// The same for some elements of a list, as a list.
void json(const std::vector<JSONView>& elements);

/// The plain text of a value: "yes" and "no", digits, lists joined by ", ", nothing for null.
std::string text(JSONView value);

/// `text` of the member under `key`; empty if there is none.
std::string text(JSONView object, std::string_view key);

/// An ISO 8601 time stamp as the local time of day, "HH:mm:ss"; any other text unchanged.
std::string time(const std::string& stamp);

/// Seconds as "1.23s".
std::string seconds(double duration);

/// Writes out all that has been printed; for output that somebody is waiting for.
void flush();

}  // namespace zelto::Out
