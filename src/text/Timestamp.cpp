#include "text/Timestamp.h"

#include <algorithm>
#include <chrono>

#include "text/Number.h"

namespace text {
namespace {

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
    return isNumber ? *decimal<int>(field) : 0;
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

}  // namespace

std::optional<std::int64_t> secondsSince1970(std::string_view stamp) {
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

}  // namespace text
