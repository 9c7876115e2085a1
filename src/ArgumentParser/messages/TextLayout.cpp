#include "ArgumentParser/messages/TextLayout.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/Environment.h"
#include "platform/Terminal.h"
#include "text/Number.h"
#include "text/Unicode.h"

namespace ArgumentParser {
namespace {

constexpr ScreenSize defaultSize{80, 25};

std::optional<std::int64_t> sizeIn(const char* variable) {
  const auto value = platform::environment(variable);
  return value ? text::decimal<std::int64_t>(*value) : std::nullopt;
}

}  // namespace

std::string wrapped(std::string_view text, std::int64_t width, int indent) {
  if (width <= indent) return {};
  const auto limit = static_cast<std::size_t>(width - indent);
  const auto characters = text::clusters(text);
  const auto is = [&](std::size_t at, std::string_view wanted) { return characters[at] == wanted; };
  const auto lastBefore = [&](std::size_t from, std::size_t end, std::string_view wanted) {
    while (end > from && !is(end - 1, wanted)) --end;
    return end > from ? std::optional(end - 1) : std::nullopt;
  };

  std::string result;
  const auto addLine = [&](std::size_t from, std::size_t end, bool isLast) {
    if (end > from) result.append(static_cast<std::size_t>(indent), ' ');
    for (; from < end; ++from) result += characters[from];
    if (!isLast) result += '\n';
  };

  std::size_t current = 0;
  for (;;) {
    const std::size_t chunkEnd = std::min(current + limit, characters.size());
    if (const auto lastBreak = lastBefore(current, chunkEnd, "\n")) {
      for (std::size_t at = current; at <= *lastBreak; ++at) {
        if (!is(at, "\n")) continue;
        addLine(current, at, false);
        current = at + 1;
      }
      continue;
    }
    if (chunkEnd == characters.size()) break;
    auto cut = lastBefore(current, chunkEnd, " ");
    for (std::size_t at = chunkEnd; !cut && at < characters.size(); ++at) {
      if (is(at, " ")) cut = at;
    }
    if (!cut) break;
    addLine(current, *cut, false);
    current = *cut + 1;
  }
  addLine(current, characters.size(), true);
  return result;
}

std::string hangingIndented(std::string_view label, std::string_view text) {
  std::string result(label);
  bool isFirst = true;
  for (const std::string_view line : text::split(text, '\n')) {
    if (!isFirst) result += '\n';
    if (!isFirst && !line.empty()) result.append(label.size(), ' ');
    result += line;
    isFirst = false;
  }
  return result;
}

ScreenSize screenSize() {
  const auto columns = sizeIn("COLUMNS"), rows = sizeIn("LINES");
  if (columns && rows) return {*columns, *rows};
  const auto terminal = platform::terminalSize().value_or(platform::TerminalSize{0, 0});
  const auto chosen = [](std::optional<std::int64_t> set, std::int64_t reported, std::int64_t otherwise) {
    return set.value_or(reported > 0 ? reported : otherwise);
  };
  return {chosen(columns, terminal.columns, defaultSize.columns),
          chosen(rows, terminal.rows, defaultSize.rows)};
}

}  // namespace ArgumentParser
