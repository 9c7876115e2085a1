#include "cli/Out.h"

#include <algorithm>
#include <cstdio>
#include <limits>

#include "cli/Settings.h"
#include "client/Wire.h"
#include "json/JSONText.h"
#include "platform/Clock.h"
#include "platform/Streams.h"
#include "platform/Terminal.h"
#include "text/Timestamp.h"
#include "text/Unicode.h"

namespace zelto::Out {
namespace {

constexpr std::string_view columnGap = "  ";

/// For each form that JSON comes in.
template <class Value>
void printJSON(const Value& value) {
  json::Style style = json::pretty;
  style.escapesControls = platform::outputIsTerminal();
  json::write(value, style, platform::printHarmless);
  platform::printHarmless("\n");
}

}  // namespace

Table::Table(const std::vector<Column>& whole) {
  add(whole.data(), whole.data() + whole.size());
  std::size_t rowCount = 0;
  for (const Column& column : whole) rowCount = std::max(rowCount, column.rows.size());
  for (std::size_t row = 0; row < rowCount; ++row) {
    for (std::size_t i = 0; i < whole.size(); ++i)
      add(headings[i], row < whole[i].rows.size() ? whole[i].rows[row] : StyledText());
  }
}

void Table::add(const Column* column, const Column* end) {
  for (; column != end; ++column) headings.push_back({column->title, column->style, column->title.width()});
}

void Table::row(std::initializer_list<StyledText> row) {
  auto heading = headings.begin();
  for (const StyledText& each : row) add(*heading++, each);
}

void Table::add(Heading& column, const StyledText& cell) {
  const std::size_t width = cell.width();
  column.width = std::max(column.width, width);
  cells.append(Cell{cell.size(), width});
  text.append(cell);
}

void Table::print() const {
  if (cells.size() == 0) return;
  StyledText header;
  for (const Heading& heading : headings) {
    const bool isLast = &heading == &headings.back();
    header.append(isLast ? heading.title : heading.title.padded(heading.width).append(columnGap));
  }
  line(paint(header, Style::dim));

  StyledText row;
  std::size_t place = 0, column = 0;
  for (const auto [length, width] : cells) {
    const Heading& heading = headings[column];
    // The last column is not padded.
    const bool isLast = ++column == headings.size();
    const std::size_t blanks = isLast ? 0 : heading.width - width;
    if (heading.style && settings.colourEnabled()) {
      StyledText cell;
      cell.append(text, place, length).appendBlanks(blanks);
      row.append(paint(cell, *heading.style));
    } else {
      row.append(text, place, length).appendBlanks(blanks);
    }
    place += length;
    if (!isLast) {
      row.append(columnGap);
      continue;
    }
    line(row);
    row.clear();
    column = 0;
  }
}

StyledText paint(const StyledText& text, Style style) {
  return settings.colourEnabled() ? text.styled(static_cast<int>(style)) : text;
}

StyledText paint(Deed deed) {
  switch (deed) {
    case Deed::created:
      return paint("Created", Style::green);
    case Deed::updated:
      return paint("Updated", Style::green);
    case Deed::deleted:
      return paint("Deleted", Style::red);
    case Deed::fired:
      return paint("Fired", Style::yellow);
    case Deed::running:
      return paint("Running", Style::green);
    case Deed::stopped:
      return paint("Stopped", Style::yellow);
    case Deed::active:
      return paint("Active", Style::green);
    case Deed::opened:
      return paint("Opened", Style::green);
    case Deed::installed:
      return paint("Installed", Style::green);
    case Deed::removed:
      return paint("Removed", Style::red);
  }
  return {};
}

StyledText onOff(bool isOn, std::size_t width) {
  return isOn ? paint(StyledText("on").padded(width), Style::green)
              : paint(StyledText("off").padded(width), Style::dim);
}

StyledText marker(bool isThere) {
  return isThere ? paint("*", Style::green) : " ";
}

void done(Deed deed, const StyledText& what) {
  line(paint(deed) + " " + what);
}

void hint(const StyledText& text) {
  line(paint(text, Style::dim));
}

void line(const StyledText& text) {
  platform::print(text);
  platform::print("\n");
}

void table(const std::vector<Column>& columns) {
  Table(columns).print();
}

void fields(const std::vector<Pair>& pairs) {
  std::size_t labelWidth = 0;
  for (const auto& [label, value] : pairs) labelWidth = std::max(labelWidth, label.width());
  const StyledText indent = StyledText().padded(labelWidth + columnGap.size());
  for (const auto& [label, value] : pairs) {
    if (value.empty()) continue;
    StyledText painted = paint(label.padded(labelWidth), Style::dim);
    const std::vector<StyledText> lines = value.lines();
    if (lines.size() == 1) {
      line(painted.append(columnGap).append(value));
      continue;
    }
    line(painted);
    for (const StyledText& each : lines) line(indent + each);
  }
}

void section(const StyledText& title) {
  line("");
  line(paint(title, Style::bold));
}

void json(const JSONValue& value) {
  printJSON(value);
}

void json(JSONView value) {
  printJSON(value);
}

void json(const std::vector<JSONView>& elements) {
  printJSON(elements);
}

std::string text(JSONView value) {
  switch (value.kind()) {
    case json::Kind::null:
      return {};
    case json::Kind::boolean:
      return *value.boolean() ? "yes" : "no";
    case json::Kind::number:
      return value.number()->text();
    case json::Kind::string:
      return std::string(*value.string());
    case json::Kind::array: {
      std::vector<std::string> texts;
      for (const JSONView element : value.elements()) texts.push_back(text(element));
      return text::joined(texts, ", ");
    }
    case json::Kind::object:
      return json::text(value, json::compact);
  }
  return {};
}

std::string text(JSONView object, std::string_view key) {
  return text(object[key]);
}

std::string time(const std::string& stamp) {
  const auto instant = text::secondsSince1970(stamp);
  return instant ? platform::localTimeOfDay(*instant) : stamp;
}

std::string seconds(double duration) {
  // Room for the digits of the largest number, a sign, the fraction and the unit.
  char buffer[std::numeric_limits<double>::max_exponent10 + 8];
  return {buffer, static_cast<std::size_t>(std::snprintf(buffer, sizeof buffer, "%.2fs", duration))};
}

void flush() {
  platform::flushOutput();
}

}  // namespace zelto::Out
