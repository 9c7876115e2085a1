#include "ArgumentParser/parsing/Requests.h"

#include <algorithm>
#include <utility>

#include "ArgumentParser/ToolInfo.h"
#include "ArgumentParser/declarations/BuiltIns.h"
#include "ArgumentParser/dump/MakeToolInfo.h"
#include "ArgumentParser/messages/HelpGenerator.h"

namespace ArgumentParser {
namespace {

/// A flag and what it asks for.
struct Row {
  std::vector<Name> (*names)(const CommandStack& stack);
  Request (*request)(const CommandStack& stack);
};

/// By precedence.
constexpr Row rows[] = {
    {[](const CommandStack& stack) { return helpNames(stack); },
     [](const CommandStack& stack) { return helpRequest(stack); }},
    {[](const CommandStack& stack) { return helpNames(stack, Visibility::hidden); },
     [](const CommandStack& stack) { return helpRequest(stack, Visibility::hidden); }},
    {[](const CommandStack&) { return std::vector{Name::makeLong("experimental-dump-help")}; },
     [](const CommandStack& stack) { return dumpRequest(stack); }},
    {[](const CommandStack& stack) {
       return version(stack) ? std::vector{Name::makeLong("version")} : std::vector<Name>();
     },
     [](const CommandStack& stack) { return Request{[found = version(stack)] { return found->text(); }}; }},
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
    if (std::any_of(elements.begin(), elements.end(), asks)) return row.request(stack);
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
