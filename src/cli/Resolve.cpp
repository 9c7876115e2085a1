#include "cli/Resolve.h"

#include <vector>

#include "cli/CLICall.h"
#include "cli/CLIError.h"
#include "client/Wire.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

/// The entries that `ref` may stand for, in the order of the list. No kind of match ranks above another.
std::vector<JSONView> matches(JSONView list, std::string_view ref) {
  const std::string foldedRef = text::folded(ref), lowerRef = text::lowercased(ref);
  std::vector<JSONView> found;
  for (const JSONView entry : list.elements()) {
    const std::string_view id = entry["id"].string().value_or(""), name = entry["name"].string().value_or("");
    if (text::folded(id) == foldedRef || text::lowercased(id).starts_with(lowerRef) ||
        text::folded(name) == foldedRef) {
      found.push_back(entry);
    }
  }
  return found;
}

Resolved resolved(JSONView entry, std::string_view ref) {
  return {std::string(entry["id"].string().value_or(ref)), stringIn(entry, "name")};
}

}  // namespace

Resolved resolveRule(std::string_view ref) {
  const JSONDocument rules = expectList(cliCall({"GET", "/rules"}));
  const auto found = matches(rules, ref);
  if (found.size() == 1) return resolved(found.front(), ref);
  if (found.empty()) throw CLIError("no rule matching " + std::string(ref) + ". List them with: zelto rules");
  std::string message = std::string(ref) + " matches " + std::to_string(found.size()) + " rules:";
  for (const JSONView rule : found) {
    message.append("\n  ").append(shortId(stringIn(rule, "id"))).append("  ").append(stringIn(rule, "name"));
  }
  throw CLIError(message);
}

Resolved resolveProfile(std::string_view ref) {
  const JSONDocument profiles = expectList(cliCall({"GET", "/profiles"}));
  const auto found = matches(profiles, ref);
  if (found.size() == 1) return resolved(found.front(), ref);
  if (found.empty())
    throw CLIError("no profile matching " + std::string(ref) + ". List them with: zelto profiles");
  throw CLIError(std::string(ref) + " matches " + std::to_string(found.size()) + " profiles, use the id");
}

std::string shortId(std::string_view id) {
  return std::string(text::clusterPrefix(id, 8));
}

}  // namespace zelto
