#include "cli/Resolve.h"

#include <vector>

#include "cli/CLICall.h"
#include "cli/CLIError.h"
#include "client/Wire.h"
#include "text/Unicode.h"

namespace zelto {
namespace {

/// The entries that `ref` may stand for, in the order of the list. No kind of match ranks above another.
std::vector<JSONObject> matches(const char* path, std::string_view ref) {
  const std::string foldedRef = text::folded(ref), lowerRef = text::lowercased(ref);
  std::vector<JSONObject> found;
  for (const JSONValue& entry : expectList(cliCall({"GET", path}))) {
    const std::string id = stringIn(*entry.object(), "id"), name = stringIn(*entry.object(), "name");
    if (text::folded(id) == foldedRef || text::lowercased(id).starts_with(lowerRef) ||
        text::folded(name) == foldedRef) {
      found.push_back(*entry.object());
    }
  }
  return found;
}

Resolved resolved(const JSONObject& entry, std::string_view ref) {
  return {memberOf(entry, "id").string() ? stringIn(entry, "id") : std::string(ref), stringIn(entry, "name")};
}

}  // namespace

Resolved resolveRule(std::string_view ref) {
  const auto found = matches("/rules", ref);
  if (found.size() == 1) return resolved(found.front(), ref);
  if (found.empty()) throw CLIError("no rule matching " + std::string(ref) + ". List them with: zelto rules");
  std::string message = std::string(ref) + " matches " + std::to_string(found.size()) + " rules:";
  for (const JSONObject& rule : found) {
    message.append("\n  ").append(shortId(stringIn(rule, "id"))).append("  ").append(stringIn(rule, "name"));
  }
  throw CLIError(message);
}

Resolved resolveProfile(std::string_view ref) {
  const auto found = matches("/profiles", ref);
  if (found.size() == 1) return resolved(found.front(), ref);
  if (found.empty())
    throw CLIError("no profile matching " + std::string(ref) + ". List them with: zelto profiles");
  throw CLIError(std::string(ref) + " matches " + std::to_string(found.size()) + " profiles, use the id");
}

std::string shortId(std::string_view id) {
  return std::string(text::clusterPrefix(id, 8));
}

}  // namespace zelto
