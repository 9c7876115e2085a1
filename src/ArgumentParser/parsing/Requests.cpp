#include "ArgumentParser/parsing/Requests.h"

#include <algorithm>
#include <utility>

#include "ArgumentParser/ToolInfo.h"
#include "ArgumentParser/declarations/BuiltIns.h"
#include "ArgumentParser/dump/MakeToolInfo.h"
#include "ArgumentParser/messages/HelpGenerator.h"

namespace ArgumentParser {
namespace {

/// A flag and the request it stands for.
struct Row {
  std::vector<Name> (*names)(const CommandStack& stack);
  /// Nothing where the flag does not stand for a request.
  std::optional<Request> (*request)(const CommandStack& stack);
};

/// In order of precedence.
constexpr Row rows[] = {
    {[](const CommandStack& stack) { return helpNames(stack); },
     [](const CommandStack& stack) { return std::optional(helpRequest(stack)); }},
    {[](const CommandStack& stack) { return helpNames(stack, Visibility::hidden); },
     [](const CommandStack& stack) { return std::optional(helpRequest(stack, Visibility::hidden)); }},
    {[](const CommandStack&) { return std::vector{Name::makeLong("experimental-dump-help")}; },
     [](const CommandStack& stack) { return std::optional(dumpRequest(stack)); }},
    {[](const CommandStack&) { return std::vector{Name::makeLong("version")}; },
     [](const CommandStack& stack) {
       const auto found = version(stack);
       return found ? std::optional(Request{[found] { return found->text(); }}) : std::nullopt;
     }},
};

}  // namespace

std::optional<Request> builtInRequest(const std::vector<SplitArguments::Element>& elements,
                                      const CommandStack& stack) {
  if (elements.empty()) return std::nullopt;
  for (const Row& row : rows) {
    const auto names = row.names(stack);
    const auto asks = [&](const SplitArguments::Element& element) {
      return element.option() != nullptr &&
             std::find(names.begin(), names.end(), element.option()->name) != names.end();
    };
    if (std::none_of(elements.begin(), elements.end(), asks)) continue;
    if (auto request = row.request(stack)) return request;
  }
  return std::nullopt;
}

Request helpRequest(CommandStack stack, Visibility visibility) {
  return {[stack = std::move(stack), visibility] { return HelpGenerator(stack, visibility).rendered(); }};
}

Request dumpRequest(CommandStack stack) {
  return {[stack = std::move(stack)] { return dumpText(makeToolInfo(stack)); }};
}

}  // namespace ArgumentParser
