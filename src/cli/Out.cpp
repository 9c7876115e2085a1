#include "cli/Out.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "cli/Options.h"
#include "client/Wire.h"
#include "json/JSONText.h"
#include "platform/Clock.h"
#include "platform/Streams.h"
#include "platform/Terminal.h"
#include "text/Number.h"
#include "text/Unicode.h"

namespace zelto::Out {
namespace {

constexpr std::string_view columnGap = "  ";

const StyledText& cell(const Column& column, std::size_t row) {
  static const StyledText absent;
  return row < column.rows.size() ? column.rows[row] : absent;
}

std::size_t widthOf(const Column& column) {
  std::size_t width = column.title.width();
  for (const StyledText& each : column.rows) width = std::max(width, each.width());
  return width;
}

/// Takes numbers and fixed characters off the front of a time stamp.
class StampReader {
 public:
  explicit StampReader(std::string_view stamp) : rest(stamp) {}

  /// The next `digits` digits as a number; the stamp is bad if there are fewer.
  int number(std::size_t digits) {
    const std::string_view field = rest.substr(0, digits);
    const bool isNumber = field.size() == digits && field.find_first_not_of("0123456789") == field.npos;
    isGood = isGood && isNumber;
    rest.remove_prefix(field.size());
    return isNumber ? *text::decimal<int>(field) : 0;
  }
  bool take(char expected) {
    if (!rest.starts_with(expected)) return false;
    rest.remove_prefix(1);
    return true;
  }
  void need(char expected) { isGood = take(expected) && isGood; }
  void skipFraction() {
    if (!take('.')) return;
    const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    isGood = isGood && digits > 0;
    rest.remove_prefix(digits);
  }
  /// Minutes east of Greenwich: "Z", "+hh:mm" or "-hh:mm".
  int zone() {
    if (take('Z')) return 0;
    const bool west = take('-');
    if (!west) need('+');
    const int hours = number(2);
    need(':');
    const int minutes = number(2);
    isGood = isGood && hours < 24 && minutes < 60;
    return (west ? -1 : 1) * (hours * 60 + minutes);
  }
  bool isComplete() const { return isGood && rest.empty(); }

 private:
  std::string_view rest;
  bool isGood = true;
};

/// The instant of an internet date and time, with or without fractional seconds, in seconds since 1970.
std::optional<std::int64_t> parseStamp(std::string_view stamp) {
  StampReader reader(stamp);
  const int year = reader.number(4);
  reader.need('-');
  const int month = reader.number(2);
  reader.need('-');
  const int day = reader.number(2);
  reader.need('T');
  const int hour = reader.number(2);
  reader.need(':');
  const int minute = reader.number(2);
  reader.need(':');
  const int second = reader.number(2);
  reader.skipFraction();
  const int zone = reader.zone();
  const std::chrono::year_month_day date{std::chrono::year(year),
                                         std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day))};
  // A leap second is the sixtieth.
  if (!reader.isComplete() || !date.ok() || hour > 23 || minute > 59 || second > 60) return std::nullopt;
  const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
  return ((days * 24 + hour) * 60 + minute - zone) * 60 + second;
}

}  // namespace

StyledText paint(const StyledText& text, Style style) {
  return colourEnabled() ? text.styled(static_cast<int>(style)) : text;
}

void line(const StyledText& text) {
  platform::print(text);
  platform::print("\n");
}

void table(const std::vector<Column>& columns) {
  std::size_t rowCount = 0;
  std::vector<std::size_t> widths;
  for (const Column& column : columns) {
    rowCount = std::max(rowCount, column.rows.size());
    widths.push_back(widthOf(column));
  }
  if (rowCount == 0) return;
  // The last column is not padded.
  widths.back() = 0;

  StyledText header;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) header.append(columnGap);
    header.append(columns[i].title.padded(widths[i]));
  }
  line(paint(header, Style::dim));
  for (std::size_t row = 0; row < rowCount; ++row) {
    StyledText cells;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (i > 0) cells.append(columnGap);
      const StyledText padded = cell(columns[i], row).padded(widths[i]);
      cells.append(columns[i].style ? paint(padded, *columns[i].style) : padded);
    }
    line(cells);
  }
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
  json::Style style = json::pretty;
  style.escapesControls = platform::outputIsTerminal();
  json::write(value, style, platform::pendingOutput(), [](std::string&) { platform::flushOutput(); });
  line("");
}

std::string text(const JSONValue& value) {
  if (const auto* string = value.string()) return *string;
  if (const auto* boolean = value.boolean()) return *boolean ? "yes" : "no";
  if (value.isNumber()) return json::numberText(value);
  if (const auto* array = value.array()) {
    std::vector<std::string> texts;
    for (const JSONValue& element : *array) texts.push_back(text(element));
    return text::joined(texts, ", ");
  }
  return value.object() ? json::text(value, json::compact).value_or(std::string()) : std::string();
}

std::string text(const JSONObject& object, std::string_view key) {
  return text(memberOf(object, key));
}

std::string time(const std::string& stamp) {
  const auto instant = parseStamp(stamp);
  return instant ? platform::localTimeOfDay(*instant) : stamp;
}

std::string seconds(double duration) {
  char buffer[400];
  return {buffer, static_cast<std::size_t>(std::snprintf(buffer, sizeof buffer, "%.2fs", duration))};
}

void flush() {
  platform::flushOutput();
}

}  // namespace zelto::Out
