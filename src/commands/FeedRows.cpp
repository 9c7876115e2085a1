#include "commands/FeedRows.h"

#include "cli/Options.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

using Out::Style;

constexpr const char* detailIndent = "          ";

Out::StyledText timePiece(JSONView entry) {
  return Out::paint(Out::time(Out::text(entry, "timestamp")), Style::dim);
}

void printEventRows(const json::JSONElements& list, bool) {
  for (const JSONView entry : list) {
    Out::StyledText row = timePiece(entry);
    row.append("  ").append(Out::paint(Out::text(entry, "source"), Style::cyan));
    row.append("  ").append(Out::text(entry, "kind"));
    if (entry["isDryRun"].boolean().value_or(false))
      row.append("  ").append(Out::paint("dry run", Style::yellow));
    const std::string action = Out::text(entry, "triggeredAction");
    if (!action.empty() && action != "none") row.append("  ").append(Out::paint("-> " + action, Style::dim));
    Out::line(row);

    const auto values = entry["values"].members();
    if (values.empty()) continue;
    std::vector<std::string> texts;
    for (const auto& [key, value] : values) texts.push_back(std::string(key) + "=" + Out::text(value));
    Out::line(Out::paint(detailIndent + text::joined(texts, " "), Style::dim));
  }
}

void printOutput(JSONView entry, const char* key, const char* label, Style style) {
  const std::string output = Out::text(entry, key);
  const std::string_view trimmed = text::trimmed(output);
  if (trimmed.empty()) return;
  const Out::StyledText margin = Out::paint("      " + std::string(label) + "  ", style);
  for (const std::string_view each : text::split(trimmed, '\n')) Out::line(margin + each);
}

void printActionRows(const json::JSONElements& list, bool verbose) {
  for (const JSONView entry : list) {
    const std::int64_t exitCode = integerIn(entry, "exitCode");
    Out::StyledText row = timePiece(entry);
    row.append("  ").append(exitCode == 0 ? Out::paint("ok ", Style::green)
                                          : Out::paint(std::to_string(exitCode), Style::red));
    row.append("  ").append(Out::text(entry, "ruleName"));
    row.append("  ").append(Out::paint(Out::text(entry, "action"), Style::dim));
    const double duration = numberIn(entry, "duration");
    if (duration > 0) row.append(Out::paint("  " + Out::seconds(duration), Style::dim));
    Out::line(row);

    const std::string detail = Out::text(entry, "detail");
    if (!detail.empty()) Out::line(Out::paint(detailIndent + detail, Style::dim));
    if (!verbose) continue;
    printOutput(entry, "stdout", "out", Style::dim);
    printOutput(entry, "stderr", "err", Style::red);
  }
}

}  // namespace

const FeedKind FeedKind::events{"/events", "events", printEventRows};
const FeedKind FeedKind::actions{"/action-history", "actions", printActionRows};

void printFeedBatch(const FeedKind& kind, JSONView response, bool verbose) {
  const json::JSONElements list = objectsIn(response, kind.listKey);
  if (list.empty()) return;
  if (settings.jsonMode) {
    Out::json(response[kind.listKey]);
  } else {
    kind.printRows(list, verbose);
  }
  Out::flush();
}

}  // namespace zelto
