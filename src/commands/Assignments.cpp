#include "commands/Assignments.h"

#include <algorithm>
#include <cmath>

#include "cli/CLIError.h"
#include "text/Number.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

bool isDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// An optional minus, digits, and optionally a point and digits. Nothing else counts as a number, so that
/// version numbers, hexadecimal and the like stay texts.
bool isPlainDecimal(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const std::size_t point = text.find('.');
  return isDigits(text.substr(0, point)) &&
         (point == std::string_view::npos || isDigits(text.substr(point + 1)));
}

}  // namespace

JSONValue coerceFieldValue(const std::string& text) {
  const std::string lower = text::lowercased(text);
  if (lower == "true" || lower == "yes") return true;
  if (lower == "false" || lower == "no") return false;
  if (!isPlainDecimal(text)) return text;
  const double number = text::floatingPoint<double>(text).value_or(0);
  // A number that the type has no value near could not be sent: it stays a text, so that nothing is lost.
  const bool isLost = std::isinf(number) || (number == 0 && text.find_first_of("123456789") != text.npos);
  return isLost ? JSONValue(text) : JSONValue(number);
}

JSONObject parseAssignments(const std::vector<std::string>& assignments) {
  JSONObject fields;
  for (const std::string& assignment : assignments) {
    const std::size_t equals = assignment.find('=');
    if (equals == std::string::npos) throw CLIError(assignment + " is not field=value");
    if (equals == 0) throw CLIError(assignment + " has no field name");
    fields.set(assignment.substr(0, equals), coerceFieldValue(assignment.substr(equals + 1)));
  }
  return fields;
}

}  // namespace zelto
